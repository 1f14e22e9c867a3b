#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace orbctl {

/// What the value of a parameter is, and so how it is read and written.
enum class ValueKind {
    unsigned32,
    signed32,
    unsigned64,
    signed64,
    floating32,
    floating64,
    enumeration,
    text,
    unsignedField, ///< a table of unsigned 32-bit words, read and written one element at a time
    signedField,
    floatingField,
    unsupported ///< a kind that this program cannot read
};

/// A value read or to be written. Whole numbers are 64 bits wide whatever the parameter's own width; an
/// enumeration and a signed parameter hold the signed kind.
using ParameterValue = std::variant<std::uint64_t, std::int64_t, double, std::string>;

struct EnumerationEntry {
    std::string displayName;
    std::int64_t value = 0;
    std::string symbol; ///< symbolic name ("FG_GRAY"); empty where the entry has none
};

/// Range of a number, as the applet describes it at the moment.
struct Limits {
    ParameterValue from;
    ParameterValue to;
    ParameterValue step; ///< 0: not told
};

/// What an applet tells about one of its parameters on one port. A copy: limits and access that move later
/// show in the next copy.
struct Parameter {
    int id = 0;
    unsigned port = 0;
    std::string name; ///< "FG_WIDTH"
    std::string displayName;
    std::vector<std::string> category; ///< from the outermost group inwards
    ValueKind kind = ValueKind::unsigned32;
    bool isDescribed = false; ///< false: the applet answers for it but describes nothing but its name
    int accessFlags = 0;      ///< bit 0 read, bit 1 write, bit 2 change
    std::string unit;
    std::string fileFilter; ///< "*.lut" for a file name
    bool hasLimits = false;
    Limits limits;
    std::uint32_t elementCount = 0; ///< of a field
    std::vector<EnumerationEntry> entries;

    bool isField() const {
        return kind == ValueKind::unsignedField || kind == ValueKind::signedField ||
               kind == ValueKind::floatingField;
    }
    bool isFloating() const {
        return kind == ValueKind::floating32 || kind == ValueKind::floating64 ||
               kind == ValueKind::floatingField;
    }
    bool isReadable() const { return !isDescribed || (accessFlags & 1) != 0; }
    bool isWritable() const { return !isDescribed || (accessFlags & 2) != 0; }
};

/// What a read gave: a value, or an error code other than 0.
struct Reading {
    int code = 0;
    ParameterValue value;

    bool isGood() const { return code == 0; }
};

} // namespace orbctl
