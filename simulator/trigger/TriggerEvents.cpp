#include "simulator/trigger/TriggerListener.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr const char* inputEvents = "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_";
constexpr const char* frameEvents = "Device1_Process2_Trigger_Monitoring_FVALEvents_Cam";
constexpr const char* monitoringEvents = "Device1_Process2_Trigger_Monitoring_MonitoringEvents_Cam";

std::vector<TriggerEvent> buildEvents() {
    std::vector<TriggerEvent> events;
    for (unsigned pin = 0; pin < triggerPinCount; ++pin) {
        events.push_back({TriggerEventKind::InputRising, pin});
        events.push_back({TriggerEventKind::InputFalling, pin});
    }
    for (unsigned port = 0; port < triggerPortCount; ++port) {
        for (const TriggerEventKind kind :
             {TriggerEventKind::FrameStart, TriggerEventKind::FrameEnd, TriggerEventKind::Override,
              TriggerEventKind::MissingFrame, TriggerEventKind::HysteresisOn, TriggerEventKind::HysteresisOff,
              TriggerEventKind::OutputEvent})
            events.push_back({kind, port});
    }
    return events;
}

} // namespace

std::string designEventName(const TriggerEvent& event) {
    const std::string index = std::to_string(event.index);
    switch (event.kind) {
    case TriggerEventKind::InputRising:
        return std::string(inputEvents) + "Pin" + index;
    case TriggerEventKind::InputFalling:
        return std::string(inputEvents) + "NotPin" + index;
    case TriggerEventKind::FrameStart:
        return frameEvents + index + "_FrameStart";
    case TriggerEventKind::FrameEnd:
        return frameEvents + index + "_FrameEnd";
    case TriggerEventKind::Override:
        return monitoringEvents + index + "Override";
    case TriggerEventKind::MissingFrame:
        return monitoringEvents + index + "MissingFrame";
    case TriggerEventKind::HysteresisOn:
        return monitoringEvents + index + "HysteresisOn";
    case TriggerEventKind::HysteresisOff:
        return monitoringEvents + index + "HysteresisOff";
    case TriggerEventKind::OutputEvent:
        return monitoringEvents + index + "OutputEvent";
    }
    return {};
}

const std::vector<TriggerEvent>& triggerEvents() {
    static const std::vector<TriggerEvent> events = buildEvents();
    return events;
}

std::size_t triggerEventIndex(const TriggerEvent& event) {
    const std::vector<TriggerEvent>& events = triggerEvents();
    return static_cast<std::size_t>(std::find(events.begin(), events.end(), event) - events.begin());
}

} // namespace simulator
