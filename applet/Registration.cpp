// The descriptions of all parameters, entered into the registry of either port.

#include "applet/AppletWrapper.h"
#include "applet/ParameterFamilies.h"
#include "applet/StandardParameterTable.h"
#include "platform/DesignRuntime.h"

#include <limits>
#include <new>

namespace {

constexpr int portCount = 2;
constexpr const char* registerGroup = "Direct Register Access";
constexpr const char* inspectedGroup = "Direct QX Access";
constexpr DescriptionFlags registerFlags{accessReadWriteChange, 1, 1};
constexpr int wordBits = 32;

std::uint64_t largestValue(int bits) {
    return bits >= std::numeric_limits<std::uint64_t>::digits ? std::numeric_limits<std::uint64_t>::max()
                                                              : (std::uint64_t{1} << bits) - 1;
}

/// The registry tells of a name that it has no memory for; an entry without its name would help nobody.
void addEntry(Fg_ParameterInfo& registry, RegisterInfo* record, int index, const char* name, int value,
              const char* symbol) {
    if (registry.addEnumNameValue(record, index, name, value, symbol) != kavo::error::ok) {
        throw std::bad_alloc();
    }
}

void fillEnumeration(Fg_ParameterInfo& registry, RegisterInfo* record, const Enumeration& table) {
    int index = 0;
    for (const EnumerationEntry& entry : table) {
        addEntry(registry, record, index++, entry.displayName, entry.value, entry.symbol);
    }
}

} // namespace

void FgQxWrapperImpl::createUserParameters() {
    for (int port = 0; port < portCount; ++port) {
        std::array<RegisterInfo*, catalogue::categories.size()> groups{};
        for (const CategoryRow& category : catalogue::categories) {
            RegisterInfo* parent = category.parent != CategoryId::none
                                       ? groups[static_cast<std::size_t>(category.parent)]
                                       : nullptr;
            RegisterInfo* group = parameterInfo().addGroupInfo(port, parent, category.name);
            groups[static_cast<std::size_t>(category.id)] = group;
            for (const StandardParameter& parameter : catalogue::standardParameters) {
                if (parameter.category == category.id) {
                    enterRecord(port, parameter.id, addStandardParameter(group, parameter, port));
                }
            }
        }
        createRegisterParameters(port);
        createInspectedParameters(port);
    }
}

void FgQxWrapperImpl::enterRecord(int port, int id, RegisterInfo* record) {
    if (record != nullptr) {
        register_info_map[port].emplace(id, record);
    }
}

RegisterInfo* FgQxWrapperImpl::addStandardParameter(RegisterInfo* group, const StandardParameter& parameter,
                                                    int port) {
    Fg_ParameterInfo& registry = parameterInfo();
    const auto& [access, range, visibility] = parameter.flags;
    const auto integer = [](double limit) { return static_cast<std::uint32_t>(limit); };
    switch (parameter.kind) {
    case ValueKind::integer:
        return registry.addInfoUInt(group, parameter.displayName, parameter.name,
                                    integer(parameter.limits.from), integer(parameter.limits.to),
                                    integer(parameter.limits.step), access, range, visibility, parameter.unit,
                                    parameter.id, port);
    case ValueKind::real:
        return registry.addInfoDouble(group, parameter.displayName, parameter.name, parameter.limits.from,
                                      parameter.limits.to, parameter.limits.step, access, range, visibility,
                                      parameter.unit, parameter.id, port);
    case ValueKind::integerField:
        return registry.addInfoUIntField(group, parameter.displayName, parameter.name, lookupTableSize,
                                         integer(parameter.limits.from), integer(parameter.limits.to),
                                         integer(parameter.limits.step), access, range, visibility,
                                         parameter.unit, parameter.id, port);
    case ValueKind::text:
        return registry.addInfoString(group, parameter.displayName, parameter.name, parameter.fileExtension,
                                      access, range, visibility, parameter.unit, parameter.id, port);
    case ValueKind::enumeration:
        break;
    }
    const Enumeration& table = *parameter.enumerations[static_cast<std::size_t>(port)];
    RegisterInfo* record =
        registry.addInfoEnum(group, parameter.displayName, parameter.name, table.size(), access, range,
                             visibility, parameter.unit, parameter.id, port);
    if (record != nullptr) {
        fillEnumeration(registry, record, table);
    }
    return record;
}

void FgQxWrapperImpl::createRegisterParameters(int port) {
    if (!draEnabled) {
        return;
    }
    Fg_ParameterInfo& registry = parameterInfo();
    RegisterInfo* group = registry.addGroupInfo(port, nullptr, registerGroup);
    const auto& [access, range, visibility] = registerFlags;
    const int count = QelGetNrOfRegister(designHandle());
    for (int number = 1; number <= count; ++number) {
        const char* name = QelGetRegisterName(designHandle(), number);
        if (name == nullptr) {
            continue;
        }
        const std::string parameterName = family::registerPrefix + std::string(name);
        const int index = QelGetRegisterByName(designHandle(), name);
        const int id = family::registerIdBase + index;
        const int bits = QelGetRegisterBitRange(designHandle(), index);
        const std::uint64_t largest = largestValue(bits);
        enterRecord(port, id,
                    bits > wordBits ? registry.addInfoUInt64(group, name, parameterName.c_str(), 0, largest,
                                                             1, access, range, visibility, nullptr, id, port)
                                    : registry.addInfoUInt(group, name, parameterName.c_str(), 0,
                                                           static_cast<std::uint32_t>(largest), 1, access,
                                                           range, visibility, nullptr, id, port));
    }
}

void FgQxWrapperImpl::createInspectedParameters(int port) {
    if (map_inspect_parameter_name_parameter_id.empty()) {
        return;
    }
    std::map<std::string, const RegisterInfo*> originals;
    walkParameterTree(getUnwrappedParameterInfo(), [&](const RegisterInfo& record) {
        if (record.name != nullptr) {
            originals.emplace(family::inspectedPrefix + std::string(record.name), &record);
        }
    });
    RegisterInfo* group = parameterInfo().addGroupInfo(port, nullptr, inspectedGroup);
    for (const auto& [name, id] : map_inspect_parameter_name_parameter_id) {
        if (const auto original = originals.find(name); original != originals.end()) {
            enterRecord(port, id, addInspectedParameter(group, *original->second, id, port));
        }
    }
}

RegisterInfo* FgQxWrapperImpl::addInspectedParameter(RegisterInfo* group, const RegisterInfo& original,
                                                     int id, int port) {
    Fg_ParameterInfo& registry = parameterInfo();
    const std::string parameterName = family::inspectedPrefix + std::string(original.name);
    const auto add = [&](auto operation, const auto& limits) {
        using Limit = std::decay_t<decltype(limits.from)>;
        return (registry.*operation)(group, original.name, parameterName.c_str(),
                                     static_cast<Limit>(limits.from), static_cast<Limit>(limits.to),
                                     static_cast<Limit>(limits.steps), original.accessFlags,
                                     original.rangeFlags, original.visibilityFlags, original.unit, id, port);
    };
    switch (original.format) {
    case REG_FORMAT_INT:
        return add(&Fg_ParameterInfo::addInfoInt, original.u.iReg);
    case REG_FORMAT_UINT:
        return add(&Fg_ParameterInfo::addInfoUInt, original.u.uiReg);
    case REG_FORMAT_INT64:
        return add(&Fg_ParameterInfo::addInfoInt64, original.u.iReg64);
    case REG_FORMAT_DOUBLE:
        return add(&Fg_ParameterInfo::addInfoDouble, original.u.dReg);
    case REG_FORMAT_UINT64: {
        const IntReg64& limits = original.u.iReg64;
        return registry.addInfoUInt64(
            group, original.name, parameterName.c_str(), static_cast<std::uint64_t>(limits.from),
            static_cast<std::uint64_t>(limits.to), static_cast<std::uint64_t>(limits.steps),
            original.accessFlags, original.rangeFlags, original.visibilityFlags, original.unit, id, port);
    }
    case REG_FORMAT_STRING:
        return registry.addInfoString(group, original.name, parameterName.c_str(),
                                      original.u.sReg.FileExtension, original.accessFlags,
                                      original.rangeFlags, original.visibilityFlags, original.unit, id, port);
    case REG_FORMAT_ENUM: {
        const EnumReg& entries = original.u.eReg;
        RegisterInfo* record = registry.addInfoEnum(
            group, original.name, parameterName.c_str(), entries.nrOfElements, original.accessFlags,
            original.rangeFlags, original.visibilityFlags, original.unit, id, port);
        for (int index = 0; record != nullptr && index < entries.nrOfElements; ++index) {
            addEntry(registry, record, index, entries.enumNames[index], entries.enumValues[index],
                     entries.enumDefName[index]);
        }
        return record;
    }
    default:
        return nullptr;
    }
}
