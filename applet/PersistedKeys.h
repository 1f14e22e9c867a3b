#pragma once

#include "applet/AppletWrapper.h"

#include <optional>
#include <string>
#include <variant>

/// How a key of one kind reaches its parameter: cache, write with its limits, and the value that a getter
/// tells.
template <class Value>
struct KeyAccess {
    typename Value::Stored& (StandardParameterCaches::*cache)(int port);
    int (FgQxWrapperImpl::*write)(int port, typename Value::Argument value);
    int (FgQxWrapperImpl::*read)(int port, typename Value::Result out);
    /// What creation applies, if anything.
    std::optional<typename Value::Stored> appliedDefault;
};

/// When loading looks at a key.
enum class LoadPass {
    both,      ///< cached first, so that the limits of other keys see it, then applied
    cacheOnly, ///< takes effect through FG_LUT_TYPE
    applyOnly,
    none, ///< in no file: only applied as a default
};

/// One key of a port's section in a configuration file.
struct PersistedKey {
    int id;
    const char* name;
    LoadPass pass;
    std::variant<KeyAccess<IntegerValue>, KeyAccess<RealValue>, KeyAccess<TextValue>> access;
};

/// The keys in the order in which defaults, saving and loading walk them. A friend of the applet, for its
/// private bodies.
struct PersistedKeys {
    static constexpr std::size_t inFiles = 53;
    /// One more is applied as a default without being in files.
    static const std::array<PersistedKey, inFiles + 1>& all();
};
