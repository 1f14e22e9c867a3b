#pragma once

#include "console/BoardControl.h"
#include "console/Setting.h"
#include "console/TriggerDiagram.h"

#include <string>
#include <vector>

namespace orbctl {

class Session;

/// Parameters set while a recording runs.
struct TimedSetting {
    std::uint64_t tick = 0; ///< from the beginning of the recording
    Setting setting;
};

/// Pulses put on an input pin while a recording runs; their high and low times are equal.
struct InputPulses {
    unsigned input = 0;
    std::uint64_t period = 0; ///< ticks, at least 2
    std::uint64_t count = 0;  ///< 0 without end
};

/// A recording of trigger signals over a span of board time.
struct RecordingPlan {
    std::string title;
    std::vector<unsigned> ports;
    std::uint64_t ticks = 0;
    std::vector<TimedSetting> settings;
    std::vector<InputPulses> inputs;
};

/// Reads "TIME:NAME=VALUE", such as "100ms:FG_TRIGGERSTATE=TS_SYNC_STOP". \throws Failure (usage)
TimedSetting timedSettingFrom(const std::string& text);
/// Reads "INPUT:PERIOD" or "INPUT:PERIOD:COUNT", such as "0:10ms:5". \throws Failure (usage)
InputPulses inputPulsesFrom(const std::string& text);

/// Lets the board's time pass by hand, so that the recording is exact to the tick and takes no time of its
/// own. \throws Failure (notFound) where the runtime has no board in software, and as applySettings() does
TriggerDiagram recorded(Session& session, const RecordingPlan& plan);

/// "mode ATM_GENERATOR, state TS_ACTIVE, 8 Hz" of a port, for titles.
std::string triggerTitle(Session& session, unsigned port);

} // namespace orbctl
