#include "console/LutPlotPicture.h"

#include "console/CurveSpans.h"
#include "console/NumberText.h"

#include <algorithm>
#include <array>

namespace orbctl {

namespace {

constexpr int left = 90;
constexpr int top = 50;
constexpr int side = 1024;
constexpr int right = 50;
constexpr int legendTop = top + side + 70;
constexpr int legendLine = 34;
constexpr int thickness = 4;
constexpr unsigned gridDistance = 512;
constexpr unsigned char gridGray = 215;
constexpr unsigned char textGray = 40;

struct CurveStyle {
    unsigned char gray;
    int drawn;   ///< columns of a dash
    int skipped; ///< columns between dashes
};

constexpr std::array<CurveStyle, 2> curveStyles = {{{0, 1, 0}, {140, 16, 10}}};

bool isDrawn(const CurveStyle& style, int column) {
    return column % (style.drawn + style.skipped) < style.drawn;
}

int placeOf(unsigned value) {
    return static_cast<int>(value * (static_cast<unsigned>(side) - 1) / LookupTable::largestInput);
}

void drawMark(PictureCanvas& canvas, unsigned mark) {
    const std::string text = textOf(std::uint64_t{mark});
    const int place = placeOf(mark);
    const int width = PictureCanvas::textWidth(text);
    canvas.fill(left + place, top, 1, side, gridGray);
    canvas.fill(left, top + side - 1 - place, side, 1, gridGray);
    canvas.text(left + place - width / 2, top + side + 8, text, textGray);
    canvas.text(left - 10 - width, top + side - place - PictureCanvas::textHeight / 2, text, textGray);
}

void drawGrid(PictureCanvas& canvas) {
    for (unsigned mark = 0; mark < LookupTable::largestInput; mark += gridDistance)
        drawMark(canvas, mark);
    drawMark(canvas, LookupTable::largestInput);
    canvas.text(left + side / 2 - PictureCanvas::textWidth("input") / 2, top + side + 34, "input", textGray);
    canvas.text(left - 10 - PictureCanvas::textWidth("output"), top - 36, "output", textGray);
}

void drawCurve(PictureCanvas& canvas, const LookupTable& table, const CurveStyle& style) {
    const auto spans = spansOf(table.values, LookupTable::largestOutput, side, side);
    for (int column = 0; column < side; ++column) {
        const CurveSpan& span = spans[static_cast<std::size_t>(column)];
        if (!isDrawn(style, column))
            continue;
        const int highest = top + side - 1 - static_cast<int>(span.highest);
        const int height = static_cast<int>(span.highest - span.lowest) + 1;
        canvas.fill(left + column - thickness / 2, highest - thickness / 2, thickness, height + thickness - 1,
                    style.gray);
    }
}

void drawLegend(PictureCanvas& canvas, const LookupTable& table, const CurveStyle& style, int line) {
    constexpr int sampleWidth = 68;
    for (int column = 0; column < sampleWidth; ++column)
        if (isDrawn(style, column))
            canvas.fill(left + column, line + 6, 1, thickness, style.gray);
    canvas.text(left + sampleWidth + 16, line, legendText(table), textGray);
}

} // namespace

PictureCanvas pictureOf(const std::vector<LookupTable>& tables) {
    const std::size_t curves = std::min(tables.size(), curveStyles.size());
    const int height = legendTop + legendLine * static_cast<int>(curves);
    PictureCanvas canvas(static_cast<unsigned>(left + side + right), static_cast<unsigned>(height));
    drawGrid(canvas);
    for (std::size_t curve = 0; curve < curves; ++curve) {
        drawCurve(canvas, tables[curve], curveStyles[curve]);
        drawLegend(canvas, tables[curve], curveStyles[curve],
                   legendTop + legendLine * static_cast<int>(curve));
    }
    return canvas;
}

} // namespace orbctl
