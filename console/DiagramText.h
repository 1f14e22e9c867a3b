#pragma once

#include "console/TriggerDiagram.h"

#include <string>

namespace orbctl {

/// Draws a diagram with characters: "_" low, "~" high, "|" an edge or a pulse, "#" more of them than a column
/// can show; a queue as digits, "+" above 9. \param width  columns of the whole picture
std::string textOf(const TriggerDiagram& diagram, unsigned width);

} // namespace orbctl
