#pragma once

#include <string>
#include <vector>

namespace orbctl {

/// The name closest to a misspelled one, whatever its case and with or without its prefix ("FG_"); empty
/// where none is close.
std::string closestName(const std::string& misspelled, const std::vector<std::string>& names);
/// "; did you mean FG_WIDTH?", or nothing.
std::string didYouMean(const std::string& misspelled, const std::vector<std::string>& names);

} // namespace orbctl
