#pragma once

#include "console/conformance/GuardedBuffer.h"
#include "console/Parameter.h"

#include <cstdint>
#include <vector>

namespace orbctl {

/// No type code: the applet goes by the parameter.
constexpr int untypedValue = 0;
/// Type codes that a parameter has to answer alike; the last is nobody's.
const std::vector<int>& typeCodes();

/// Bytes that a value takes; for a text more than any is long.
std::size_t valueBytes(const Parameter& parameter);
/// Bytes that the value in the buffer takes: of a text as far as its end.
std::size_t usedBytes(const Parameter& parameter, const GuardedBuffer& buffer);

/// Makes a buffer ask for an element of a table; nothing for other kinds.
void prepareElement(GuardedBuffer& buffer, const Parameter& parameter, std::uint32_t element);
std::uint32_t elementIndex(const Parameter& parameter, const GuardedBuffer& buffer);

ParameterValue decoded(const Parameter& parameter, const GuardedBuffer& buffer);
/// A buffer of valueBytes(), or as long as the text, with the value in it.
GuardedBuffer encoded(const Parameter& parameter, const ParameterValue& value);
/// The same, filled up with zeros to 64 bits.
GuardedBuffer widened(const Parameter& parameter, const ParameterValue& value);

} // namespace orbctl
