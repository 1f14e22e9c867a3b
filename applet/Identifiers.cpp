// Names, ids and indices of the three families: standard parameters, registers, inspected design parameters.

#include "applet/AppletWrapper.h"
#include "applet/EnvironmentSwitch.h"
#include "applet/ParameterFamilies.h"
#include "applet/StandardParameterTable.h"
#include "platform/DesignRuntime.h"

namespace error = kavo::error;
using kavo::templates::platform::CriticalSectionGuard;

namespace {

constexpr std::string_view keySeparator = "::";

bool isInspectable(REG_FORMAT format) {
    switch (format) {
    case REG_FORMAT_INT:
    case REG_FORMAT_UINT:
    case REG_FORMAT_INT64:
    case REG_FORMAT_UINT64:
    case REG_FORMAT_ENUM:
    case REG_FORMAT_STRING:
    case REG_FORMAT_DOUBLE:
        return true;
    default:
        return false;
    }
}

template <class Map>
void append(Map& names, const std::string& name) {
    names.emplace(static_cast<int>(names.size()), name);
}

} // namespace

void FgQxWrapperImpl::initInternalMaps() {
    inspectRuntimeParameters();
    map_dma_process = {{0, 0}, {1, 1}};
    fillStandardNames();
    if (draEnabled) {
        fillRegisterNames();
    }
    fillInspectedNames();
    fillEvents();
}

void FgQxWrapperImpl::inspectRuntimeParameters() {
    if (!environmentSwitchIsOn("KAVO_ENABLE_DQXA")) {
        return;
    }
    walkParameterTree(getUnwrappedParameterInfo(), [&](const RegisterInfo& record) {
        if (isInspectable(record.format) && record.name != nullptr) {
            const CriticalSectionGuard guard(&mParameterLock);
            inspectProperties.set(dllBaseName + std::string(keySeparator) + record.name, "On");
        }
    });
}

void FgQxWrapperImpl::fillStandardNames() {
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        map_parameter_name_parameter_id.emplace(parameter.name, parameter.id);
        append(map_parameter_index_parameter_name, parameter.name);
        for (StringToStringMap& descriptions : map_parameter_name_parameter_description) {
            if (parameter.description != nullptr) {
                descriptions.emplace(parameter.name, parameter.description);
            }
        }
    }
}

void FgQxWrapperImpl::fillRegisterNames() {
    const int count = QelGetNrOfRegister(designHandle());
    for (int number = 1; number <= count; ++number) {
        const char* name = QelGetRegisterName(designHandle(), number);
        if (name == nullptr) {
            continue;
        }
        const std::string parameterName = family::registerPrefix + std::string(name);
        // Two registers of one name share the index that the design runtime gives for it.
        map_parameter_name_parameter_id.emplace(parameterName, QelGetRegisterByName(designHandle(), name) +
                                                                   family::registerIdBase);
        append(map_parameter_index_parameter_name, parameterName);
    }
}

void FgQxWrapperImpl::fillInspectedNames() {
    for (const auto& [key, value] : inspectProperties.all()) {
        const std::string name = key.substr(key.find(keySeparator) + keySeparator.size());
        if (const int id = getParameterIdByName(name.c_str()); id != 0) {
            map_inspect_parameter_name_parameter_id.emplace(family::inspectedPrefix + name,
                                                            id + family::inspectedIdBase);
            append(map_parameter_index_parameter_name, family::inspectedPrefix + name);
        }
    }
}

void FgQxWrapperImpl::retrieveIds() {
    for (const DesignParameterName& parameter : designParameterNames) {
        this->*parameter.id = getParameterIdByName(parameter.name);
    }
}

// ---- look-ups

int FgQxWrapperImpl::Fg_getParameterIdByName(const char* name) {
    const auto found = name != nullptr ? map_parameter_name_parameter_id.find(std::string_view(name))
                                       : map_parameter_name_parameter_id.end();
    if (found == map_parameter_name_parameter_id.end()) {
        return setError(error::invalidParameter);
    }
    setError(error::ok);
    return found->second;
}

const char* FgQxWrapperImpl::Fg_getParameterName(int index) {
    const auto found = map_parameter_index_parameter_name.find(index);
    if (found == map_parameter_index_parameter_name.end()) {
        setError(error::invalidParameter);
        return nullptr;
    }
    setError(error::ok);
    return found->second.c_str();
}

int FgQxWrapperImpl::Fg_getParameterId(int index) {
    const auto name = map_parameter_index_parameter_name.find(index);
    return Fg_getParameterIdByName(name != map_parameter_index_parameter_name.end() ? name->second.c_str()
                                                                                    : nullptr);
}

int FgQxWrapperImpl::Fg_getParameterCount() {
    return static_cast<int>(map_parameter_index_parameter_name.size());
}
