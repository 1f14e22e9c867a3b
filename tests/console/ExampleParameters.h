#pragma once

#include "console/Parameter.h"

namespace orbctl::test {

inline Parameter unsignedParameter(const char* name, std::uint64_t from, std::uint64_t to,
                                   std::uint64_t step) {
    Parameter parameter;
    parameter.name = name;
    parameter.kind = ValueKind::unsigned32;
    parameter.isDescribed = true;
    parameter.accessFlags = 7;
    parameter.hasLimits = true;
    parameter.limits = {from, to, step};
    return parameter;
}

inline Parameter doubleParameter(const char* name, double from, double to, double step) {
    Parameter parameter = unsignedParameter(name, 0, 0, 0);
    parameter.kind = ValueKind::floating64;
    parameter.limits = {from, to, step};
    return parameter;
}

inline Parameter formatParameter() {
    Parameter parameter = unsignedParameter("FG_FORMAT", 0, 0, 0);
    parameter.kind = ValueKind::enumeration;
    parameter.hasLimits = false;
    parameter.entries = {{"Gray 8bit", 3, "FG_GRAY"}, {"Gray 16bit", 1, "FG_GRAY16"}};
    return parameter;
}

inline Parameter textParameter(const char* name) {
    Parameter parameter = unsignedParameter(name, 0, 0, 0);
    parameter.kind = ValueKind::text;
    parameter.hasLimits = false;
    return parameter;
}

inline Parameter fieldParameter(const char* name, std::uint32_t elements) {
    Parameter parameter = unsignedParameter(name, 0, 4095, 0);
    parameter.kind = ValueKind::unsignedField;
    parameter.elementCount = elements;
    return parameter;
}

} // namespace orbctl::test
