#pragma once

#include "simulator/trigger/TriggerSystem.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace simulator {

/// Full design name of a register of one camera, from the part behind "TriggerCam0_".
std::string cameraRegisterName(unsigned port, const std::string& ending);

/// Keeps everything that the trigger system reports.
class TriggerRecorder : public TriggerListener {
  public:
    struct Signal {
        TriggerSignal signal;
        std::uint32_t value;
        Tick tick;
    };
    struct Event {
        TriggerEvent event;
        Tick tick;
    };
    struct ActionCommand {
        unsigned port;
        Tick tick;
    };
    struct Output {
        unsigned port;
        unsigned output;
        bool level;
        Tick tick;
    };

    void signalChanged(const TriggerSignal& signal, std::uint32_t value, Tick tick) override {
        signals.push_back({signal, value, tick});
    }
    void event(const TriggerEvent& raised, Tick tick) override { events.push_back({raised, tick}); }
    void cameraActionCommand(unsigned port, Tick tick) override { actionCommands.push_back({port, tick}); }
    void outputChanged(unsigned port, unsigned output, bool level, Tick tick) override {
        outputs.push_back({port, output, level, tick});
    }

    /// Ticks at which a signal took a value.
    std::vector<Tick> ticksOf(TriggerSignalKind kind, unsigned port, unsigned index,
                              std::uint32_t value) const;
    std::vector<Tick> ticksOf(TriggerEventKind kind, unsigned index) const;
    void clear();

    std::vector<Signal> signals;
    std::vector<Event> events;
    std::vector<ActionCommand> actionCommands;
    std::vector<Output> outputs;
};

/// A trigger system on the bench, with short ways to set it up and to look at it.
class TriggerBench : public ::testing::Test {
  protected:
    TriggerBench() { system.addListener(recorder); }

    void set(unsigned port, const std::string& ending, std::uint32_t value);
    std::uint32_t get(unsigned port, const std::string& ending);
    void setForm(unsigned port, unsigned form, std::uint32_t delay, std::uint32_t width,
                 std::uint32_t downscale = 1, std::uint32_t selectedPulse = 1);
    void setPeriod(unsigned port, Tick period);
    void setShared(const std::string& ending, std::uint32_t value);
    std::uint32_t getShared(const std::string& ending);

    /// Lets the generator run free with a period, starting now.
    void runFree(unsigned port, Tick period);
    /// Puts the generator behind its queue, empty and ready.
    void runQueued(unsigned port, Tick period);
    void setQueue(unsigned port, bool enabled, std::uint32_t fullValue);
    void setMultiply(unsigned port, std::uint32_t pulses);
    void sendSoftware(unsigned port, unsigned pulses = 1);
    /// A pulse of one tick on a pin, starting now.
    void pulseInput(unsigned pin);
    void advanceBy(Tick ticks) { system.advanceTo(system.now() + ticks); }

    std::vector<Tick> generatorPulses(unsigned port) const;
    std::vector<Tick> formRises(unsigned port, unsigned form) const;
    std::vector<Tick> formFalls(unsigned port, unsigned form) const;

    TriggerSystem system;
    TriggerRecorder recorder;
};

using Ticks = std::vector<Tick>;

} // namespace simulator
