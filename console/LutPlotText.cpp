#include "console/LutPlotText.h"

#include "console/CurveSpans.h"
#include "console/NumberText.h"

#include <algorithm>
#include <array>

namespace orbctl {

namespace {

constexpr unsigned labelWidth = 6; ///< "4095 |"
constexpr unsigned leastColumns = 16;
constexpr unsigned dotsAcross = 2;

/// Characters that divide their cell into dots, two across.
struct DotCharacters {
    unsigned dotsDown;
    std::string (*character)(unsigned dots); ///< bit 2 * line + column, from the upper left dot
};

std::string braille(unsigned dots) {
    constexpr std::array<unsigned, 8> brailleBits = {0, 3, 1, 4, 2, 5, 6, 7};
    unsigned pattern = 0;
    for (unsigned dot = 0; dot < brailleBits.size(); ++dot)
        pattern |= (dots >> dot & 1) << brailleBits[dot];
    return {'\xE2', static_cast<char>(0xA0 | pattern >> 6), static_cast<char>(0x80 | (pattern & 0x3F))};
}

std::string quarterBlock(unsigned dots) {
    static const char* const blocks[] = {" ", "▘", "▝", "▀", "▖", "▌", "▞", "▛",
                                         "▗", "▚", "▐", "▜", "▄", "▙", "▟", "█"};
    return blocks[dots];
}

constexpr std::array<DotCharacters, 2> drawnWith = {{{4, braille}, {2, quarterBlock}}};

/// Which dots of each cell a curve covers, line by line from the top.
using CellDots = std::vector<std::vector<unsigned>>;

CellDots dotsOf(const LookupTable& table, unsigned dotsDown, unsigned columns, unsigned rows) {
    const unsigned dotRows = rows * dotsDown;
    const auto spans = spansOf(table.values, LookupTable::largestOutput, columns * dotsAcross, dotRows);
    CellDots cells(rows, std::vector<unsigned>(columns));
    for (unsigned column = 0; column < spans.size(); ++column)
        for (unsigned row = spans[column].lowest; row <= spans[column].highest; ++row) {
            const unsigned fromTop = dotRows - 1 - row;
            const unsigned dot = fromTop % dotsDown * dotsAcross + column % dotsAcross;
            cells[fromTop / dotsDown][column / dotsAcross] |= 1U << dot;
        }
    return cells;
}

std::string coloured(const Terminal& terminal, std::size_t curve, const std::string& text) {
    return curve == 0 ? terminal.good(text) : terminal.warning(text);
}

/// One line of the plot; where curves meet, the first one is seen.
std::string lineOf(const std::vector<CellDots>& curves, std::size_t line, const Terminal& terminal) {
    std::string text;
    std::string blanks;
    for (std::size_t column = 0; column < curves.front()[line].size(); ++column) {
        std::size_t curve = 0;
        while (curve < curves.size() && curves[curve][line][column] == 0)
            ++curve;
        if (curve == curves.size()) {
            blanks += ' ';
            continue;
        }
        text += blanks;
        text += coloured(terminal, curve, drawnWith[curve].character(curves[curve][line][column]));
        blanks.clear();
    }
    return text;
}

std::string rightAligned(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string labelOf(unsigned line, unsigned rows) {
    if (line == 0)
        return textOf(std::uint64_t{LookupTable::largestOutput});
    if (line + 1 == rows)
        return "0";
    return line == rows / 2 && rows > 4 ? textOf(std::uint64_t{LookupTable::largestOutput / 2}) : "";
}

std::string axis(unsigned columns) {
    std::string line(labelWidth - 1, ' ');
    line += "└";
    for (unsigned column = 0; column < columns; ++column)
        line += "─";
    const std::string last = textOf(std::uint64_t{LookupTable::largestInput});
    return line + "\n" + std::string(labelWidth, ' ') + "0" + rightAligned(last, columns - 1) + "\n";
}

/// A piece of the curve as the plot has it.
std::string sampleOf(std::size_t curve) {
    const unsigned lowestDots = 3U << (drawnWith[curve].dotsDown - 1) * dotsAcross;
    const std::string character = drawnWith[curve].character(lowestDots);
    return character + character + character;
}

std::string legend(const std::vector<LookupTable>& tables, const Terminal& terminal) {
    std::string text;
    for (std::size_t curve = 0; curve < tables.size(); ++curve) {
        const bool isHidden = curve > 0 && tables[curve].values == tables.front().values;
        text += coloured(terminal, curve, sampleOf(curve));
        text += "  " + legendText(tables[curve]);
        text += isHidden ? " (the same curve)\n" : "\n";
    }
    return text;
}

} // namespace

std::string textOf(const std::vector<LookupTable>& tables, unsigned width, unsigned rows,
                   const Terminal& terminal) {
    const unsigned columns = std::max(width, labelWidth + leastColumns) - labelWidth;
    std::vector<CellDots> curves;
    for (std::size_t curve = 0; curve < tables.size(); ++curve)
        curves.push_back(dotsOf(tables[curve], drawnWith[curve].dotsDown, columns, rows));
    std::string text;
    for (unsigned line = 0; line < rows; ++line)
        text +=
            rightAligned(labelOf(line, rows), labelWidth - 2) + " │" + lineOf(curves, line, terminal) + "\n";
    return text + axis(columns) + legend(tables, terminal);
}

} // namespace orbctl
