#include "console/AppletIdentity.h"
#include "console/conformance/ParameterChecks.h"
#include "console/conformance/TrialValues.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace orbctl {

namespace error = kavo::error;

namespace {

std::string inOtherCase(std::string name) {
    for (char& letter : name)
        letter = static_cast<char>(std::islower(static_cast<unsigned char>(letter)) != 0
                                       ? std::toupper(static_cast<unsigned char>(letter))
                                       : std::tolower(static_cast<unsigned char>(letter)));
    return name;
}

std::string idText(int id) { return textOf(std::int64_t{id}); }

bool isOrdered(const Limits& limits) { return numberOf(limits.from) <= numberOf(limits.to); }

/// Whether the way from the minimum to the maximum is a whole number of steps.
bool isWholeSteps(const Parameter& parameter) {
    const double steps =
        (numberOf(parameter.limits.to) - numberOf(parameter.limits.from)) / numberOf(parameter.limits.step);
    return std::fabs(steps - std::round(steps)) < 1e-6;
}

} // namespace

std::vector<std::string> listedNames(const CheckContext& context) {
    std::vector<std::string> names;
    const int count = context.functions().parameterCount(context.handle());
    for (int index = 0; index < count; ++index) {
        const char* const name = context.functions().parameterName(context.handle(), index);
        names.emplace_back(name == nullptr ? "" : name);
    }
    return names;
}

IdentityChecks::IdentityChecks(const CheckContext& context) : mContext(context) {
    const std::vector<std::string> names = listedNames(context);
    for (std::size_t index = 0; index < names.size(); ++index)
        mIndices.emplace(names[index], static_cast<int>(index));
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        mPorts.push_back(describedParameters(context.applet, port));
}

void IdentityChecks::run(const Parameter& parameter) const {
    checkName(parameter);
    checkIndex(parameter);
    if (!parameter.isDescribed)
        return;
    checkOtherPorts(parameter);
    if (isNumber(parameter) || parameter.isField())
        checkLimits(parameter);
    if (parameter.kind == ValueKind::enumeration)
        checkEntries(parameter);
}

void IdentityChecks::checkName(const Parameter& parameter) const {
    CheckReport& report = mContext.report;
    const CheckSubject subject = subjectOf(parameter);
    const auto& idOf = mContext.functions().parameterIdByName;
    const std::string other = inOtherCase(parameter.name);
    report.expectCode(subject, "is unknown in other letters", other, error::invalidParameter,
                      idOf(mContext.handle(), other.c_str()));
    const int id = idOf(mContext.handle(), parameter.name.c_str());
    report.expectText(subject, "has its id by its name", "", idText(parameter.id), idText(id));
    report.expectCode(subject, "leaves no error when its name is found", "", error::ok, mContext.lastError());
}

void IdentityChecks::checkIndex(const Parameter& parameter) const {
    CheckReport& report = mContext.report;
    const CheckSubject subject = subjectOf(parameter);
    const auto found = mIndices.find(parameter.name);
    if (!report.expect(subject, "is listed", "", found != mIndices.end(), "an index", "none"))
        return;
    const int id = mContext.functions().parameterId(mContext.handle(), found->second);
    report.expectText(subject, "has its id at its index", idText(found->second), idText(parameter.id),
                      idText(id));
    report.expectCode(subject, "leaves no error when its index is found", "", error::ok,
                      mContext.lastError());
}

void IdentityChecks::checkOtherPorts(const Parameter& parameter) const {
    for (const std::vector<Parameter>& port : mPorts)
        for (const Parameter& other : port) {
            if (other.name != parameter.name && other.id != parameter.id)
                continue;
            const std::string expected = parameter.name + " " + idText(parameter.id) + " " +
                                         kindText(parameter.kind) + " " + parameter.unit;
            const std::string got =
                other.name + " " + idText(other.id) + " " + kindText(other.kind) + " " + other.unit;
            mContext.report.expectText(subjectOf(parameter), "is the same on every port",
                                       "port " + textOf(std::uint64_t{other.port}), expected, got);
        }
}

void IdentityChecks::checkLimits(const Parameter& parameter) const {
    const CheckSubject subject = subjectOf(parameter);
    const std::string range = numberText(parameter.limits.from) + " .. " + numberText(parameter.limits.to);
    mContext.report.expect(subject, "has its minimum below its maximum", "", isOrdered(parameter.limits),
                           "a range", range);
    if (hasStep(parameter) && !parameter.isFloating())
        mContext.report.expect(subject, "reaches its maximum in whole steps", "", isWholeSteps(parameter),
                               "steps of " + numberText(parameter.limits.step), range);
}

void IdentityChecks::checkEntries(const Parameter& parameter) const {
    mContext.report.expect(subjectOf(parameter), "has entries", "", !parameter.entries.empty(),
                           "at least one", "none");
    for (const EnumerationEntry& entry : parameter.entries)
        checkEntry(parameter, entry);
}

void IdentityChecks::checkEntry(const Parameter& parameter, const EnumerationEntry& entry) const {
    const CheckSubject subject = subjectOf(parameter);
    const auto isSimilar = [&](const EnumerationEntry& other) {
        return other.value == entry.value || other.symbol == entry.symbol ||
               other.displayName == entry.displayName;
    };
    const auto similar = std::count_if(parameter.entries.begin(), parameter.entries.end(), isSimilar);
    mContext.report.expect(subject, "has each entry once", entry.symbol, similar == 1, "one",
                           textOf(std::int64_t{similar}));
    if (!mContext.functions().info.isBound())
        return;
    const int constant = constantOf(mContext.functions(), entry.symbol);
    mContext.report.expectText(subject, "has the constant that its entry names", entry.symbol,
                               textOf(entry.value), idText(constant));
}

} // namespace orbctl
