#pragma once

#include "console/LookupTable.h"
#include "console/PictureCanvas.h"

#include <vector>

namespace orbctl {

/// Draws the curves of lookup tables as a gray picture: the first one black, the second one gray and dashed,
/// with a legend that tells what made them.
/// \param tables  one or two
PictureCanvas pictureOf(const std::vector<LookupTable>& tables);

} // namespace orbctl
