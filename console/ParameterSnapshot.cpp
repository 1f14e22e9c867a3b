#include "console/ParameterSnapshot.h"

#include "console/AppletHandle.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/ValueText.h"

#include <algorithm>

namespace orbctl {

namespace {

/// Registers and inspected properties, which an applet may show beside them, have names of their own.
bool isStandard(const Parameter& parameter) { return parameter.name.rfind("FG_", 0) == 0; }

ParameterState stateOf(const AppletHandle& applet, const Parameter& parameter) {
    ParameterState state{parameter, {}, {}};
    if (!parameter.isField()) {
        state.reading = readParameter(applet, parameter);
        return state;
    }
    state.elements.reserve(parameter.elementCount);
    for (std::uint32_t element = 0; element < parameter.elementCount; ++element)
        state.elements.push_back(readParameter(applet, parameter, element));
    return state;
}

bool isSame(const Reading& first, const Reading& second) {
    return first.code == second.code && (!first.isGood() || first.value == second.value);
}

} // namespace

ParameterSnapshot::ParameterSnapshot(const AppletHandle& applet) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port) {
        const ParameterCatalogue catalogue(applet, port);
        for (const Parameter& parameter : catalogue.parameters())
            if (isStandard(parameter) && parameter.isReadable())
                mStates.push_back(stateOf(applet, parameter));
    }
}

const ParameterState* ParameterSnapshot::find(unsigned port, const std::string& name) const {
    const auto found = std::find_if(mStates.begin(), mStates.end(), [&](const ParameterState& state) {
        return state.parameter.port == port && state.parameter.name == name;
    });
    return found == mStates.end() ? nullptr : &*found;
}

std::size_t changedElements(const ParameterState& before, const ParameterState& after) {
    const std::size_t common = std::min(before.elements.size(), after.elements.size());
    std::size_t changed = std::max(before.elements.size(), after.elements.size()) - common;
    for (std::size_t element = 0; element < common; ++element)
        changed += isSame(before.elements[element], after.elements[element]) ? 0 : 1;
    return changed;
}

bool isChanged(const ParameterState& before, const ParameterState& after) {
    return !isSame(before.reading, after.reading) || changedElements(before, after) > 0;
}

std::vector<ParameterChange> changesBetween(const ParameterSnapshot& before, const ParameterSnapshot& after) {
    std::vector<ParameterChange> changes;
    for (const ParameterState& state : before.states()) {
        const ParameterState* const later = after.find(state.parameter.port, state.parameter.name);
        if (later != nullptr && isChanged(state, *later))
            changes.push_back({&state, later});
    }
    return changes;
}

std::string changeText(const ParameterState& before, const ParameterState& after) {
    const Parameter& parameter = after.parameter;
    if (parameter.isField())
        return parameter.name + ": " + textOf(std::uint64_t{changedElements(before, after)}) + " of " +
               textOf(std::uint64_t{parameter.elementCount}) + " elements changed";
    return parameter.name + " = " + textWithUnit(parameter, after.reading) + " (was " +
           textWithUnit(before.parameter, before.reading) + ")";
}

} // namespace orbctl
