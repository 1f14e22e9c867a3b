#pragma once

#include "applet/StandardParameterCaches.h"
#include "platform/ParameterIds.h"

#include <optional>
#include <vector>

namespace kavo::fuzz {

/// How a parameter's value crosses the interface.
enum class Crossing { word, real, text, entry };

struct AccessibleParameter {
    int id;
    Crossing crossing;
    bool isWritable;
};

template <class Value>
constexpr Crossing crossingOf() {
    if (std::is_same_v<Value, RealValue>) {
        return Crossing::real;
    }
    if (std::is_same_v<Value, TextValue>) {
        return Crossing::text;
    }
    return std::is_same_v<Value, TableEntryValue> ? Crossing::entry : Crossing::word;
}

inline const std::vector<AccessibleParameter>& accessibleParameters() {
    static const std::vector<AccessibleParameter> all{
#define X(name, Value, ...) {name, crossingOf<Value>(), true},
        ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
#define X(name, Value, ...) {name, crossingOf<Value>(), false},
            ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
    };
    return all;
}

inline const AccessibleParameter* findParameter(int id) {
    for (const AccessibleParameter& parameter : accessibleParameters()) {
        if (parameter.id == id) {
            return &parameter;
        }
    }
    return nullptr;
}

} // namespace kavo::fuzz
