#pragma once

#include "applet/Identity.h"
#include "applet/StandardParameters.h"
#include "platform/ParameterValues.h"

#include <array>
#include <cstdint>
#include <numeric>
#include <string>

// How a parameter's value crosses the interface, and how its last accepted value is kept.

struct IntegerValue {
    using Argument = unsigned int;
    using Result = unsigned int*;
    using Stored = unsigned int;
};

struct RealValue {
    using Argument = double;
    using Result = double*;
    using Stored = double;
};

struct TextValue {
    using Argument = const char*;
    /// The caller's buffer, which receives the text and a terminating zero.
    using Result = char*;
    using Stored = std::string;
};

/// One entry of a table; the table itself is kept.
struct TableEntryValue {
    using Argument = const FieldParameterInt_s*;
    using Result = FieldParameterInt_s*;
    using Stored = std::array<std::uint32_t, lookupTableSize>;
};

inline TableEntryValue::Stored identityTable() {
    TableEntryValue::Stored table{};
    std::iota(table.begin(), table.end(), 0U);
    return table;
}

#define ORBELLINE_READ_CACHE(name) readCache(cache_##name(port), out)

#define ORBELLINE_PULSE_FORM_GENERATOR(X, g, width)                                                          \
    X(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE, IntegerValue, 1, setGeneratorDownscale(port, g, value),        \
      ORBELLINE_READ_CACHE(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE))                                          \
    X(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE, IntegerValue, 0, setGeneratorPhase(port, g, value),      \
      ORBELLINE_READ_CACHE(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE))                                    \
    X(FG_TRIGGER_PULSEFORMGEN##g##_DELAY, RealValue, 0.0, setGeneratorDelay(port, g, value),                 \
      readGeneratorDelay(port, g, out))                                                                      \
    X(FG_TRIGGER_PULSEFORMGEN##g##_WIDTH, RealValue, width, setGeneratorWidth(port, g, value),               \
      readGeneratorWidth(port, g, out))

#define ORBELLINE_TRIGGER_OUTPUT(X, n, initial)                                                              \
    X(FG_TRIGGEROUT_SELECT##n, IntegerValue, initial, setTriggerOutput(port, n, value),                      \
      ORBELLINE_READ_CACHE(FG_TRIGGEROUT_SELECT##n))

#define ORBELLINE_PLAIN(X, name, Value, initial, write)                                                      \
    X(name, Value, initial, write, ORBELLINE_READ_CACHE(name))

/// The standard parameters that can be written:
/// X(name, kind of value, documented default, how `value` is written to `port`, how it is read into `out`).
#define ORBELLINE_WRITABLE_PARAMETERS(X)                                                                     \
    ORBELLINE_PLAIN(X, FG_TIMEOUT, IntegerValue, 1000000, setTimeout(port, value))                           \
    ORBELLINE_PLAIN(X, FG_GBE_CAMTYPE, IntegerValue, 0, setCameraType(port, value))                          \
    ORBELLINE_PLAIN(X, FG_MTU_SIZE, IntegerValue, 7204, setMtuSize(port, value))                             \
    ORBELLINE_PLAIN(X, FG_SWAP_CHANNELS, IntegerValue, 1, setSwapChannels(port, value))                      \
    ORBELLINE_PLAIN(X, FG_CAMERA_WIDTH, IntegerValue, 1024, setCameraWidth(port, value))                     \
    ORBELLINE_PLAIN(X, FG_WIDTH, IntegerValue, 1024, setWidth(port, value))                                  \
    ORBELLINE_PLAIN(X, FG_HEIGHT, IntegerValue, 1024, setHeight(port, value))                                \
    ORBELLINE_PLAIN(X, FG_XOFFSET, IntegerValue, 0, setXOffset(port, value))                                 \
    ORBELLINE_PLAIN(X, FG_YOFFSET, IntegerValue, 0, setYOffset(port, value))                                 \
    ORBELLINE_PLAIN(X, FG_FORMAT, IntegerValue, 3, setFormat(port, value))                                   \
    ORBELLINE_PLAIN(X, FG_BITALIGNMENT, IntegerValue, 1, setBitAlignment(port, value))                       \
    ORBELLINE_PLAIN(X, FG_LUT_TYPE, IntegerValue, 3, setLutType(port, value))                                \
    X(FG_LUT_VALUE, TableEntryValue, identityTable(), setLutEntry(port, value), readLutEntry(port, out))     \
    ORBELLINE_PLAIN(X, FG_LUT_CUSTOM_FILE, TextValue, {}, setLutCustomFile(port, value))                     \
    ORBELLINE_PLAIN(X, FG_LUT_SAVE_FILE, TextValue, {}, setLutSaveFile(port, value))                         \
    ORBELLINE_PLAIN(X, FG_PROCESSING_OFFSET, RealValue, 0.0, setProcessingOffset(port, value))               \
    ORBELLINE_PLAIN(X, FG_PROCESSING_GAIN, RealValue, 1.0, setProcessingGain(port, value))                   \
    ORBELLINE_PLAIN(X, FG_PROCESSING_GAMMA, RealValue, 1.0, setProcessingGamma(port, value))                 \
    ORBELLINE_PLAIN(X, FG_PROCESSING_INVERT, IntegerValue, 0, setProcessingInvert(port, value))              \
    ORBELLINE_PLAIN(X, FG_AREATRIGGERMODE, IntegerValue, 1, setAreaTriggerMode(port, value))                 \
    ORBELLINE_PLAIN(X, FG_TRIGGERSTATE, IntegerValue, 2, setTriggerState(port, value))                       \
    X(FG_TRIGGER_FRAMESPERSECOND, RealValue, 8.0, setFramesPerSecond(port, value),                           \
      readFramesPerSecond(port, out))                                                                        \
    ORBELLINE_PLAIN(X, FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR, IntegerValue, 1,                             \
                    clearExceededPeriodLimits(port, value))                                                  \
    X(FG_TRIGGERIN_DEBOUNCE, RealValue, 1.0, setDebounce(port, value), readDebounce(port, out))              \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_SRC, IntegerValue, 0, setTriggerInSource(port, value))                   \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_POLARITY, IntegerValue, 0, setTriggerInPolarity(port, value))            \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_DOWNSCALE, IntegerValue, 1, setTriggerInDownscale(port, value))          \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_DOWNSCALE_PHASE, IntegerValue, 0, setTriggerInPhase(port, value))        \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_BYPASS_SRC, IntegerValue, 0, setTriggerInBypassSource(port, value))      \
    ORBELLINE_PLAIN(X, FG_SENDSOFTWARETRIGGER, IntegerValue, 1, sendSoftwareTrigger(port, value))            \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR, IntegerValue, 1,                                 \
                    clearInputPulseCount(port, value))                                                       \
    ORBELLINE_PLAIN(X, FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, IntegerValue, 1,                            \
                    clearMinMaxFrequency(port, value))                                                       \
    ORBELLINE_PLAIN(X, FG_TRIGGER_MULTIPLY_PULSES, IntegerValue, 1, setMultiplyPulses(port, value))          \
    ORBELLINE_PLAIN(X, FG_TRIGGERQUEUE_MODE, IntegerValue, 0, setQueueMode(port, value))                     \
    ORBELLINE_PLAIN(X, FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, IntegerValue, 2047,                    \
                    setQueueOnThreshold(port, value))                                                        \
    ORBELLINE_PLAIN(X, FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, IntegerValue, 2,                      \
                    setQueueOffThreshold(port, value))                                                       \
    ORBELLINE_PULSE_FORM_GENERATOR(X, 0, 4000.0)                                                             \
    ORBELLINE_PULSE_FORM_GENERATOR(X, 1, 4.0)                                                                \
    ORBELLINE_PULSE_FORM_GENERATOR(X, 2, 4.0)                                                                \
    ORBELLINE_PULSE_FORM_GENERATOR(X, 3, 4.0)                                                                \
    ORBELLINE_PLAIN(X, FG_CAMERA_ACTION_COMMAND_SOURCE, IntegerValue, 0,                                     \
                    setActionCommandSource(port, value))                                                     \
    ORBELLINE_TRIGGER_OUTPUT(X, 0, 6)                                                                        \
    ORBELLINE_TRIGGER_OUTPUT(X, 1, 7)                                                                        \
    ORBELLINE_TRIGGER_OUTPUT(X, 2, 5)                                                                        \
    ORBELLINE_TRIGGER_OUTPUT(X, 3, 5)                                                                        \
    ORBELLINE_PLAIN(X, FG_TRIGGEROUT_STATS_SOURCE, IntegerValue, 0, setOutputStatisticsSource(port, value))  \
    ORBELLINE_PLAIN(X, FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR, IntegerValue, 1,                                \
                    clearOutputPulseCount(port, value))                                                      \
    ORBELLINE_PLAIN(X, FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR, IntegerValue, 1,                              \
                    clearMissingFrameResponse(port, value))                                                  \
    ORBELLINE_PLAIN(X, FG_TRIGGER_OUTPUT_EVENT_SELECT, IntegerValue, 0, setOutputEventSource(port, value))

/// The last accepted value of every writable parameter and port: cache_<name>_P0, cache_<name>_P1, and
/// cache_<name>(port) for code that serves both. They start at the documented defaults.
struct StandardParameterCaches {
#define X(name, Value, initial, write, read)                                                                 \
    Value::Stored cache_##name##_P0 = initial;                                                               \
    Value::Stored cache_##name##_P1 = initial;                                                               \
    Value::Stored& cache_##name(int port) { return port == 0 ? cache_##name##_P0 : cache_##name##_P1; }
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
};

/// The documented default of a parameter, by its name.
namespace defaults {
#define X(name, Value, initial, write, read)                                                                 \
    inline Value::Stored name() { return initial; }
ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
} // namespace defaults

/// The standard parameters that can only be read: X(name, kind of value, how it is read into `out`).
#define ORBELLINE_READ_ONLY_PARAMETERS(X)                                                                    \
    X(FG_APPLET_VERSION, IntegerValue, readConstant(2, out))                                                 \
    X(FG_APPLET_REVISION, IntegerValue, readConstant(4, out))                                                \
    X(FG_APPLET_ID, IntegerValue, readConstant(0, out))                                                      \
    X(FG_QEL_FILE, TextValue, readCache(identity::designFile, out))                                          \
    X(FG_DMASTATUS, IntegerValue, getUnwrappedParameter(FG_DMASTATUS, out, port))                            \
    X(FG_CAMSTATUS, IntegerValue, readCameraStatus(port, out))                                               \
    X(FG_CAMSTATUS_EXTENDED, IntegerValue, readExtendedCameraStatus(port, out))                              \
    X(FG_TRANSFER_LEN, IntegerValue, getUnwrappedParameter(FG_TRANSFER_LEN, out, port))                      \
    X(FG_NR_OF_PROCESSES, IntegerValue, getUnwrappedParameter(FG_NR_OF_PROCESSES, out, port))                \
    X(FG_NR_OF_DMAS, IntegerValue, getUnwrappedParameter(FG_NR_OF_DMAS, out, port))                          \
    X(FG_NR_OF_CAMS, IntegerValue, getUnwrappedParameter(FG_NR_OF_CAMS, out, port))                          \
    X(FG_DMA_PORT, IntegerValue, getUnwrappedParameter(FG_DMA_PORT, out, port))                              \
    X(FG_CAM_PORT, IntegerValue, getUnwrappedParameter(FG_CAM_PORT, out, port))                              \
    X(FG_APC_STOP_TIMEOUT, IntegerValue, getUnwrappedParameter(FG_APC_STOP_TIMEOUT, out, port))              \
    X(FG_FILLLEVEL, IntegerValue, readFillLevel(port, out))                                                  \
    X(FG_OVERFLOW, IntegerValue, readOverflow(port, out))                                                    \
    X(FG_PIXELDEPTH, IntegerValue, readConstant(12, out))                                                    \
    X(FG_LUT_IMPLEMENTATION_TYPE, IntegerValue, readConstant(0, out))                                        \
    X(FG_LUT_IN_BITS, IntegerValue, readConstant(12, out))                                                   \
    X(FG_LUT_OUT_BITS, IntegerValue, readConstant(12, out))                                                  \
    X(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, IntegerValue, readExceededPeriodLimits(port, out))                  \
    X(FG_DIGIO_INPUT, IntegerValue, readDesign(port, design::TriggerInput_InputStatus_Status, out))          \
    X(FG_SOFTWARETRIGGER_IS_BUSY, IntegerValue, readSoftwareTriggerBusy(port, out))                          \
    X(FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL, IntegerValue, readSoftwareTriggerQueue(port, out))                 \
    X(FG_TRIGGERIN_STATS_PULSECOUNT, IntegerValue,                                                           \
      readDesign(port, design::InputStatistics_ReadPulses_Status, out))                                      \
    X(FG_TRIGGERIN_STATS_FREQUENCY, RealValue,                                                               \
      readFrequency(port, design::InputStatistics_ReadPeriod_Status, out))                                   \
    X(FG_TRIGGERIN_STATS_MINFREQUENCY, RealValue,                                                            \
      readFrequency(port, design::InputStatistics_ReadMax_Status, out))                                      \
    X(FG_TRIGGERIN_STATS_MAXFREQUENCY, RealValue,                                                            \
      readFrequency(port, design::InputStatistics_ReadMin_Status, out))                                      \
    X(FG_TRIGGERQUEUE_FILLLEVEL, IntegerValue, readQueueFillLevel(port, out))                                \
    X(FG_CAMERA_ACTION_COMMAND_PENDING_COUNT, IntegerValue,                                                  \
      readDesign(port, design::TriggerCamera_ActionCommand_PendingActionCmdCount, out))                      \
    X(FG_TRIGGEROUT_STATS_PULSECOUNT, IntegerValue,                                                          \
      readDesign(port, design::OutputStatistics_ReadPulses_Status, out))                                     \
    X(FG_MISSING_CAMERA_FRAME_RESPONSE, IntegerValue, readMissingFrameResponse(port, out))
