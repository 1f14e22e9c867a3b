#pragma once

#include <string>
#include <string_view>

namespace orbctl {

/// Text as it may stand in an SVG document.
std::string svgEscaped(std::string_view text);
/// A coordinate with at most two digits behind the point.
std::string svgNumber(double number);
/// An opening tag for a document of this size, on white, in a sans-serif face.
std::string svgBegin(double width, double height);
std::string svgText(double x, double y, std::string_view text, std::string_view attributes = "");
std::string svgLine(double x1, double y1, double x2, double y2, std::string_view attributes);
std::string svgPath(std::string_view commands, std::string_view attributes);

} // namespace orbctl
