#include "tests/applet/TriggerChange.h"

#include "applet/ParameterFamilies.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <stdexcept>

namespace {

/// Changes of the state in one mode.
struct StateRow {
    unsigned mode, from, to;
    const char* steps;
};

/// Changes of the mode in one state.
struct ModeRow {
    unsigned state, from, to;
    const char* steps;
};

// clang-format off
const std::vector<StateRow> stateRows = {
    {generatorMode,    active,    asyncStop, "OUT0 GEN0"},
    {generatorMode,    active,    syncStop,  "GEN0"},
    {generatorMode,    asyncStop, active,    "CPF OUT1 GEN1"},
    {generatorMode,    syncStop,  active,    "CPF GEN1"},
    {generatorMode,    syncStop,  asyncStop, "OUT0"},
    {generatorMode,    asyncStop, syncStop,  ""},
    {externalMode,     active,    asyncStop, "OUT0 EXT0"},
    {externalMode,     active,    syncStop,  "EXT0"},
    {externalMode,     asyncStop, active,    "CD RQ GCD CPF OUT1 EXT1"},
    {externalMode,     syncStop,  active,    "OUT0 CD RQ GCD CPF OUT1 EXT1"},
    {externalMode,     syncStop,  asyncStop, "OUT0"},
    {externalMode,     asyncStop, syncStop,  ""},
    {softwareMode,     active,    asyncStop, "OUT0"},
    {softwareMode,     active,    syncStop,  ""},
    {softwareMode,     asyncStop, active,    "CD RQ GCD CPF OUT1"},
    {softwareMode,     syncStop,  active,    "OUT0 CD RQ GCD CPF OUT1"},
    {softwareMode,     syncStop,  asyncStop, "OUT0"},
    {softwareMode,     asyncStop, syncStop,  ""},
    {synchronizedMode, syncStop,  active,    "OUT0 CPF OUT1 EN1"},
    {synchronizedMode, asyncStop, active,    "CPF OUT1 EN1"},
    {synchronizedMode, active,    asyncStop, "OUT0 EN0"},
    {synchronizedMode, active,    syncStop,  "EN0"},
    {synchronizedMode, syncStop,  asyncStop, "OUT0"},
    {synchronizedMode, asyncStop, syncStop,  ""},
};

const std::vector<ModeRow> modeRows = {
    {active,    generatorMode,    externalMode,     "OUT0 CD RQ GCD CPF OUT1 EXT1"},
    {active,    generatorMode,    softwareMode,     "OUT0 CD RQ GCD CPF OUT1"},
    {active,    generatorMode,    synchronizedMode, "OUT0 SYNC1 CPF OUT1 EN1"},
    {active,    externalMode,     generatorMode,    "EXT0 OUT0 CPF OUT1 GEN1"},
    {active,    externalMode,     softwareMode,     "EXT0 OUT0 CD RQ GCD CPF OUT1"},
    {active,    externalMode,     synchronizedMode, "EXT0 OUT0 CPF OUT1 EN1"},
    {active,    softwareMode,     generatorMode,    "OUT0 CPF OUT1 GEN1"},
    {active,    softwareMode,     externalMode,     "OUT0 CD RQ GCD CPF OUT1 EXT1"},
    {active,    softwareMode,     synchronizedMode, "OUT0 SYNC1 CPF OUT1 EN1"},
    {active,    synchronizedMode, generatorMode,    "OUT0 SYNC0 CPF OUT1 GEN1"},
    {active,    synchronizedMode, externalMode,     "OUT0 SYNC0 CD RQ GCD CPF OUT1 EXT1"},
    {active,    synchronizedMode, softwareMode,     "OUT0 SYNC0 CD RQ GCD CPF OUT1"},

    {syncStop,  generatorMode,    externalMode,     ""},
    {syncStop,  generatorMode,    softwareMode,     ""},
    {syncStop,  generatorMode,    synchronizedMode, "OUT0 SYNC1 EN0"},
    {syncStop,  externalMode,     generatorMode,    "GEN0"},
    {syncStop,  externalMode,     softwareMode,     ""},
    {syncStop,  externalMode,     synchronizedMode, "OUT0 SYNC1 EN0"},
    {syncStop,  softwareMode,     generatorMode,    "GEN0"},
    {syncStop,  softwareMode,     externalMode,     ""},
    {syncStop,  softwareMode,     synchronizedMode, "OUT0 SYNC1 EN0"},
    {syncStop,  synchronizedMode, generatorMode,    ""},
    {syncStop,  synchronizedMode, externalMode,     ""},
    {syncStop,  synchronizedMode, softwareMode,     ""},

    {asyncStop, generatorMode,    externalMode,     ""},
    {asyncStop, generatorMode,    softwareMode,     ""},
    {asyncStop, generatorMode,    synchronizedMode, "SYNC1 EN0"},
    {asyncStop, externalMode,     generatorMode,    "GEN0"},
    {asyncStop, externalMode,     softwareMode,     ""},
    {asyncStop, externalMode,     synchronizedMode, "SYNC1 EN0"},
    {asyncStop, softwareMode,     generatorMode,    "GEN0"},
    {asyncStop, softwareMode,     externalMode,     ""},
    {asyncStop, softwareMode,     synchronizedMode, "SYNC1 EN0"},
    {asyncStop, synchronizedMode, generatorMode,    ""},
    {asyncStop, synchronizedMode, externalMode,     ""},
    {asyncStop, synchronizedMode, softwareMode,     ""},
};
// clang-format on

const std::vector<unsigned> allStates = {active, asyncStop, syncStop};

/// 100 frames a second: 625000 ticks, and the register counts from 9.
constexpr double recognizableRate = 100.0;
constexpr unsigned recognizablePeriod = 624991;

DesignAccesses outputsOff(int port) {
    DesignAccesses accesses;
    for (const char* output : {"0", "1", "2", "3"}) {
        accesses.push_back(wrote(port, std::string("TriggerOutput_Select") + output + "_Select_Select", 5));
    }
    return accesses;
}

/// The outputs of applyRecognizableSettings().
DesignAccesses outputsOn(int port) {
    return {wrote(port, "TriggerCamera_SelectTriggerCamera_Select_Select", 4),
            wrote(port, "TriggerCamera_SelectTriggerCamera_Polarity_Invert", 1),
            wrote(port, "TriggerOutput_Select0_Select_Select", 2),
            wrote(port, "TriggerOutput_Select0_Polarity_Invert", 0),
            wrote(port, "TriggerOutput_Select1_Select_Select", 3),
            wrote(port, "TriggerOutput_Select1_Polarity_Invert", 1),
            wrote(port, "TriggerOutput_Select2_Select_Select", 5),
            wrote(port, "TriggerOutput_Select2_Polarity_Invert", 0),
            wrote(port, "TriggerOutput_Select3_Select_Select", 4),
            wrote(port, "TriggerOutput_Select3_Polarity_Invert", 0)};
}

DesignAccesses generatorOn(int port, unsigned enableQueue) {
    const DesignAccesses before = {wrote(port, "Generators_ClearQueuePulse_Mode", 1),
                                   wrote(port, "Generators_EnableQueue_Select", enableQueue)};
    const DesignAccesses after = {wrote(port, "PulseFormGenerators_Enable_Select", 1),
                                  wrote(port, "Generators_ClearQueuePulse_Mode", 0)};
    return before + frameRateAccesses(port, recognizablePeriod) + after;
}

DesignAccesses pulseFormDownscalesCleared(int port) {
    DesignAccesses accesses = {wroteShared(port,
                                           "Device1_Process2_Trigger_Monitoring_CheckForMissingFrame_Cam" +
                                               std::to_string(port) + "_ResetMissing_Mode",
                                           2)};
    for (const int generator : {0, 1, 2, 3}) {
        accesses.push_back(wrote(port, formRegister(generator, "ClearDownscale_Mode"), 2));
    }
    return accesses;
}

DesignAccesses accessesOfStep(int port, const std::string& step) {
    const std::map<std::string, DesignAccesses> steps = {
        {"OUT0", outputsOff(port)},
        {"OUT1", outputsOn(port)},
        {"GEN0", {wrote(port, "Generators_ClearQueuePulse_Mode", 1)}},
        {"GEN1", generatorOn(port, 0)},
        {"RQ", generatorOn(port, 1)},
        {"CD", {wrote(port, "Downscale_Clear_Mode", 2)}},
        {"GCD", {wrote(port, "Generators_ClearDownscale_Mode", 2)}},
        {"CPF", pulseFormDownscalesCleared(port)},
        {"EXT0", {wrote(port, "TriggerMode_SelectExternal_Select", 0)}},
        {"EXT1", {wrote(port, "TriggerMode_SelectExternal_Select", 1)}},
        {"SYNC0", {wrote(port, "Synchronize_SlaveMode_Select", 0)}},
        {"SYNC1", {wrote(port, "Synchronize_SlaveMode_Select", 1)}},
        {"EN0", {wrote(port, "PulseFormGenerators_Enable_Select", 0)}},
        {"EN1", {wrote(port, "PulseFormGenerators_Enable_Select", 1)}},
    };
    return steps.at(step);
}

std::string modeName(unsigned mode) {
    const std::map<unsigned, const char*> names = {{generatorMode, "Generator"},
                                                   {externalMode, "External"},
                                                   {synchronizedMode, "Synchronized"},
                                                   {softwareMode, "Software"}};
    return names.at(mode);
}

std::string stateName(unsigned state) {
    const std::map<unsigned, const char*> names = {
        {active, "Active"}, {asyncStop, "AsyncStop"}, {syncStop, "SyncStop"}};
    return names.at(state);
}

} // namespace

std::string nameOf(const TriggerChange& change) {
    return "Port" + std::to_string(change.port) + "_" + modeName(change.oldMode) + "_" +
           stateName(change.oldState) + "_to_" +
           (change.changesTheMode()              ? modeName(change.newMode)
            : change.oldState != change.newState ? stateName(change.newState)
                                                 : std::string("Same"));
}

std::ostream& operator<<(std::ostream& out, const TriggerChange& change) { return out << nameOf(change); }

std::vector<unsigned> modesOf(int port) {
    return port == 0 ? std::vector<unsigned>{generatorMode, externalMode, softwareMode}
                     : std::vector<unsigned>{generatorMode, externalMode, softwareMode, synchronizedMode};
}

std::vector<TriggerChange> allTriggerChanges() {
    std::vector<TriggerChange> changes;
    for (const int port : {0, 1}) {
        for (const unsigned mode : modesOf(port)) {
            for (const unsigned state : allStates) {
                for (const unsigned newState : allStates) {
                    changes.push_back({port, mode, state, mode, newState});
                }
                for (const unsigned newMode : modesOf(port)) {
                    if (newMode != mode) {
                        changes.push_back({port, mode, state, newMode, state});
                    }
                }
            }
        }
    }
    return changes;
}

std::vector<TriggerChange> writingTriggerChanges() {
    std::vector<TriggerChange> changes = allTriggerChanges();
    changes.erase(std::remove_if(changes.begin(), changes.end(),
                                 [](const TriggerChange& change) { return stepsOf(change).empty(); }),
                  changes.end());
    return changes;
}

std::string stepsOf(const TriggerChange& change) {
    for (const ModeRow& row : modeRows) {
        if (change.changesTheMode() && row.state == change.oldState && row.from == change.oldMode &&
            row.to == change.newMode) {
            return row.steps;
        }
    }
    for (const StateRow& row : stateRows) {
        if (!change.changesTheMode() && row.mode == change.oldMode && row.from == change.oldState &&
            row.to == change.newState) {
            return row.steps;
        }
    }
    if (change.changesTheMode() || change.oldState != change.newState) {
        throw std::logic_error("no row for " + nameOf(change));
    }
    return "";
}

void applyRecognizableSettings(AppletOnBoard& applet, int port) {
    constexpr unsigned notInputBypass = 11;
    constexpr unsigned generator2 = 2;
    constexpr unsigned notGenerator3 = 9;
    constexpr unsigned ground = 4;
    constexpr unsigned inputBypass = 10;
    EXPECT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, recognizableRate, port), 0);
    EXPECT_EQ(applet.set(FG_CAMERA_ACTION_COMMAND_SOURCE, notInputBypass, port), 0);
    EXPECT_EQ(applet.set(FG_TRIGGEROUT_SELECT0, generator2, port), 0);
    EXPECT_EQ(applet.set(FG_TRIGGEROUT_SELECT1, notGenerator3, port), 0);
    EXPECT_EQ(applet.set(FG_TRIGGEROUT_SELECT2, ground, port), 0);
    EXPECT_EQ(applet.set(FG_TRIGGEROUT_SELECT3, inputBypass, port), 0);
}

DesignAccesses accessesOf(int port, const std::string& steps) {
    DesignAccesses accesses;
    std::istringstream words(steps);
    for (std::string step; words >> step;) {
        accesses = std::move(accesses) + accessesOfStep(port, step);
    }
    return accesses;
}

void bringTo(AppletOnBoard& applet, int port, unsigned mode, unsigned state) {
    EXPECT_EQ(applet.set(FG_TRIGGERSTATE, syncStop, port), 0);
    EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, mode, port), 0);
    EXPECT_EQ(applet.set(FG_TRIGGERSTATE, state, port), 0);
}

int make(AppletOnBoard& applet, const TriggerChange& change) {
    return change.changesTheMode() ? applet.set(FG_AREATRIGGERMODE, change.newMode, change.port)
                                   : applet.set(FG_TRIGGERSTATE, change.newState, change.port);
}

const std::vector<int>& adjustableTriggerParameters() {
    static const std::vector<int> ids = {300200, 300201, 90,     300203, 300240, 300241, 300242, 300204,
                                         8110,   8116,   8800,   300205, 300206, 300213, 300214, 300216,
                                         300217, 300218, 300219, 300220, 300221, 300222, 300223, 300224,
                                         300225, 300226, 300227, 300228, 300229, 300230, 300231, 200394,
                                         300232, 300233, 300234, 300235, 300249};
    return ids;
}

std::map<int, int> accessFlagsOf(AppletOnBoard& applet, int port) {
    std::map<int, int> flags;
    walkParameterTree(Fg_getParameterInfo(applet.handle(), port),
                      [&](const RegisterInfo& record) { flags[record.id] = record.accessFlags; });
    return flags;
}

void markAccessFlags(AppletOnBoard& applet, int port) {
    for (const auto& [id, flags] : accessFlagsOf(applet, port)) {
        applet.record(id, port)->accessFlags = markedAccess;
    }
}

std::map<int, int> accessFlagsAfterChangeTo(AppletOnBoard& applet, int port, unsigned mode) {
    std::map<int, int> flags = accessFlagsOf(applet, port);
    for (auto& [id, flag] : flags) {
        flag = markedAccess;
    }
    for (const int id : adjustableTriggerParameters()) {
        flags[id] = 7;
    }
    if (mode == externalMode) {
        flags[FG_SENDSOFTWARETRIGGER] = 1;
    }
    return flags;
}
