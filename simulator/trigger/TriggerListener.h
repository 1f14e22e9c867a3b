#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

/// Board time in ticks of 16 ns (62.5 MHz).
using Tick = std::uint64_t;

constexpr Tick neverTick = UINT64_MAX;
constexpr unsigned triggerPortCount = 2;
constexpr unsigned triggerPinCount = 8;
constexpr unsigned pulseFormCount = 4;
constexpr unsigned triggerOutputCount = 4;

enum class TriggerEventKind : std::uint8_t {
    InputRising,
    InputFalling,
    FrameStart,
    FrameEnd,
    Override,
    MissingFrame,
    HysteresisOn,
    HysteresisOff,
    OutputEvent
};

/// One event of the design's trigger block. `index` is the pin (0 .. 7) of an input event, else the port.
struct TriggerEvent {
    TriggerEventKind kind;
    unsigned index;
};

inline bool operator==(const TriggerEvent& left, const TriggerEvent& right) {
    return left.kind == right.kind && left.index == right.index;
}

/// The design's name of an event, for example
/// "Device1_Process2_Trigger_Monitoring_MonitoringEvents_Cam0Override".
std::string designEventName(const TriggerEvent& event);

/// The 30 events of the trigger block in a fixed order: a place in this list can stand for the event.
const std::vector<TriggerEvent>& triggerEvents();

/// Place of an event in triggerEvents().
std::size_t triggerEventIndex(const TriggerEvent& event);

enum class TriggerSignalKind : std::uint8_t {
    Input,          ///< level at the pin; index = pin, port 0
    DebouncedInput, ///< level behind the debounce filter; index = pin, port 0
    QueueFillLevel, ///< pulses that wait in the port's queue
    GeneratorPulse, ///< a pulse left the port's generator; value 1, an instant
    PulseForm,      ///< level of a pulse form generator; index = generator
    Output,         ///< level of a trigger output; index = output
    ActionCommand,  ///< an action command went to the camera; value 1, an instant
    FrameStart,     ///< the camera's picture began to arrive; value 1, an instant
    FrameEnd,       ///< the camera's picture has arrived; value 1, an instant
    Exposure        ///< level; recorded by whoever models the camera, never by the trigger system
};

struct TriggerSignal {
    TriggerSignalKind kind;
    unsigned port;
    unsigned index;
};

inline bool operator==(const TriggerSignal& left, const TriggerSignal& right) {
    return left.kind == right.kind && left.port == right.port && left.index == right.index;
}

/// Receives what the trigger system does, in the order in which it happens. Ticks never decrease.
/// Inside a call the listener may notify frame starts and arrivals of the same tick; it must not call
/// anything else of the trigger system.
class TriggerListener {
  public:
    virtual ~TriggerListener() = default;
    virtual void cameraActionCommand(unsigned port, Tick tick) {
        (void)port;
        (void)tick;
    }
    virtual void outputChanged(unsigned port, unsigned output, bool level, Tick tick) {
        (void)port;
        (void)output;
        (void)level;
        (void)tick;
    }
    virtual void event(const TriggerEvent& event, Tick tick) {
        (void)event;
        (void)tick;
    }
    /// Every change of every signal, outputs and action commands included.
    virtual void signalChanged(const TriggerSignal& signal, std::uint32_t value, Tick tick) {
        (void)signal;
        (void)value;
        (void)tick;
    }
};

} // namespace simulator
