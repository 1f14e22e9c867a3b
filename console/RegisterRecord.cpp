#include "console/RegisterRecord.h"

#include "grabber_basis/parameterInfo.h"

#include <algorithm>

namespace orbctl {

namespace {

using Category = std::vector<std::string>;

std::string textOrEmpty(const char* text) { return text == nullptr ? "" : text; }

std::uint64_t wide(std::uint32_t number) { return number; }
std::int64_t wide(int number) { return number; }
std::int64_t wide(std::int64_t number) { return number; }
double wide(double number) { return number; }
double wide(float number) { return static_cast<double>(number); }

template <typename Payload>
void takeNumber(Parameter& parameter, ValueKind kind, const Payload& payload) {
    parameter.kind = kind;
    parameter.hasLimits = true;
    parameter.limits = {wide(payload.from), wide(payload.to), wide(payload.steps)};
}

template <typename Payload>
void takeField(Parameter& parameter, ValueKind kind, const Payload& payload) {
    parameter.kind = kind;
    parameter.hasLimits = true;
    parameter.limits = {wide(payload.from), wide(payload.to), std::uint64_t{0}};
    parameter.elementCount = static_cast<std::uint32_t>(payload.nrOfElements);
}

void takeUnsigned64(Parameter& parameter, const IntReg64& payload) {
    parameter.kind = ValueKind::unsigned64;
    parameter.hasLimits = true;
    parameter.limits = {static_cast<std::uint64_t>(payload.from), static_cast<std::uint64_t>(payload.to),
                        static_cast<std::uint64_t>(payload.steps)};
}

void takeEntries(Parameter& parameter, const EnumReg& payload) {
    parameter.kind = ValueKind::enumeration;
    for (int index = 0; index < payload.nrOfElements; ++index)
        parameter.entries.push_back({textOrEmpty(payload.enumNames[index]), payload.enumValues[index],
                                     textOrEmpty(payload.enumDefName[index])});
}

void takePayload(Parameter& parameter, const RegisterInfo& record) {
    switch (record.format) {
    case REG_FORMAT_UINT:
        return takeNumber(parameter, ValueKind::unsigned32, record.u.uiReg);
    case REG_FORMAT_INT:
        return takeNumber(parameter, ValueKind::signed32, record.u.iReg);
    case REG_FORMAT_UINT64:
        return takeUnsigned64(parameter, record.u.iReg64);
    case REG_FORMAT_INT64:
        return takeNumber(parameter, ValueKind::signed64, record.u.iReg64);
    case REG_FORMAT_FLOAT:
        return takeNumber(parameter, ValueKind::floating32, record.u.fReg);
    case REG_FORMAT_DOUBLE:
        return takeNumber(parameter, ValueKind::floating64, record.u.dReg);
    case REG_FORMAT_ENUM:
        return takeEntries(parameter, record.u.eReg);
    case REG_FORMAT_STRING:
        parameter.kind = ValueKind::text;
        parameter.fileFilter = textOrEmpty(record.u.sReg.FileExtension);
        return;
    case REG_FORMAT_UINTFIELD:
        return takeField(parameter, ValueKind::unsignedField, record.u.uifReg);
    case REG_FORMAT_INTFIELD:
        return takeField(parameter, ValueKind::signedField, record.u.ifReg);
    case REG_FORMAT_DOUBLEFIELD:
        return takeField(parameter, ValueKind::floatingField, record.u.dfReg);
    default:
        parameter.kind = ValueKind::unsupported;
    }
}

Parameter parameterOf(const RegisterInfo& record, const Category& category) {
    Parameter parameter;
    parameter.id = record.id;
    parameter.port = static_cast<unsigned>(record.port);
    parameter.name = textOrEmpty(record.parameterName);
    parameter.displayName = textOrEmpty(record.name);
    parameter.category = category;
    parameter.isDescribed = true;
    parameter.accessFlags = record.accessFlags;
    parameter.unit = textOrEmpty(record.unit);
    takePayload(parameter, record);
    return parameter;
}

void collect(std::vector<Parameter>& parameters, const RegisterInfo& group, Category category) {
    category.push_back(textOrEmpty(group.name));
    for (int index = 0; index < group.u.gReg.nrOfElements; ++index) {
        const RegisterInfo* const element = group.u.gReg.elements[index];
        if (element == nullptr)
            continue;
        if (element->format == REG_FORMAT_GROUP)
            collect(parameters, *element, category);
        else
            parameters.push_back(parameterOf(*element, category));
    }
}

} // namespace

std::vector<Parameter> parametersOf(const RegisterInfo* head) {
    std::vector<const RegisterInfo*> groups;
    for (const RegisterInfo* group = head; group != nullptr; group = group->next)
        groups.push_back(group);
    std::reverse(groups.begin(), groups.end());
    std::vector<Parameter> parameters;
    for (const RegisterInfo* group : groups)
        if (group->format == REG_FORMAT_GROUP)
            collect(parameters, *group, {});
    return parameters;
}

} // namespace orbctl
