#include "console/Setting.h"

#include "console/AppletHandle.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/PortChoice.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

/// A setting of one port that was understood.
struct PreparedSetting {
    Target target;
    ParameterValue value;
};

std::vector<PreparedSetting> prepare(const ParameterCatalogue& catalogue,
                                     const std::vector<Setting>& settings) {
    std::vector<PreparedSetting> prepared;
    for (const Setting& setting : settings) {
        const Target target = targetFrom(catalogue, setting.target);
        prepared.push_back({target, valueFrom(target.parameter, setting.value)});
    }
    return prepared;
}

/// Limits may have moved since the setting was prepared, by the settings before it.
Parameter asItStands(const AppletHandle& applet, const Parameter& parameter) {
    const ParameterCatalogue catalogue(applet, parameter.port);
    const Parameter* const current = catalogue.findName(parameter.name);
    return current == nullptr ? parameter : *current;
}

void write(const AppletHandle& applet, const PreparedSetting& setting, const std::string& prefix) {
    const Parameter& parameter = setting.target.parameter;
    const int code = writeParameter(applet, parameter, setting.value, setting.target.element);
    if (code != 0)
        throw Failure(ExitStatus::refused,
                      prefix + refusedWrite(asItStands(applet, parameter), setting.value, code));
}

std::uint32_t elementFrom(const Parameter& parameter, const std::string& text) {
    const auto element = unsignedFrom(text);
    if (!element || *element >= parameter.elementCount)
        throw Failure(ExitStatus::usage, parameter.name + " has the elements 0 .. " +
                                             textOf(std::uint64_t{parameter.elementCount} - 1) + ", not " +
                                             text);
    return static_cast<std::uint32_t>(*element);
}

} // namespace

Setting settingFrom(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw Failure(ExitStatus::usage, "\"" + text + "\" is no setting; write NAME=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

PortSetting portSettingFrom(const std::string& text) {
    if (text.size() > 2 && text[1] == ':' && (text[0] == '0' || text[0] == '1'))
        return {{static_cast<unsigned>(text[0] - '0')}, settingFrom(text.substr(2))};
    return {PortChoice("both").ports(), settingFrom(text)};
}

Target targetFrom(const ParameterCatalogue& catalogue, const std::string& text) {
    const std::size_t bracket = text.find('[');
    const bool hasElement = bracket != std::string::npos && text.back() == ']';
    const Parameter& parameter = catalogue.find(hasElement ? text.substr(0, bracket) : text);
    if (parameter.isField() && !hasElement)
        throw Failure(ExitStatus::usage, parameter.name + " is a field; name one of its elements, such as " +
                                             parameter.name + "[0]");
    if (!hasElement)
        return {parameter, 0, parameter.name};
    if (!parameter.isField())
        throw Failure(ExitStatus::usage, parameter.name + " has no elements");
    const std::string index = text.substr(bracket + 1, text.size() - bracket - 2);
    return {parameter, elementFrom(parameter, index), parameter.name + "[" + index + "]"};
}

void applySettings(const AppletHandle& applet, const std::vector<unsigned>& ports,
                   const std::vector<Setting>& settings) {
    std::vector<std::vector<PreparedSetting>> ofPorts;
    for (const unsigned port : ports)
        ofPorts.push_back(prepare(ParameterCatalogue(applet, port), settings));
    for (std::size_t index = 0; index < settings.size(); ++index)
        for (std::size_t place = 0; place < ports.size(); ++place)
            write(applet, ofPorts[place][index], portPrefix(ports, ports[place]));
}

} // namespace orbctl
