#include "console/DiagramSvg.h"

#include "console/Duration.h"
#include "console/NumberText.h"
#include "console/Svg.h"

#include <algorithm>

namespace orbctl {

namespace {

constexpr double namesWidth = 170;
constexpr double plotWidth = 1000;
constexpr double rightMargin = 70;
constexpr double top = 40;
constexpr double rowHeight = 26;
constexpr double signalHeight = 16;
constexpr unsigned marks = 10;

std::string colourOf(BoardSignalKind kind) {
    switch (kind) {
    case boardSignalInput:
    case boardSignalDebouncedInput:
        return "#1f5fa8";
    case boardSignalQueueFillLevel:
        return "#a86a00";
    case boardSignalGeneratorPulse:
        return "#7a3fa0";
    case boardSignalPulseForm:
        return "#1d7a46";
    case boardSignalOutput:
        return "#0b7285";
    default:
        return "#b3261e";
    }
}

/// Places in the picture.
class Layout {
  public:
    explicit Layout(const TriggerDiagram& diagram) : mDiagram(diagram) {}

    double x(double tick) const {
        const double length = static_cast<double>(mDiagram.end - mDiagram.begin);
        return namesWidth + (tick - static_cast<double>(mDiagram.begin)) / length * plotWidth;
    }
    double x(std::uint64_t tick) const { return x(static_cast<double>(tick)); }
    /// Base line of a row.
    double base(std::size_t row) const { return top + rowHeight * static_cast<double>(row + 1) - 5; }
    double bottom() const { return top + rowHeight * static_cast<double>(mDiagram.signals.size()) + 4; }
    double height() const { return bottom() + 30; }
    double width() const { return namesWidth + plotWidth + rightMargin; }

  private:
    const TriggerDiagram& mDiagram;
};

std::string marksOf(const TriggerDiagram& diagram, const Layout& layout) {
    std::string svg;
    const double distance = markDistance(diagram, marks);
    const double length = static_cast<double>(diagram.end - diagram.begin);
    for (unsigned mark = 0; distance * mark <= length * 1.000001; ++mark) {
        const double x = layout.x(static_cast<double>(diagram.begin) + distance * mark);
        svg += svgLine(x, top, x, layout.bottom(), "stroke=\"#e0e0e0\"");
        svg += svgText(x, layout.bottom() + 18, durationText(distance * mark),
                       "text-anchor=\"middle\" fill=\"#555555\"");
    }
    return svg;
}

/// A step line; the largest value reaches the row's full height.
std::string stepsOf(const DiagramSignal& signal, const TriggerDiagram& diagram, const Layout& layout,
                    double base) {
    const double largest = std::max<double>(1, signal.largestValue());
    const auto y = [&](std::uint32_t value) { return svgNumber(base - value / largest * signalHeight); };
    std::string commands = "M" + svgNumber(layout.x(diagram.begin)) + " " + y(signal.initialValue);
    for (const DiagramSignal::Change& change : signal.changes)
        commands += "H" + svgNumber(layout.x(change.tick)) + "V" + y(change.value);
    return commands + "H" + svgNumber(layout.x(diagram.end));
}

std::string instantsOf(const DiagramSignal& signal, const TriggerDiagram& diagram, const Layout& layout,
                       double base) {
    std::string commands = "M" + svgNumber(layout.x(diagram.begin)) + " " + svgNumber(base) + "H" +
                           svgNumber(layout.x(diagram.end));
    for (const DiagramSignal::Change& change : signal.changes)
        commands +=
            "M" + svgNumber(layout.x(change.tick)) + " " + svgNumber(base) + "v" + svgNumber(-signalHeight);
    return commands;
}

std::string rowOf(const DiagramSignal& signal, const TriggerDiagram& diagram, const Layout& layout,
                  double base) {
    const std::string colour = colourOf(signal.kind);
    const std::string commands = signal.shape == SignalShape::instant
                                     ? instantsOf(signal, diagram, layout, base)
                                     : stepsOf(signal, diagram, layout, base);
    std::string svg =
        svgText(namesWidth - 10, base - 3, signal.name, "text-anchor=\"end\" fill=\"#222222\"") +
        svgPath(commands, "fill=\"none\" stroke=\"" + colour + "\" stroke-width=\"1.4\"");
    if (signal.shape == SignalShape::count)
        svg += svgText(namesWidth + plotWidth + 8, base - 3,
                       "max " + textOf(std::uint64_t{signal.largestValue()}), "fill=\"" + colour + "\"");
    return svg;
}

} // namespace

std::string svgOf(const TriggerDiagram& diagram) {
    const Layout layout(diagram);
    std::string svg =
        svgBegin(layout.width(), layout.height()) +
        svgText(namesWidth, 24, diagram.title, "font-size=\"15\" font-weight=\"bold\" fill=\"#222222\"") +
        marksOf(diagram, layout);
    for (std::size_t row = 0; row < diagram.signals.size(); ++row)
        svg += rowOf(diagram.signals[row], diagram, layout, layout.base(row));
    return svg + "</svg>\n";
}

} // namespace orbctl
