#include "console/conformance/AppletRules.h"

#include "console/NumberText.h"

namespace orbctl {

namespace {

using Rules = std::map<std::string, ParameterRule>;

std::string generator(unsigned number, const char* parameter) {
    return "FG_TRIGGER_PULSEFORMGEN" + textOf(std::uint64_t{number}) + parameter;
}

const Need stopped{"FG_TRIGGERSTATE", Need::Value::given, "TS_SYNC_STOP"};

/// Every rate is possible only while all pulses are shorter than its period. Nothing runs at it meanwhile.
std::vector<Need> shortPulses() {
    std::vector<Need> needs = {stopped};
    for (unsigned number = 0; number < 4; ++number) {
        needs.push_back({generator(number, "_DOWNSCALE"), Need::Value::maximum, ""});
        needs.push_back({generator(number, "_DELAY"), Need::Value::minimum, ""});
        needs.push_back({generator(number, "_WIDTH"), Need::Value::minimum, ""});
    }
    return needs;
}

/// Pulses can be sent in the software mode; without a queue, one in each period.
std::vector<Need> softwareTrigger() {
    std::vector<Need> needs = shortPulses();
    needs.push_back({"FG_TRIGGER_FRAMESPERSECOND", Need::Value::given, "100000"});
    needs.push_back({"FG_AREATRIGGERMODE", Need::Value::given, "ATM_SOFTWARE"});
    needs.push_back({"FG_TRIGGERSTATE", Need::Value::given, "TS_ACTIVE"});
    return needs;
}

Rules rulesOfOrbelline() {
    Rules rules;
    rules["FG_TRIGGER_FRAMESPERSECOND"].needs = shortPulses();
    for (unsigned number = 0; number < 4; ++number)
        for (const char* const parameter : {"_DELAY", "_WIDTH", "_DOWNSCALE"})
            rules[generator(number, parameter)].needs = {
                stopped, {"FG_TRIGGER_FRAMESPERSECOND", Need::Value::minimum, ""}};
    rules["FG_SENDSOFTWARETRIGGER"].needs = softwareTrigger();
    rules["FG_SENDSOFTWARETRIGGER"].answerWhileReadOnly = kavo::error::notSoftwareMode;
    rules["FG_MTU_SIZE"].step = 8;
    for (const char* const processing :
         {"FG_PROCESSING_OFFSET", "FG_PROCESSING_GAIN", "FG_PROCESSING_GAMMA", "FG_PROCESSING_INVERT"})
        rules[processing].answerWhileReadOnly = kavo::error::ok;
    rules["FG_LUT_CUSTOM_FILE"].answerWhileReadOnly = kavo::error::ok;
    rules["FG_LUT_CUSTOM_FILE"].fileWriter = "FG_LUT_SAVE_FILE";
    rules["FG_LUT_CUSTOM_FILE"].table = "FG_LUT_VALUE";
    return rules;
}

} // namespace

AppletRules AppletRules::of(const std::string& appletName) {
    AppletRules rules;
    if (appletName == "Orbelline")
        rules.mRules = rulesOfOrbelline();
    return rules;
}

const ParameterRule& AppletRules::rule(const std::string& parameter) const {
    static const ParameterRule none;
    const auto found = mRules.find(parameter);
    return found == mRules.end() ? none : found->second;
}

} // namespace orbctl
