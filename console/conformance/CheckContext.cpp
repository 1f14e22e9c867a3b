#include "console/conformance/CheckContext.h"

#include "console/Failure.h"

#include <algorithm>
#include <limits>

namespace orbctl {

namespace {

const Parameter* findIn(const std::vector<Parameter>& parameters, const std::string& name) {
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const Parameter& parameter) { return parameter.name == name; });
    return found == parameters.end() ? nullptr : &*found;
}

} // namespace

Parameter CheckContext::described(unsigned port, const std::string& name) const {
    const std::vector<Parameter> parameters = describedParameters(applet, port);
    const Parameter* const found = findIn(parameters, name);
    if (found == nullptr)
        throw Failure(ExitStatus::refused, "the applet does not describe " + name);
    return *found;
}

bool CheckContext::isDescribed(unsigned port, const std::string& name) const {
    return findIn(describedParameters(applet, port), name) != nullptr;
}

CheckSubject subjectOf(const Parameter& parameter) { return {parameter.port, parameter.name}; }

const std::vector<unsigned>& strangeDmaIndices() {
    static const std::vector<unsigned> indices = {
        AppletHandle::numberOfPorts, std::numeric_limits<int>::max(), std::numeric_limits<unsigned>::max()};
    return indices;
}

} // namespace orbctl
