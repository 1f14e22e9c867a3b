#pragma once

#include "applet/StandardParameters.h"

#include "platform/ParameterIds.h"

#include <limits>

// The catalogue itself, for whoever needs its rows at compile time.

namespace catalogue {

using namespace enumerations;

using Enumerations = std::array<const Enumeration*, 2>;

constexpr Enumerations both(const Enumeration& table) { return {&table, &table}; }

/// An integer that has no description in the tree.
constexpr StandardParameter unlisted(const char* name, int id) {
    return {name, id, nullptr, ValueKind::integer, {}, {}, CategoryId::none, nullptr, nullptr, {}, nullptr};
}

constexpr StandardParameter number(ValueKind kind, const char* name, int id, const char* displayName,
                                   Limits limits, DescriptionFlags flags, CategoryId category,
                                   const char* unit, const char* description) {
    return {name, id, displayName, kind, limits, flags, category, unit, nullptr, {}, description};
}

constexpr StandardParameter integer(const char* name, int id, const char* displayName, Limits limits,
                                    DescriptionFlags flags, CategoryId category, const char* unit,
                                    const char* description) {
    return number(ValueKind::integer, name, id, displayName, limits, flags, category, unit, description);
}

constexpr StandardParameter real(const char* name, int id, const char* displayName, Limits limits,
                                 DescriptionFlags flags, CategoryId category, const char* unit,
                                 const char* description) {
    return number(ValueKind::real, name, id, displayName, limits, flags, category, unit, description);
}

constexpr StandardParameter integerField(const char* name, int id, const char* displayName, Limits limits,
                                         DescriptionFlags flags, CategoryId category,
                                         const char* description) {
    return number(ValueKind::integerField, name, id, displayName, limits, flags, category, nullptr,
                  description);
}

constexpr StandardParameter enumerated(const char* name, int id, const char* displayName, Enumerations tables,
                                       DescriptionFlags flags, CategoryId category, const char* description) {
    return {name,    id,     displayName, ValueKind::enumeration, {}, flags, category, nullptr,
            nullptr, tables, description};
}

constexpr StandardParameter text(const char* name, int id, const char* displayName, const char* fileExtension,
                                 DescriptionFlags flags, CategoryId category, const char* description) {
    return {name,          id, displayName, ValueKind::text, {}, flags, category, nullptr,
            fileExtension, {}, description};
}

constexpr DescriptionFlags readOnly{accessReadOnly, 1, 1};
constexpr DescriptionFlags readOnlyMovingRange{accessReadOnly, 2, 1};
constexpr DescriptionFlags writable{3, 1, 1};
constexpr DescriptionFlags writableMovingRange{3, 2, 1};
constexpr DescriptionFlags changeable{accessReadWriteChange, 1, 1};
constexpr DescriptionFlags changeableMovingRange{accessReadWriteChange, 2, 1};

/// Frames per second: the lowest is the rate whose period just fits 32 bits of trigger ticks, taken just
/// below 62.5 MHz / 2^32.
constexpr double lowestFrameRate = 0.01455191522836685;
constexpr double highestFrameRate = 6.25e6;

/// Stands for a continuous value.
constexpr double continuous = std::numeric_limits<double>::epsilon();

#define PARAMETER(name) #name, name

#define GENERATOR_ROWS(g)                                                                                    \
    integer(PARAMETER(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE), "Downscale", {1, 7, 1},                       \
            changeableMovingRange, CategoryId::pulseFormGenerator##g, nullptr,                               \
            "Downscale factor of the pulse form generator input."),                                          \
        integer(PARAMETER(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE), "Phase", {0, 6, 1},                 \
                changeableMovingRange, CategoryId::pulseFormGenerator##g, nullptr,                           \
                "Select the pulse index for each downscale series."),                                        \
        real(PARAMETER(FG_TRIGGER_PULSEFORMGEN##g##_DELAY), "Delay", {0.0, 3.4e7, 0.016}, changeable,        \
             CategoryId::pulseFormGenerator##g, nullptr, "Delay between the input and the output."),         \
        real(PARAMETER(FG_TRIGGER_PULSEFORMGEN##g##_WIDTH), "Signal Width", {1.0, 6.8e7, 0.016}, changeable, \
             CategoryId::pulseFormGenerator##g, nullptr, "Signal Output Width.")

#define OUTPUT_ROW(n)                                                                                        \
    enumerated(PARAMETER(FG_TRIGGEROUT_SELECT##n), "Output " #n, both(TriggerOutSelection_Gen4), changeable, \
               CategoryId::digitalOutput,                                                                    \
               "Select the output source. Note the differing pin allocation for each camera.")

inline constexpr std::array<CategoryRow, static_cast<std::size_t>(CategoryId::none)> categories{{
    {CategoryId::camera, CategoryId::none, "Camera"},
    {CategoryId::regionOfInterest, CategoryId::none, "ROI"},
    {CategoryId::trigger, CategoryId::none, "Trigger"},
    {CategoryId::triggerInput, CategoryId::trigger, "Trigger Input"},
    {CategoryId::triggerInputExternal, CategoryId::triggerInput, "External"},
    {CategoryId::softwareTrigger, CategoryId::triggerInput, "Software Trigger"},
    {CategoryId::triggerInputStatistics, CategoryId::triggerInput, "Statistics"},
    {CategoryId::sequencer, CategoryId::trigger, "Sequencer"},
    {CategoryId::queue, CategoryId::trigger, "Queue"},
    {CategoryId::pulseFormGenerator0, CategoryId::trigger, "Pulse Form Generator 0"},
    {CategoryId::pulseFormGenerator1, CategoryId::trigger, "Pulse Form Generator 1"},
    {CategoryId::pulseFormGenerator2, CategoryId::trigger, "Pulse Form Generator 2"},
    {CategoryId::pulseFormGenerator3, CategoryId::trigger, "Pulse Form Generator 3"},
    {CategoryId::cameraActionCommand, CategoryId::trigger, "Camera Action Command"},
    {CategoryId::digitalOutput, CategoryId::trigger, "Digital Output"},
    {CategoryId::digitalOutputStatistics, CategoryId::digitalOutput, "Statistics"},
    {CategoryId::outputEvent, CategoryId::trigger, "Output Event"},
    {CategoryId::overflow, CategoryId::none, "Overflow"},
    {CategoryId::lookupTable, CategoryId::none, "Lookup Table"},
    {CategoryId::processing, CategoryId::lookupTable, "Processing"},
    {CategoryId::outputFormat, CategoryId::none, "Output Format"},
    {CategoryId::miscellaneous, CategoryId::none, "Miscellaneous"},
    {CategoryId::appletProperties, CategoryId::none, "Applet Properties"},
}};

/// The parameters, in the order in which the applet numbers them.
inline constexpr std::array<StandardParameter, standardParameterCount> standardParameters{{
    integer(PARAMETER(FG_TIMEOUT), "Timeout", {2, 2147483646, 1}, changeable, CategoryId::miscellaneous,
            "seconds",
            "Internal framegrabber image timeout. This is independend of the runtime timeout value."),
    integer(PARAMETER(FG_APPLET_VERSION), "Applet version", {0, 0, 0}, readOnly, CategoryId::appletProperties,
            nullptr, "Returns the applet version."),
    integer(PARAMETER(FG_APPLET_REVISION), "Applet revision", {0, 0, 0}, readOnly,
            CategoryId::appletProperties, nullptr, "Returns the applet revision."),
    integer(PARAMETER(FG_APPLET_ID), "Applet Id", {0, 0, 0}, readOnly, CategoryId::appletProperties, nullptr,
            "Returns the applet id."),
    text(PARAMETER(FG_QEL_FILE), "QEL file", "*.qel", readOnly, CategoryId::appletProperties,
         "The name of the Hardware-Applet (QEL) file on which this Halvora Advanced is based."),
    integer(PARAMETER(FG_DMASTATUS), "DMA Status", {0, 0, 0}, readOnly, CategoryId::miscellaneous, nullptr,
            "Returns the status of the DMA transmission."),
    integer(PARAMETER(FG_CAMSTATUS), "Camera Status", {0, 1, 1}, readOnly, CategoryId::miscellaneous, nullptr,
            "Returns the status of a connected CameraLink camera. For CoaXPress this is not of interest."),
    integer(
        PARAMETER(FG_CAMSTATUS_EXTENDED), "Camera Status Extended", {0, 255, 1}, readOnly,
        CategoryId::miscellaneous, nullptr,
        "Returns the extended status of the camera. Bit = meaning: 0 = CameraPixelClk, 1 = CameraLval, 2 = "
        "CameraFval, 3 = Camera CC1 Signal, 4 = ExTrg / external trigger, 5 = BufferOverflow, 6 = "
        "BufferStatus-LSB, 7 = BufferStatus-MSB"),
    unlisted(PARAMETER(FG_TRANSFER_LEN)),
    unlisted(PARAMETER(FG_NR_OF_PROCESSES)),
    unlisted(PARAMETER(FG_NR_OF_DMAS)),
    unlisted(PARAMETER(FG_NR_OF_CAMS)),
    unlisted(PARAMETER(FG_DMA_PORT)),
    unlisted(PARAMETER(FG_CAM_PORT)),
    unlisted(PARAMETER(FG_APC_STOP_TIMEOUT)),
    enumerated(PARAMETER(FG_GBE_CAMTYPE), "Input Format", both(PixelFormatGrayAreaGigE_LAG), changeable,
               CategoryId::camera, "Select the Camera's Pixel Format."),
    integer(PARAMETER(FG_MTU_SIZE), "MTU size", {44, 9036, 4}, writableMovingRange, CategoryId::camera,
            "byte", "Size of the MTU configured for the link. Value - 4 has to be a multiple of 8."),
    enumerated(PARAMETER(FG_SWAP_CHANNELS), "Swap Channels", both(YesNo), changeable, CategoryId::camera,
               "If the cables are crossed and the image is corrupted, swap the channels."),
    integer(PARAMETER(FG_CAMERA_WIDTH), "Camera Width", {16, 4096, 16}, writable, CategoryId::camera, "pixel",
            "Image width of the camera image send to the frame grabber."),
    integer(PARAMETER(FG_WIDTH), "Width", {16, 4096, 16}, writableMovingRange, CategoryId::regionOfInterest,
            nullptr, "Image width of the acquisition ROI."),
    integer(PARAMETER(FG_HEIGHT), "Height", {2, 4096, 1}, writableMovingRange, CategoryId::regionOfInterest,
            nullptr, "Image height of the acquisition ROI."),
    integer(PARAMETER(FG_XOFFSET), "XOffset", {0, 4080, 16}, writableMovingRange,
            CategoryId::regionOfInterest, nullptr, "X-offset of the acquisition ROI."),
    integer(PARAMETER(FG_YOFFSET), "YOffset", {0, 4095, 1}, writableMovingRange, CategoryId::regionOfInterest,
            nullptr, "Y-offset of the acquisition ROI."),
    integer(PARAMETER(FG_FILLLEVEL), "Buffer fill level", {0, 100, 1}, readOnly, CategoryId::overflow, "%",
            "Fill level of the buffers."),
    integer(PARAMETER(FG_OVERFLOW), "Buffer overflow", {0, 1, 1}, readOnly, CategoryId::overflow, nullptr,
            "Signals if the image buffer is in overflow state."),
    enumerated(PARAMETER(FG_FORMAT), "Format", both(FormatGray), writable, CategoryId::outputFormat,
               "Pixel format of the output image."),
    enumerated(PARAMETER(FG_BITALIGNMENT), "Alignment", both(AlignmentModesBoth), changeable,
               CategoryId::outputFormat, "Defines if the output data are right aligned or left aligned."),
    integer(PARAMETER(FG_PIXELDEPTH), "Pixel Depth", {0, 128, 1}, readOnly, CategoryId::outputFormat, nullptr,
            "Internal processing bit depth of the applet."),
    enumerated(PARAMETER(FG_LUT_TYPE), "Type", both(AcqLutTypes), changeable, CategoryId::lookupTable,
               "Enables the LUT to be load with custom values or use the applet's processor."),
    enumerated(PARAMETER(FG_LUT_IMPLEMENTATION_TYPE), "LUT Implementation Type",
               both(LookupTableImplementations), readOnly, CategoryId::lookupTable,
               "Type of LUT implementation."),
    integer(PARAMETER(FG_LUT_IN_BITS), "LUT In Bits", {0, 0, 0}, readOnly, CategoryId::lookupTable, "bit",
            "Pixel bit depth at LUT input."),
    integer(PARAMETER(FG_LUT_OUT_BITS), "LUT Out Bits", {0, 0, 0}, readOnly, CategoryId::lookupTable, nullptr,
            "Pixel bit depth at LUT output."),
    integerField(PARAMETER(FG_LUT_VALUE), "LUT Values", {0, largestPixelValue, 1}, changeable,
                 CategoryId::lookupTable, "Field with LUT Values."),
    text(PARAMETER(FG_LUT_CUSTOM_FILE), "Load File", "*.lut", changeable, CategoryId::lookupTable,
         "Filename with custom lookup table values."),
    text(PARAMETER(FG_LUT_SAVE_FILE), "Save File", nullptr, changeable, CategoryId::lookupTable,
         "Save current LUT configuration."),
    real(PARAMETER(FG_PROCESSING_OFFSET), "Offset", {-1.0, 1.0, continuous}, changeable,
         CategoryId::processing, nullptr,
         "Offset correction value. Available when LUT functionality is enabled."),
    real(PARAMETER(FG_PROCESSING_GAIN), "Gain", {0.0, 4096.0, continuous}, changeable, CategoryId::processing,
         nullptr, "Gain correction value. Available when LUT functionality is enabled."),
    real(PARAMETER(FG_PROCESSING_GAMMA), "Gamma", {-1000.0, 1000.0, continuous}, changeable,
         CategoryId::processing, nullptr,
         "Gamma correction value. Available when LUT functionality is enabled."),
    enumerated(PARAMETER(FG_PROCESSING_INVERT), "Invert", both(OnOff), changeable, CategoryId::processing,
               "Invert output. Available when LUT functionality is enabled."),
    enumerated(PARAMETER(FG_AREATRIGGERMODE), "Area Trigger Mode",
               {&AreaTriggerModes, &AreaTriggerModesPlusSync}, changeable, CategoryId::trigger,
               "Trigger mode for the area trigger signal generation."),
    enumerated(PARAMETER(FG_TRIGGERSTATE), "Trigger State", both(TriggerStates), changeable,
               CategoryId::trigger, "State of the trigger system."),
    real(PARAMETER(FG_TRIGGER_FRAMESPERSECOND), "Frames/Sec", {lowestFrameRate, highestFrameRate, continuous},
         changeableMovingRange, CategoryId::trigger, nullptr,
         "Base frequency (=frame rate) of the trigger output."),
    enumerated(PARAMETER(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS), "Trigger Exceeded Period Limits", both(YesNo),
               readOnly, CategoryId::trigger,
               "The trigger input signal frequency exceeds the allowed output frequency."),
    enumerated(PARAMETER(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR), "Clear Exceeded Period Limits Register",
               both(Apply), changeable, CategoryId::trigger, "Clear the exceeded period limits register."),
    real(PARAMETER(FG_TRIGGERIN_DEBOUNCE), "Input Debounce", {0.096, 3.024, 0.048}, changeable,
         CategoryId::triggerInput, "µs", "Set the debounce time for trigger input signals."),
    integer(PARAMETER(FG_DIGIO_INPUT), "Digital Input", {0, 255, 1}, readOnly, CategoryId::triggerInput,
            nullptr, "Current input signal levels of all inputs (Bitmask)."),
    enumerated(PARAMETER(FG_TRIGGERIN_SRC), "Source", both(TriggerInSource), changeable,
               CategoryId::triggerInputExternal,
               "Select the trigger input source for external trigger mode."),
    enumerated(PARAMETER(FG_TRIGGERIN_POLARITY), "Polarity", both(TriggerPolarity), changeable,
               CategoryId::triggerInputExternal, "Polarity of the trigger input signal."),
    integer(PARAMETER(FG_TRIGGERIN_DOWNSCALE), "Input Downscale", {1, 4294967295, 1}, changeableMovingRange,
            CategoryId::triggerInputExternal, nullptr, "Downscale of the trigger input signals."),
    integer(PARAMETER(FG_TRIGGERIN_DOWNSCALE_PHASE), "Downscale Phase", {0, 4294967294, 1},
            changeableMovingRange, CategoryId::triggerInputExternal, nullptr,
            "Select the pulse index for each downscale series."),
    enumerated(PARAMETER(FG_TRIGGERIN_BYPASS_SRC), "Bypass Source", both(TriggerInSource), changeable,
               CategoryId::triggerInputExternal, nullptr),
    integer(PARAMETER(FG_SENDSOFTWARETRIGGER), "Send Pulses", {1, 1, 1}, changeableMovingRange,
            CategoryId::softwareTrigger, "pulses", "Add pulses to trigger queue."),
    enumerated(PARAMETER(FG_SOFTWARETRIGGER_IS_BUSY), "Software Trigger Busy", both(BusyFlag), readOnly,
               CategoryId::softwareTrigger,
               "Check if the trigger system is still processing software trigger pulses."),
    integer(PARAMETER(FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL), "Software Trigger Queue Filllevel", {0, 2040, 1},
            readOnlyMovingRange, CategoryId::softwareTrigger, nullptr,
            "Number of pulses in queue which have to be processed."),
    integer(PARAMETER(FG_TRIGGERIN_STATS_PULSECOUNT), "Input Pulses", {0, 65535, 1}, readOnly,
            CategoryId::triggerInputStatistics, nullptr, "Pulse count of input."),
    enumerated(PARAMETER(FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR), "Clear Pulse Count", both(Apply), changeable,
               CategoryId::triggerInputStatistics, "Clear the input signal pulse counter."),
    real(PARAMETER(FG_TRIGGERIN_STATS_FREQUENCY), "Current Frequency", {0.0, 6.25e7, continuous}, readOnly,
         CategoryId::triggerInputStatistics, "Hz", "Current Frequency of the input pulses."),
    real(PARAMETER(FG_TRIGGERIN_STATS_MINFREQUENCY), "Minimum Frequency", {0.0, 6.25e7, continuous}, readOnly,
         CategoryId::triggerInputStatistics, nullptr, "The detected minimum input frequency."),
    real(PARAMETER(FG_TRIGGERIN_STATS_MAXFREQUENCY), "Maximum Frequency", {0.0, 6.25e7, continuous}, readOnly,
         CategoryId::triggerInputStatistics, nullptr, "The detected maximum input frequency."),
    enumerated(PARAMETER(FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR), "Clear MinMax Frequency", both(Apply),
               changeable, CategoryId::triggerInputStatistics,
               "Clear minimum and maximum frequency measurement."),
    integer(
        PARAMETER(FG_TRIGGER_MULTIPLY_PULSES), "Upscale Trigger Pulses", {1, 65535, 1}, changeable,
        CategoryId::sequencer, nullptr,
        "Upscale i.e. duplicate each external or software generated trigger pulse with a period specified "
        "by FG_TRIGGER_FRAMESPERSEC."),
    enumerated(PARAMETER(FG_TRIGGERQUEUE_MODE), "Queue Mode", both(OnOff), changeable, CategoryId::queue,
               "Enable or disable the trigger queue and output frequency limitation specified by "
               "FG_TRIGGER_FRAMESPERSEC."),
    integer(PARAMETER(FG_TRIGGERQUEUE_FILLLEVEL), "Filllevel", {0, 2040, 1}, readOnly, CategoryId::queue,
            nullptr, "Filllevel of trigger queue."),
    integer(PARAMETER(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD), "Queue Fill Level Event On Threshold",
            {2, 2047, 1}, changeable, CategoryId::queue, nullptr,
            "Set the threshold for generating a queue fill level ON event."),
    integer(PARAMETER(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD), "Queue Fill Level Event Off Threshold",
            {2, 2047, 1}, changeable, CategoryId::queue, nullptr,
            "Set the threshold for generating a queue fill level OFF event."),
    GENERATOR_ROWS(0),
    GENERATOR_ROWS(1),
    GENERATOR_ROWS(2),
    GENERATOR_ROWS(3),
    enumerated(PARAMETER(FG_CAMERA_ACTION_COMMAND_SOURCE), "Camera Action Command Source",
               both(TriggerOutSelection_Gen4), changeable, CategoryId::cameraActionCommand,
               "Select the source of the signal send to the camera using the action commands."),
    integer(PARAMETER(FG_CAMERA_ACTION_COMMAND_PENDING_COUNT), "Pending Camera Action Command", {0, 65535, 1},
            readOnly, CategoryId::cameraActionCommand, nullptr, "Number of pending camera action commands."),
    OUTPUT_ROW(0),
    OUTPUT_ROW(1),
    OUTPUT_ROW(2),
    OUTPUT_ROW(3),
    enumerated(PARAMETER(FG_TRIGGEROUT_STATS_SOURCE), "Source", both(TriggerOutStatsSources_Gen4), changeable,
               CategoryId::digitalOutputStatistics,
               "Select the pulse form generator which has to be analyzed."),
    integer(PARAMETER(FG_TRIGGEROUT_STATS_PULSECOUNT), "Pulse Count", {0, 65535, 1}, readOnly,
            CategoryId::digitalOutputStatistics, nullptr, "Pulse count."),
    enumerated(PARAMETER(FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR), "Clear pulse counter", both(Apply),
               changeable, CategoryId::digitalOutputStatistics, "Clear pulse counter."),
    enumerated(PARAMETER(FG_MISSING_CAMERA_FRAME_RESPONSE), "Missing Camera Frame Response", both(YesNo),
               readOnly, CategoryId::digitalOutputStatistics,
               "Frame grabber received no frame for trigger pulse."),
    enumerated(PARAMETER(FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR), "Clear Frame Response Register",
               both(Apply), changeable, CategoryId::digitalOutputStatistics,
               "Clear Missing Camera Frame Response Register."),
    enumerated(PARAMETER(FG_TRIGGER_OUTPUT_EVENT_SELECT), "Output Event Select",
               both(TriggerOutStatsSources_Gen4), changeable, CategoryId::outputEvent,
               "Select the pulse form generator for event monitoring."),
}};

#undef PARAMETER
#undef GENERATOR_ROWS
#undef OUTPUT_ROW

constexpr std::size_t placeOf(int id) {
    std::size_t place = 0;
    while (standardParameters[place].id != id) {
        ++place;
    }
    return place;
}

/// The limits of a parameter of the catalogue.
template <int id>
constexpr Limits limitsOf() {
    constexpr std::size_t place = placeOf(id);
    return standardParameters[place].limits;
}

/// The same for an unsigned parameter.
template <int id>
constexpr IntegerLimits integerLimitsOf() {
    constexpr Limits limits = limitsOf<id>();
    return {static_cast<unsigned>(limits.from), static_cast<unsigned>(limits.to),
            static_cast<unsigned>(limits.step)};
}

} // namespace catalogue
