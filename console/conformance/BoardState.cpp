#include "console/conformance/BoardState.h"

#include "console/AppletHandle.h"
#include "console/ConfigurationFile.h"
#include "console/Failure.h"
#include "console/ParameterAccess.h"
#include "console/PortChoice.h"
#include "console/RegisterRecord.h"
#include "console/ValueText.h"

#include <algorithm>

namespace orbctl {

namespace {

/// How many elements stand for a table where not all are looked at.
constexpr std::uint32_t someElements = 16;
/// Ids from here on are registers and inspected properties.
constexpr int endOfStandardIds = 1000001;
/// A value may have to wait for another one that limits it, and that one for a third.
constexpr int mostPasses = 8;

std::uint32_t countOf(const Parameter& field, TableDepth depth) {
    return depth == TableDepth::all ? field.elementCount : std::min(field.elementCount, someElements);
}

std::vector<Reading> readingsOf(const AppletHandle& applet, const Parameter& parameter, TableDepth depth) {
    if (!parameter.isField())
        return {readParameter(applet, parameter)};
    std::vector<Reading> readings;
    for (std::uint32_t index = 0; index < countOf(parameter, depth); ++index)
        readings.push_back(readParameter(applet, parameter, elementAt(parameter, depth, index)));
    return readings;
}

bool isSame(const Reading& first, const Reading& second) {
    return first.code == second.code && (!first.isGood() || first.value == second.value);
}

bool isSameLimits(const Limits& first, const Limits& second) {
    return first.from == second.from && first.to == second.to && first.step == second.step;
}

std::string limitsText(const Parameter& parameter) {
    return shortAccessText(parameter) + " " + rangeText(parameter);
}

std::string changeOf(const BoardState::Entry& before, const BoardState::Entry& after) {
    const std::string subject = portPrefix(before.parameter.port) + before.parameter.name;
    if (!hasSameDescription(before.parameter, after.parameter))
        return subject + " is described as " + limitsText(after.parameter) + ", was " +
               limitsText(before.parameter);
    for (std::size_t index = 0; index < std::min(before.readings.size(), after.readings.size()); ++index)
        if (!isSame(before.readings[index], after.readings[index]))
            return subject + " is " + readableText(after.parameter, after.readings[index]) + ", was " +
                   readableText(before.parameter, before.readings[index]);
    return "";
}

void writeValues(const AppletHandle& applet, const BoardState::Entry& former, const BoardState::Entry& now,
                 TableDepth depth) {
    const std::size_t count = std::min(former.readings.size(), now.readings.size());
    for (std::uint32_t index = 0; index < count; ++index)
        if (former.readings[index].isGood() && !isSame(former.readings[index], now.readings[index]))
            writeParameter(applet, former.parameter, former.readings[index].value,
                           elementAt(former.parameter, depth, index));
}

/// \return how many settings differed
unsigned restoreOnce(const AppletHandle& applet, const SettingNames& settings, const BoardState& former) {
    const BoardState now(applet, settings, former.depth());
    unsigned differing = 0;
    for (const bool isField : {false, true})
        for (const BoardState::Entry& entry : former.entries()) {
            const BoardState::Entry* const present = now.find(entry.parameter.port, entry.parameter.name);
            if (entry.parameter.isField() != isField || present == nullptr || hasSameValue(entry, *present))
                continue;
            ++differing;
            writeValues(applet, entry, *present, former.depth());
        }
    return differing;
}

std::set<std::string> savedNames(const AppletHandle& applet, unsigned port) {
    try {
        const ConfigurationFile saved = savedConfiguration(applet);
        return {saved.keys(port).begin(), saved.keys(port).end()};
    } catch (const Failure&) {
        return {}; // an applet that saves nothing has only what can be written at the moment
    }
}

} // namespace

bool isStandardParameter(const Parameter& parameter) { return parameter.id < endOfStandardIds; }

std::vector<Parameter> describedParameters(const AppletHandle& applet, unsigned port) {
    std::vector<Parameter> parameters =
        parametersOf(applet.functions().parameterInfo(applet.handle(), static_cast<int>(port)));
    const auto end = std::remove_if(parameters.begin(), parameters.end(), [](const Parameter& parameter) {
        return !isStandardParameter(parameter);
    });
    parameters.erase(end, parameters.end());
    return parameters;
}

SettingNames::SettingNames(const AppletHandle& applet) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port) {
        std::set<std::string> names = savedNames(applet, port);
        for (const Parameter& parameter : describedParameters(applet, port))
            if (parameter.isWritable() && parameter.isReadable())
                names.insert(parameter.name);
        mNames.push_back(std::move(names));
    }
}

bool SettingNames::contains(const Parameter& parameter) const {
    return mNames.at(parameter.port).count(parameter.name) != 0;
}

BoardState::BoardState(const AppletHandle& applet, const SettingNames& settings, TableDepth depth)
    : mDepth(depth) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        for (Parameter& parameter : describedParameters(applet, port)) {
            Entry entry{std::move(parameter), false, {}};
            entry.isSetting = settings.contains(entry.parameter);
            if (entry.isSetting)
                entry.readings = readingsOf(applet, entry.parameter, depth);
            mEntries.push_back(std::move(entry));
        }
}

const BoardState::Entry* BoardState::find(unsigned port, const std::string& name) const {
    const auto found = std::find_if(mEntries.begin(), mEntries.end(), [&](const Entry& entry) {
        return entry.parameter.port == port && entry.parameter.name == name;
    });
    return found == mEntries.end() ? nullptr : &*found;
}

std::uint32_t elementAt(const Parameter& field, TableDepth depth, std::uint32_t index) {
    const std::uint32_t count = field.isField() ? countOf(field, depth) : 0;
    if (count < 2)
        return 0;
    return static_cast<std::uint32_t>(std::uint64_t{index} * (field.elementCount - 1) / (count - 1));
}

bool hasSameValue(const BoardState::Entry& first, const BoardState::Entry& second) {
    return std::equal(first.readings.begin(), first.readings.end(), second.readings.begin(),
                      second.readings.end(), isSame);
}

bool hasSameDescription(const Parameter& first, const Parameter& second) {
    return first.accessFlags == second.accessFlags && first.hasLimits == second.hasLimits &&
           isSameLimits(first.limits, second.limits) && first.entries.size() == second.entries.size();
}

std::string differenceBetween(const BoardState& before, const BoardState& after, const Parameter* except) {
    for (const BoardState::Entry& entry : before.entries()) {
        const Parameter& parameter = entry.parameter;
        if (except != nullptr && parameter.port == except->port && parameter.name == except->name)
            continue;
        const BoardState::Entry* const now = after.find(parameter.port, parameter.name);
        if (now == nullptr)
            return portPrefix(parameter.port) + parameter.name + " is not described any more";
        std::string change = changeOf(entry, *now);
        if (!change.empty())
            return change;
    }
    return "";
}

void restore(const AppletHandle& applet, const SettingNames& settings, const BoardState& former) {
    unsigned left = restoreOnce(applet, settings, former);
    for (int pass = 1; pass < mostPasses && left > 0; ++pass)
        left = restoreOnce(applet, settings, former);
}

} // namespace orbctl
