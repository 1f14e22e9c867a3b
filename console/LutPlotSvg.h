#pragma once

#include "console/LookupTable.h"

#include <string>
#include <vector>

namespace orbctl {

/// Draws the curves of lookup tables as an SVG document, with a legend that tells what made them.
/// \param tables  one or two
std::string svgOf(const std::vector<LookupTable>& tables);

} // namespace orbctl
