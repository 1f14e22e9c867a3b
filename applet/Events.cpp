// The runtime's standard event names over the events of the loaded design, whatever their order there.

#include "applet/AppletWrapper.h"
#include "platform/DesignRuntime.h"

#include <string_view>

namespace error = kavo::error;

namespace {

/// Events behind the 64th have no bit in a mask.
constexpr int mostDesignEvents = 64;

struct StandardEvent {
    const char* name;
    const char* designEvent;
};

#define MONITORING_EVENT(event) "Device1_Process2_Trigger_Monitoring_MonitoringEvents_" event
#define FRAME_EVENT(event) "Device1_Process2_Trigger_Monitoring_FVALEvents_" event
#define INPUT_EVENTS(pin)                                                                                    \
    {"FG_TRIGGER_INPUT" #pin "_RISING",                                                                      \
     "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_Pin" #pin},                              \
    {                                                                                                        \
        "FG_TRIGGER_INPUT" #pin "_FALLING",                                                                  \
            "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_NotPin" #pin                      \
    }

/// The events that a camera port has of its own.
#define FRAME_EVENTS(camera)                                                                                 \
    {"FG_OVERFLOW_CAM" #camera, "Device1_Process" #camera "_Overflow_Overflow"},                             \
        {"FG_START_OF_FRAME_CAM_PORT_" #camera, FRAME_EVENT("Cam" #camera "_FrameStart")}, {                 \
        "FG_END_OF_FRAME_CAM_PORT_" #camera, FRAME_EVENT("Cam" #camera "_FrameEnd")                          \
    }
#define TRIGGER_EVENTS(camera)                                                                               \
    {"FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CAM" #camera, MONITORING_EVENT("Cam" #camera "Override")},           \
        {"FG_MISSING_CAM" #camera "_FRAME_RESPONSE", MONITORING_EVENT("Cam" #camera "MissingFrame")},        \
        {"FG_TRIGGER_QUEUE_FILLLEVEL_THRESHOLD_CAM" #camera "_ON",                                           \
         MONITORING_EVENT("Cam" #camera "HysteresisOn")},                                                    \
        {"FG_TRIGGER_QUEUE_FILLLEVEL_THRESHOLD_CAM" #camera "_OFF",                                          \
         MONITORING_EVENT("Cam" #camera "HysteresisOff")},                                                   \
    {                                                                                                        \
        "FG_TRIGGER_OUTPUT_CAM" #camera, MONITORING_EVENT("Cam" #camera "OutputEvent")                       \
    }

// The inputs serve both ports and stand here once; entered again for port 1 they would change nothing.
constexpr StandardEvent standardEvents[] = {
    FRAME_EVENTS(0), INPUT_EVENTS(0), INPUT_EVENTS(1), INPUT_EVENTS(2),   INPUT_EVENTS(3), INPUT_EVENTS(4),
    INPUT_EVENTS(5), INPUT_EVENTS(6), INPUT_EVENTS(7), TRIGGER_EVENTS(0), FRAME_EVENTS(1), TRIGGER_EVENTS(1),
};
static_assert(std::size(standardEvents) == 32);

/// Mask of every design event by its name. The first of two events of one name counts.
std::map<std::string_view, std::uint64_t> designEventMasks(fpga_design* design) {
    std::map<std::string_view, std::uint64_t> masks;
    std::uint64_t mask = 1;
    for (int index = 0; index < mostDesignEvents; ++index) {
        const QelEvent* event = QelGetEvent(design, index);
        if (event == nullptr) {
            break;
        }
        masks.emplace(event->name, mask);
        mask *= 2;
    }
    return masks;
}

} // namespace

void FgQxWrapperImpl::fillEvents() {
    const auto masks = designEventMasks(designHandle());
    for (const StandardEvent& event : standardEvents) {
        if (const auto found = masks.find(event.designEvent); found != masks.end()) {
            map_event_name_event_id.emplace(event.name, found->second);
            map_event_id_event_name.emplace(found->second, event.name);
        }
    }
}

std::uint64_t FgQxWrapperImpl::Fg_getEventMask(const char* name) {
    const auto found = name != nullptr ? map_event_name_event_id.find(std::string_view(name))
                                       : map_event_name_event_id.end();
    if (found == map_event_name_event_id.end()) {
        setError(error::invalidParameter);
        return 0;
    }
    setError(error::ok);
    return found->second;
}

const char* FgQxWrapperImpl::Fg_getEventName(std::uint64_t mask) {
    const auto found = map_event_id_event_name.find(mask);
    if (found == map_event_id_event_name.end()) {
        setError(error::invalidParameter);
        return nullptr;
    }
    setError(error::ok);
    return found->second;
}
