#include "console/LutPlotSvg.h"

#include "console/NumberText.h"
#include "console/Svg.h"

#include <algorithm>
#include <array>

namespace orbctl {

namespace {

constexpr double left = 70;
constexpr double top = 50;
constexpr double side = 640;
constexpr double right = 40;
constexpr double legendLine = 22;
constexpr unsigned gridDistance = 512;

constexpr std::array<const char*, 2> curveStyles = {
    "fill=\"none\" stroke=\"#1f5fa8\" stroke-width=\"2.5\"",
    "fill=\"none\" stroke=\"#b3261e\" stroke-width=\"2.5\" stroke-dasharray=\"9 6\""};

double x(double input) { return left + input / LookupTable::largestInput * side; }
double y(double output) { return top + side - output / LookupTable::largestOutput * side; }

/// Marks of an axis: every 512, and the last value in place of the mark beside it.
std::vector<unsigned> marks() {
    std::vector<unsigned> places;
    for (unsigned place = 0; place < LookupTable::largestInput; place += gridDistance)
        places.push_back(place);
    places.push_back(LookupTable::largestInput);
    return places;
}

std::string grid() {
    std::string svg;
    for (const unsigned mark : marks()) {
        const std::string text = textOf(std::uint64_t{mark});
        svg += svgLine(x(mark), top, x(mark), top + side, "stroke=\"#e0e0e0\"");
        svg += svgLine(left, y(mark), left + side, y(mark), "stroke=\"#e0e0e0\"");
        svg += svgText(x(mark), top + side + 18, text, "text-anchor=\"middle\" fill=\"#555555\"");
        svg += svgText(left - 8, y(mark) + 4, text, "text-anchor=\"end\" fill=\"#555555\"");
    }
    svg += svgText(left + side / 2, top + side + 38, "input", "text-anchor=\"middle\" fill=\"#222222\"");
    return svg + svgText(left - 8, top - 14, "output", "text-anchor=\"end\" fill=\"#222222\"");
}

/// Points in the middle of a straight line are left out.
bool isOnLine(const std::vector<std::uint32_t>& values, std::size_t input) {
    if (input == 0 || input + 1 == values.size())
        return false;
    const auto value = [&](std::size_t place) { return std::int64_t{values[place]}; };
    return value(input) - value(input - 1) == value(input + 1) - value(input);
}

std::string curveOf(const LookupTable& table) {
    std::string commands;
    for (std::size_t input = 0; input < table.values.size(); ++input)
        if (!isOnLine(table.values, input))
            commands += (commands.empty() ? "M" : "L") + svgNumber(x(static_cast<double>(input))) + " " +
                        svgNumber(y(table.values[input]));
    return commands;
}

std::string legendOf(const LookupTable& table, const char* style, double base) {
    return svgLine(left, base - 4, left + 44, base - 4, style) +
           svgText(left + 54, base, legendText(table), "fill=\"#222222\" font-size=\"14\"");
}

} // namespace

std::string svgOf(const std::vector<LookupTable>& tables) {
    const double legendTop = top + side + 66;
    const double height = legendTop + legendLine * static_cast<double>(tables.size());
    std::string svg =
        svgBegin(left + side + right, height) +
        svgText(left + side / 2, 28, "Lookup table",
                "text-anchor=\"middle\" font-size=\"16\" font-weight=\"bold\" fill=\"#222222\"") +
        grid();
    for (std::size_t curve = 0; curve < std::min(tables.size(), curveStyles.size()); ++curve) {
        svg += svgPath(curveOf(tables[curve]), curveStyles[curve]);
        svg +=
            legendOf(tables[curve], curveStyles[curve], legendTop + legendLine * static_cast<double>(curve));
    }
    return svg + "</svg>\n";
}

} // namespace orbctl
