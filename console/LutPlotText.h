#pragma once

#include "console/LookupTable.h"
#include "console/Terminal.h"

#include <string>
#include <vector>

namespace orbctl {

/// Draws the curves of lookup tables with characters: the first one with braille dots, the second one with
/// quarter blocks, so that they can be told apart without colour. Below them stands a legend.
/// \param tables  one or two
/// \param width   columns of the whole plot
/// \param rows    lines of the curves
std::string textOf(const std::vector<LookupTable>& tables, unsigned width, unsigned rows,
                   const Terminal& terminal);

} // namespace orbctl
