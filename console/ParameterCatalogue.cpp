#include "console/ParameterCatalogue.h"

#include "console/AppletHandle.h"
#include "console/NameSuggestion.h"
#include "console/NumberText.h"
#include "console/RegisterRecord.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace orbctl {

const char* const undescribedCategory = "Without description";

namespace {

std::vector<std::string> allNames(const AppletHandle& applet) {
    std::vector<std::string> names;
    const int count = applet.functions().parameterCount(applet.handle());
    for (int index = 0; index < count; ++index) {
        const char* const name = applet.functions().parameterName(applet.handle(), index);
        if (name != nullptr)
            names.emplace_back(name);
    }
    return names;
}

Parameter undescribed(const AppletHandle& applet, const std::string& name, unsigned port) {
    Parameter parameter;
    parameter.id = applet.functions().parameterIdByName(applet.handle(), name.c_str());
    parameter.port = port;
    parameter.name = name;
    parameter.category = {undescribedCategory};
    return parameter;
}

} // namespace

ParameterCatalogue::ParameterCatalogue(const AppletHandle& applet, unsigned port)
    : mParameters(parametersOf(applet.functions().parameterInfo(applet.handle(), static_cast<int>(port)))) {
    std::unordered_set<std::string> described;
    for (const Parameter& parameter : mParameters)
        described.insert(parameter.name);
    for (const std::string& name : allNames(applet))
        if (described.count(name) == 0)
            mParameters.push_back(undescribed(applet, name, port));
}

const Parameter* ParameterCatalogue::findName(const std::string& name) const {
    const auto found = std::find_if(mParameters.begin(), mParameters.end(),
                                    [&](const Parameter& parameter) { return parameter.name == name; });
    return found == mParameters.end() ? nullptr : &*found;
}

const Parameter* ParameterCatalogue::findId(int id) const {
    const auto found = std::find_if(mParameters.begin(), mParameters.end(),
                                    [&](const Parameter& parameter) { return parameter.id == id; });
    return found == mParameters.end() ? nullptr : &*found;
}

const Parameter& ParameterCatalogue::find(const std::string& nameOrId) const {
    if (const auto id = unsignedFrom(nameOrId)) {
        const bool fits = *id <= static_cast<std::uint64_t>(std::numeric_limits<int>::max());
        if (const Parameter* parameter = fits ? findId(static_cast<int>(*id)) : nullptr)
            return *parameter;
        throw Failure(ExitStatus::notFound, "there is no parameter with the id " + nameOrId);
    }
    if (const Parameter* parameter = findName(nameOrId))
        return *parameter;
    std::vector<std::string> names;
    for (const Parameter& parameter : mParameters)
        names.push_back(parameter.name);
    throw Failure(ExitStatus::notFound, "there is no parameter " + nameOrId + didYouMean(nameOrId, names));
}

} // namespace orbctl
