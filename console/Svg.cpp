#include "console/Svg.h"

#include "console/NumberText.h"

#include <cmath>

namespace orbctl {

std::string svgEscaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        if (character == '&')
            escaped += "&amp;";
        else if (character == '<')
            escaped += "&lt;";
        else if (character == '>')
            escaped += "&gt;";
        else if (character == '"')
            escaped += "&quot;";
        else
            escaped += character;
    }
    return escaped;
}

std::string svgNumber(double number) { return textOf(std::round(number * 100) / 100 + 0.0); }

std::string svgBegin(double width, double height) {
    const std::string size = svgNumber(width) + " " + svgNumber(height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + svgNumber(width) + "\" height=\"" +
           svgNumber(height) + "\" viewBox=\"0 0 " + size +
           "\" font-family=\"sans-serif\" font-size=\"12\">\n<rect width=\"100%\" height=\"100%\" "
           "fill=\"#ffffff\"/>\n";
}

std::string svgText(double x, double y, std::string_view text, std::string_view attributes) {
    return "<text x=\"" + svgNumber(x) + "\" y=\"" + svgNumber(y) + "\" " + std::string(attributes) + ">" +
           svgEscaped(text) + "</text>\n";
}

std::string svgLine(double x1, double y1, double x2, double y2, std::string_view attributes) {
    return "<line x1=\"" + svgNumber(x1) + "\" y1=\"" + svgNumber(y1) + "\" x2=\"" + svgNumber(x2) +
           "\" y2=\"" + svgNumber(y2) + "\" " + std::string(attributes) + "/>\n";
}

std::string svgPath(std::string_view commands, std::string_view attributes) {
    return "<path d=\"" + std::string(commands) + "\" " + std::string(attributes) + "/>\n";
}

} // namespace orbctl
