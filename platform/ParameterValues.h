#pragma once

#include <cstddef>
#include <cstdint>

/// Type codes of the runtime's typed get and set, as far as this project uses them. They are passed on
/// unchanged.
namespace kavo::type {

/// 32 bits, unsigned; a typed get fills the low word of a 64-bit buffer that was cleared before.
constexpr int unsigned32 = 2;
constexpr int signed64 = 3;
constexpr int unsigned64 = 4;
/// A whole table: the value is a FieldAccess record.
constexpr int wholeField = 4096;
/// One entry of a table: the value is a FieldParameterInt_s record.
constexpr int fieldEntry = 4098;

} // namespace kavo::type

/// One element of a table of unsigned words.
struct FieldParameterInt_s {
    std::uint32_t value;
    std::uint32_t index;
};

/// One element of a table of doubles.
struct FieldParameterDouble_s {
    double value;
    std::uint32_t index;
};

/// A run of table elements, written in one call (type code 4096).
struct FieldAccess {
    std::uint32_t type;  ///< type code of the elements: 2, unsigned 32-bit
    std::uint32_t index; ///< first element, from 0
    std::uint32_t count; ///< number of elements
    const void* values;  ///< the elements, one after another
};

#if defined(__i386__)
static_assert(sizeof(FieldParameterInt_s) == 8 && sizeof(FieldAccess) == 16);
static_assert(offsetof(FieldParameterDouble_s, index) == 8 && offsetof(FieldAccess, values) == 12);
#endif
