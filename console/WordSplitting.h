#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orbctl {

/// Splits a line into words as a shell does: spaces between them, quotes around them, a "#" before a comment.
/// \throws Failure (usage) where a quote is not closed
std::vector<std::string> wordsOf(std::string_view line);

} // namespace orbctl
