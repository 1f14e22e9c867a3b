#pragma once

#include <cstddef>
#include <string_view>

namespace orbctl {

/// Bytes of the UTF-8 sequence at the beginning of a text that is not empty; 0 where no well-formed one
/// stands.
std::size_t utf8SequenceLength(std::string_view text);
/// Characters of a text as a terminal counts them, each byte that is no UTF-8 as one.
std::size_t displayWidth(std::string_view text);

} // namespace orbctl
