#include "tests/applet/TriggerSettings.h"

#include <limits>

namespace {

const std::vector<int>& integerParameters() {
    static const std::vector<int> ids = [] {
        std::vector<int> all = {FG_AREATRIGGERMODE,
                                FG_TRIGGERSTATE,
                                FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR,
                                FG_TRIGGERIN_SRC,
                                FG_TRIGGERIN_POLARITY,
                                FG_TRIGGERIN_DOWNSCALE,
                                FG_TRIGGERIN_DOWNSCALE_PHASE,
                                FG_TRIGGERIN_BYPASS_SRC,
                                FG_SENDSOFTWARETRIGGER,
                                FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR,
                                FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR,
                                FG_TRIGGER_MULTIPLY_PULSES,
                                FG_TRIGGERQUEUE_MODE,
                                FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD,
                                FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD,
                                FG_CAMERA_ACTION_COMMAND_SOURCE,
                                FG_TRIGGEROUT_SELECT0,
                                FG_TRIGGEROUT_SELECT1,
                                FG_TRIGGEROUT_SELECT2,
                                FG_TRIGGEROUT_SELECT3,
                                FG_TRIGGEROUT_STATS_SOURCE,
                                FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR,
                                FG_TRIGGER_OUTPUT_EVENT_SELECT,
                                FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR};
        for (const int generator : {0, 1, 2, 3}) {
            all.push_back(downscaleOf(generator));
            all.push_back(phaseOf(generator));
        }
        return all;
    }();
    return ids;
}

void addCaches(TriggerSettings& settings, FgQxWrapperImpl& wrapper, int port, const std::string& where) {
    settings["cached rate" + where] = wrapper.cache_FG_TRIGGER_FRAMESPERSECOND(port);
    settings["cached debounce" + where] = wrapper.cache_FG_TRIGGERIN_DEBOUNCE(port);
    settings["cached delay 0" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN0_DELAY(port);
    settings["cached delay 1" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN1_DELAY(port);
    settings["cached delay 2" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN2_DELAY(port);
    settings["cached delay 3" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN3_DELAY(port);
    settings["cached width 0" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN0_WIDTH(port);
    settings["cached width 1" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN1_WIDTH(port);
    settings["cached width 2" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN2_WIDTH(port);
    settings["cached width 3" + where] = wrapper.cache_FG_TRIGGER_PULSEFORMGEN3_WIDTH(port);
}

} // namespace

TriggerSettings settingsOf(AppletOnBoard& applet, int port) {
    TriggerSettings settings;
    const std::string where = " of port " + std::to_string(port);
    for (const int id : integerParameters()) {
        const std::string name = std::to_string(id) + where;
        settings[name] = applet.get(id, port);
        const RegisterInfo& record = *applet.record(id, port);
        if (record.format == REG_FORMAT_UINT) {
            settings["smallest " + name] = record.u.uiReg.from;
            settings["largest " + name] = record.u.uiReg.to;
        }
    }
    for (const int id :
         {static_cast<int>(FG_TRIGGER_FRAMESPERSECOND), static_cast<int>(FG_TRIGGERIN_DEBOUNCE), delayOf(0),
          delayOf(1), delayOf(2), delayOf(3), widthOf(0), widthOf(1), widthOf(2), widthOf(3)}) {
        settings[std::to_string(id) + where] = applet.getReal(id, port);
    }
    addCaches(settings, applet.wrapper(), port, where);
    return settings;
}

TriggerSettings settingsOf(AppletOnBoard& applet) {
    TriggerSettings settings = settingsOf(applet, 0);
    settings.merge(settingsOf(applet, 1));
    return settings;
}

void putRegister(AppletOnBoard& applet, int port, const std::string& name, std::uint64_t value) {
    applet.board().setDesignValue(AppletOnBoard::trigger(port, name), value);
}

std::uint64_t registerValue(AppletOnBoard& applet, int port, const std::string& name) {
    return applet.board().designValue(AppletOnBoard::trigger(port, name));
}

void shortenAllPulses(AppletOnBoard& applet, int port) {
    for (const int generator : {0, 1, 2, 3}) {
        putRegister(applet, port, formRegister(generator, "Delay_Delay"), 0);
        putRegister(applet, port, formRegister(generator, "Width_Width"), 1);
    }
}
