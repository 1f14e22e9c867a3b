#pragma once

#include "console/TriggerDiagram.h"

#include <string>

namespace orbctl {

/// Draws a diagram as a picture of its own: an SVG document that needs nothing beside it.
std::string svgOf(const TriggerDiagram& diagram);

} // namespace orbctl
