#pragma once

#include "simulator/trigger/TriggerSystem.h"

#include <array>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace simulator {

/// One thing that a model reported, for comparison.
struct Report {
    Tick tick;
    std::string what;
    unsigned port;
    unsigned index;
    std::uint32_t value;
};

inline bool operator==(const Report& left, const Report& right) {
    return left.tick == right.tick && left.what == right.what && left.port == right.port &&
           left.index == right.index && left.value == right.value;
}

/// The trigger block once more, written as plainly as possible: every counter counts every tick. It shares no
/// code with the model under test beyond names and numbers of parameters.
class PerTickModel {
  public:
    PerTickModel();

    Tick now() const { return mNow; }
    void advanceTo(Tick tick);
    void write(TriggerParameterIndex index, std::uint32_t value);
    std::uint32_t read(TriggerParameterIndex index) const;
    void setInput(unsigned pin, bool level);
    void scheduleInput(unsigned pin, bool level, Tick tick);
    void driveInput(unsigned pin, Tick first, Tick high, Tick low, std::uint64_t count);
    void frameStarted(unsigned port);

    std::vector<Report> reports;

  private:
    struct Divider {
        std::uint32_t counted = 0;
        bool held = false;
        bool pulse(std::uint32_t downscale, std::uint32_t selected);
        void clear(std::uint32_t mode);
    };
    struct Count {
        std::uint32_t pulses = 0;
        bool held = false;
        void pulse();
        void clear(std::uint32_t mode);
    };
    struct Flag {
        bool up = false;
        bool held = false;
        void clear(std::uint32_t mode);
    };
    struct Form {
        Divider divider;
        bool delaying = false;
        std::uint32_t delayLeft = 0;
        bool high = false;
        std::uint32_t widthLeft = 0;
    };
    struct Pin {
        bool raw = false;
        bool accepted = false;
        Tick heldFor = 0;
    };
    struct Wave {
        bool playing = false;
        Tick first = 0;
        Tick high = 0;
        Tick low = 0;
        std::uint64_t count = 0;
    };
    struct Camera {
        bool input = false;
        Divider inputDivider;
        Count inputPulses;
        bool hasRisen = false;
        Tick sinceRise = 0;
        std::vector<Tick> periods;
        Tick lastPeriod = 0;
        bool held = true;
        std::uint32_t waiting = 0;
        std::uint32_t reportedWaiting = 0;
        bool above = false;
        bool pulsedSinceClear = false;
        Tick sincePulse = 0;
        Divider sequence;
        std::array<Form, 4> forms;
        std::array<bool, 4> outputs{};
        bool cameraTrigger = false;
        Count outputPulses;
        Flag overridden;
        Flag missing;
        bool checkHeld = false;
        bool unanswered = false;
        std::uint32_t pending = 0;
    };

    std::uint32_t value(unsigned port, const char* ending) const;
    std::uint32_t formValue(unsigned port, unsigned form, const char* ending) const;
    void report(const char* what, unsigned port, unsigned index, std::uint32_t value);
    void writeCamera(unsigned port, const std::string& ending, std::uint32_t old, std::uint32_t value);
    void writeForm(unsigned port, const std::string& ending, std::uint32_t value);
    void writeMonitoring(const std::string& name, std::uint32_t value);
    std::uint32_t queueStatus() const;

    void countTick();
    void runForms(unsigned port);
    void runGenerator(unsigned port);
    void runPins();
    void changePin(unsigned pin, bool level);
    void acceptPin(unsigned pin);
    void look(unsigned port);
    void inputRise(unsigned port);
    void trigger(unsigned port);
    void tellWaiting(unsigned port);
    void givePulse(unsigned port);
    void toForms(unsigned port);
    void startForm(unsigned port, unsigned form);
    void raise(Flag& flag, const char* what, unsigned port);
    bool source(unsigned port, std::uint32_t select) const;
    void drawOutputs(unsigned port);
    bool periodPassed(unsigned port) const;

    Tick mNow = 0;
    std::vector<std::uint32_t> mRegisters;
    mutable std::array<std::map<const char*, TriggerParameterIndex>, 2> mPlaces;
    std::array<Pin, 8> mPins;
    std::array<Wave, 8> mWaves;
    std::multimap<Tick, std::pair<unsigned, bool>> mPlan;
    std::array<Camera, 2> mCameras;
};

} // namespace simulator
