#include "tests/trust/ParameterAccess.h"

#include "applet/Enumerations.h"
#include "platform/ParameterIds.h"

namespace {

template <class Limits, class Number>
std::vector<TrialValue> ofRange(const Limits& limits, Number step) {
    std::vector<TrialValue> values{limits.from};
    for (const Number value : {static_cast<Number>(limits.from + step),
                               static_cast<Number>(limits.from + (limits.to - limits.from) / 2), limits.to}) {
        if (value > limits.from && value <= limits.to && std::get<Number>(values.back()) != value) {
            values.emplace_back(value);
        }
    }
    return values;
}

std::vector<TrialValue> ofEnumeration(const EnumReg& entries) {
    std::vector<TrialValue> values;
    for (int index = 0; index < entries.nrOfElements; ++index) {
        values.emplace_back(static_cast<unsigned>(entries.enumValues[index]));
    }
    return values;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const TrialValue& value) {
    if (const auto* entry = std::get_if<FieldParameterInt_s>(&value)) {
        return out << "entry " << entry->index << " = " << entry->value;
    }
    if (const auto* number = std::get_if<unsigned>(&value)) {
        return out << *number;
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return out << *number;
    }
    return out << std::get<std::string>(value);
}

std::ostream& operator<<(std::ostream& out, const Scene& scene) { return out << scene.name; }

int setTo(AppletOnBoard& applet, int id, const TrialValue& value, int port) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return applet.set(id, text->c_str(), port);
    }
    if (const auto* number = std::get_if<unsigned>(&value)) {
        return applet.set(id, *number, port);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return applet.set(id, *number, port);
    }
    return applet.set(id, std::get<FieldParameterInt_s>(value), port);
}

std::vector<TrialValue> trialValues(AppletOnBoard& applet, int id, int port, const std::string& file) {
    if (id == FG_SENDSOFTWARETRIGGER) {
        // Every pulse is a write: a few do.
        return {1U, 3U};
    }
    const RegisterInfo* record = applet.record(id, port);
    if (record == nullptr) {
        return {1U};
    }
    switch (record->format) {
    case REG_FORMAT_UINT:
        return ofRange(record->u.uiReg, record->u.uiReg.steps);
    case REG_FORMAT_DOUBLE:
        return ofRange(record->u.dReg, record->u.dReg.steps);
    case REG_FORMAT_ENUM:
        return ofEnumeration(record->u.eReg);
    case REG_FORMAT_STRING:
        return {file};
    case REG_FORMAT_UINTFIELD:
        return {FieldParameterInt_s{record->u.uifReg.to, 0}, FieldParameterInt_s{7, 4095}};
    default:
        return {1U};
    }
}

std::vector<Scene> scenesOf(int port) {
    constexpr double slow = 0.0146;
    std::vector<Scene> scenes{
        {"Fresh", {}},
        {"QueuedSoftware",
         {{FG_TRIGGER_FRAMESPERSECOND, slow},
          {FG_AREATRIGGERMODE, unsigned{modeSoftware}},
          {FG_TRIGGERSTATE, unsigned{stateActive}},
          {FG_TRIGGERQUEUE_MODE, unsigned{switchedOn}},
          {FG_WIDTH, 16U},
          {FG_HEIGHT, 2U},
          {FG_LUT_TYPE, unsigned{lookupTableCustom}}}},
        {"External",
         {{FG_AREATRIGGERMODE, unsigned{modeExternal}},
          {FG_TRIGGERSTATE, unsigned{stateAsyncStop}},
          {FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE, 7U},
          {FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE_PHASE, 3U},
          {FG_TRIGGERIN_DOWNSCALE, 4000000000U},
          {FG_XOFFSET, 1600U},
          {FG_PROCESSING_GAMMA, 2.0}}},
        {"ActiveGenerator",
         {{FG_TRIGGERSTATE, unsigned{stateActive}}, {FG_MTU_SIZE, 1500U}, {FG_GBE_CAMTYPE, 4U}}},
    };
    if (port == 1) {
        scenes.push_back(
            {"Synchronized",
             {{FG_TRIGGERSTATE, unsigned{stateActive}}, {FG_AREATRIGGERMODE, unsigned{modeSynchronized}}}});
    }
    return scenes;
}

void enter(AppletOnBoard& applet, const Scene& scene, int port) {
    for (const auto& [id, value] : scene.settings) {
        ASSERT_EQ(setTo(applet, id, value, port), 0) << scene << ", parameter " << id << " <- " << value;
    }
}
