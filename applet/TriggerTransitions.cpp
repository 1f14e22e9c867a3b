#include "applet/TriggerTransitions.h"

namespace {

// The names of the tables below.

constexpr unsigned Generator = modeGenerator;
constexpr unsigned External = modeExternal;
constexpr unsigned Software = modeSoftware;
constexpr unsigned Synchronized = modeSynchronized;

constexpr unsigned Active = stateActive;
constexpr unsigned AsyncStop = stateAsyncStop;
constexpr unsigned SyncStop = stateSyncStop;

constexpr TriggerStep OUT0 = TriggerStep::OUT0;
constexpr TriggerStep OUT1 = TriggerStep::OUT1;
constexpr TriggerStep GEN0 = TriggerStep::GEN0;
constexpr TriggerStep GEN1 = TriggerStep::GEN1;
constexpr TriggerStep RQ = TriggerStep::RQ;
constexpr TriggerStep CD = TriggerStep::CD;
constexpr TriggerStep GCD = TriggerStep::GCD;
constexpr TriggerStep CPF = TriggerStep::CPF;
constexpr TriggerStep EXT0 = TriggerStep::EXT0;
constexpr TriggerStep EXT1 = TriggerStep::EXT1;
constexpr TriggerStep SYNC0 = TriggerStep::SYNC0;
constexpr TriggerStep SYNC1 = TriggerStep::SYNC1;
constexpr TriggerStep EN0 = TriggerStep::EN0;
constexpr TriggerStep EN1 = TriggerStep::EN1;

/// Outputs off, input path and queue fresh, outputs on: how the queued modes start.
#define ARM OUT0, CD, RQ, GCD, CPF, OUT1

/// The mode stays, the state changes. What is missing has no steps: a software trigger, for one, is stopped
/// by its outputs alone, as no more pulses are sent.
struct StateChange {
    unsigned mode, from, to;
    TriggerSteps steps;
};

/// The state stays, the mode changes.
struct ModeChange {
    unsigned state, from, to;
    TriggerSteps steps;
};

template <TriggerStep... steps>
struct Sequence {
    static constexpr TriggerStep list[] = {steps...};
};
#define STEPS(...) TriggerSteps(Sequence<__VA_ARGS__>::list)

// clang-format off

constexpr StateChange stateChanges[] = {
    {Generator,    Active,    AsyncStop, STEPS(OUT0, GEN0)},
    {Generator,    Active,    SyncStop,  STEPS(GEN0)},
    {Generator,    AsyncStop, Active,    STEPS(CPF, OUT1, GEN1)},
    {Generator,    SyncStop,  Active,    STEPS(CPF, GEN1)},
    {Generator,    SyncStop,  AsyncStop, STEPS(OUT0)},

    {External,     Active,    AsyncStop, STEPS(OUT0, EXT0)},
    {External,     Active,    SyncStop,  STEPS(EXT0)},
    {External,     AsyncStop, Active,    STEPS(CD, RQ, GCD, CPF, OUT1, EXT1)},
    {External,     SyncStop,  Active,    STEPS(ARM, EXT1)},
    {External,     SyncStop,  AsyncStop, STEPS(OUT0)},

    {Software,     Active,    AsyncStop, STEPS(OUT0)},
    {Software,     AsyncStop, Active,    STEPS(CD, RQ, GCD, CPF, OUT1)},
    {Software,     SyncStop,  Active,    STEPS(ARM)},
    {Software,     SyncStop,  AsyncStop, STEPS(OUT0)},

    {Synchronized, Active,    AsyncStop, STEPS(OUT0, EN0)},
    {Synchronized, Active,    SyncStop,  STEPS(EN0)},
    {Synchronized, AsyncStop, Active,    STEPS(CPF, OUT1, EN1)},
    {Synchronized, SyncStop,  Active,    STEPS(OUT0, CPF, OUT1, EN1)},
    {Synchronized, SyncStop,  AsyncStop, STEPS(OUT0)},
};

constexpr ModeChange modeChanges[] = {
    {Active,    Generator,    External,     STEPS(ARM, EXT1)},
    {Active,    Generator,    Software,     STEPS(ARM)},
    {Active,    External,     Generator,    STEPS(EXT0, OUT0, CPF, OUT1, GEN1)},
    {Active,    External,     Software,     STEPS(EXT0, ARM)},
    {Active,    Software,     Generator,    STEPS(OUT0, CPF, OUT1, GEN1)},
    {Active,    Software,     External,     STEPS(ARM, EXT1)},

    // Stopped: the new mode starts with its own row when the state changes. The external input stays attached,
    // and slave mode stays on.
    {AsyncStop, External,     Generator,    STEPS(GEN0)},
    {AsyncStop, Software,     Generator,    STEPS(GEN0)},
    {SyncStop,  External,     Generator,    STEPS(GEN0)},
    {SyncStop,  Software,     Generator,    STEPS(GEN0)},

    // Port 1 only.
    {Active,    Generator,    Synchronized, STEPS(OUT0, SYNC1, CPF, OUT1, EN1)},
    {Active,    Software,     Synchronized, STEPS(OUT0, SYNC1, CPF, OUT1, EN1)},
    {Active,    External,     Synchronized, STEPS(EXT0, OUT0, CPF, OUT1, EN1)},
    {SyncStop,  Generator,    Synchronized, STEPS(OUT0, SYNC1, EN0)},
    {SyncStop,  External,     Synchronized, STEPS(OUT0, SYNC1, EN0)},
    {SyncStop,  Software,     Synchronized, STEPS(OUT0, SYNC1, EN0)},
    {AsyncStop, Generator,    Synchronized, STEPS(SYNC1, EN0)},
    {AsyncStop, External,     Synchronized, STEPS(SYNC1, EN0)},
    {AsyncStop, Software,     Synchronized, STEPS(SYNC1, EN0)},
    {Active,    Synchronized, Generator,    STEPS(OUT0, SYNC0, CPF, OUT1, GEN1)},
    {Active,    Synchronized, External,     STEPS(OUT0, SYNC0, CD, RQ, GCD, CPF, OUT1, EXT1)},
    {Active,    Synchronized, Software,     STEPS(OUT0, SYNC0, CD, RQ, GCD, CPF, OUT1)},
};

// clang-format on

} // namespace

TriggerSteps triggerSteps(unsigned oldMode, unsigned oldState, unsigned newMode, unsigned newState) {
    if (oldMode == newMode) {
        for (const StateChange& change : stateChanges) {
            if (change.mode == newMode && change.from == oldState && change.to == newState) {
                return change.steps;
            }
        }
        return {};
    }
    for (const ModeChange& change : modeChanges) {
        if (change.state == oldState && change.from == oldMode && change.to == newMode) {
            return change.steps;
        }
    }
    return {};
}
