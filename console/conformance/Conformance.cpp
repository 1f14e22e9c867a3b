#include "console/conformance/Conformance.h"

#include "console/AppletIdentity.h"
#include "console/conformance/FunctionChecks.h"
#include "console/conformance/ParameterChecks.h"
#include "console/Failure.h"
#include "console/Interruption.h"
#include "console/NameSuggestion.h"
#include "console/ParameterCatalogue.h"
#include "console/ValueText.h"

#include <algorithm>
#include <fnmatch.h>
#include <utility>

namespace orbctl {

namespace {

AppletRules rulesFor(const AppletHandle& applet) {
    constexpr int nameSelector = 4176;
    if (!applet.functions().info.isBound())
        return AppletRules::of("");
    return AppletRules::of(ask(applet.functions(), nameSelector).text);
}

bool isMatch(const std::string& pattern, const std::string& name) {
    return fnmatch(pattern.c_str(), name.c_str(), 0) == 0;
}

bool matches(const std::string& name, const std::vector<std::string>& patterns) {
    return patterns.empty() || std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
               return isMatch(pattern, name);
           });
}

struct Group {
    const char* name;
    void (*check)(const CheckContext&);
};

constexpr Group groups[] = {
    {"handles", checkHandles},
    {"lookups", checkLookups},
    {"events", checkEvents},
    {"xml", checkXmlCalls},
    {"configuration", checkConfigurations},
};

} // namespace

std::vector<std::string> checkGroups() {
    std::vector<std::string> names;
    for (const Group& group : groups)
        names.emplace_back(group.name);
    return names;
}

Conformance::Conformance(const AppletHandle& applet, HostLibrary library, CheckReport& report,
                         CheckSelection selection)
    : mContext{applet, std::move(library), report, rulesFor(applet), SettingNames(applet), mFolder.path()},
      mSelection(std::move(selection)) {}

void Conformance::run() {
    requireNames();
    const std::vector<Parameter> parameters = chosen();
    const BoardState before = mContext.state(TableDepth::all);
    checkParameters(parameters);
    checkAcquisitions(parameters);
    guarded({std::nullopt, "Fg_getParameterInfoXML"}, [&] { checkXmlContent(mContext, parameters); });
    checkFunctions();
    restore(mContext.applet, mContext.settings, before);
    checkRestored(before);
}

void Conformance::requireNames() const {
    std::vector<std::string> names = checkGroups();
    const ParameterCatalogue catalogue(mContext.applet, 0);
    for (const Parameter& parameter : catalogue.parameters())
        names.push_back(parameter.name);
    for (const std::string& pattern : mSelection.patterns)
        if (std::none_of(names.begin(), names.end(),
                         [&](const std::string& name) { return isMatch(pattern, name); }))
            throw Failure(ExitStatus::notFound,
                          "there is no parameter " + pattern + didYouMean(pattern, names));
}

std::vector<Parameter> Conformance::chosen() const {
    std::vector<Parameter> parameters;
    for (const unsigned port : mSelection.ports) {
        const ParameterCatalogue catalogue(mContext.applet, port);
        for (const Parameter& parameter : catalogue.parameters())
            if (isStandardParameter(parameter) && matches(parameter.name, mSelection.patterns))
                parameters.push_back(parameter);
    }
    return parameters;
}

void Conformance::checkParameters(const std::vector<Parameter>& parameters) const {
    const IdentityChecks identity(mContext);
    for (const Parameter& parameter : parameters) {
        if (Interruption::isAskedFor())
            return;
        guarded(subjectOf(parameter), [&] {
            identity.run(parameter);
            checkReading(mContext, parameter);
            checkWriting(mContext, parameter);
        });
    }
}

void Conformance::checkAcquisitions(const std::vector<Parameter>& parameters) const {
    if (parameters.empty())
        return;
    for (const unsigned port : mSelection.ports)
        if (!Interruption::isAskedFor())
            guarded({port, "Fg_AcquireEx"}, [&] { checkWhileAcquiring(mContext, parameters, port); });
}

void Conformance::checkFunctions() const {
    for (const Group& group : groups)
        if (!Interruption::isAskedFor() && matches(group.name, mSelection.patterns))
            guarded({std::nullopt, group.name}, [&] { group.check(mContext); });
}

void Conformance::checkRestored(const BoardState& before) const {
    const BoardState after = mContext.state(TableDepth::all);
    for (const BoardState::Entry& entry : before.entries()) {
        const BoardState::Entry* const now = after.find(entry.parameter.port, entry.parameter.name);
        if (!entry.isSetting)
            continue;
        const bool isRestored = now != nullptr && hasSameValue(entry, *now);
        mContext.report.expect(subjectOf(entry.parameter), "has at the end what it had at the beginning", "",
                               isRestored, readableText(entry.parameter, entry.readings.front()),
                               now == nullptr ? "nothing"
                                              : readableText(entry.parameter, now->readings.front()));
    }
}

void Conformance::guarded(const CheckSubject& subject, const std::function<void()>& checks) const {
    std::string reason;
    try {
        checks();
    } catch (const std::exception& exception) {
        reason = exception.what();
    }
    mContext.report.expect(subject, "throws nothing", "", reason.empty(), "no exception", reason);
}

} // namespace orbctl
