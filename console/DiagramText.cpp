#include "console/DiagramText.h"

#include "console/Duration.h"
#include "console/NumberText.h"

#include <algorithm>

namespace orbctl {

namespace {

constexpr std::size_t leastColumns = 20;

/// What happens to a signal in one column.
struct ColumnContent {
    std::uint32_t valueBefore = 0;
    std::uint32_t largest = 0;
    std::size_t changes = 0;
};

std::vector<ColumnContent> contentOf(const DiagramSignal& signal, const TriggerDiagram& diagram,
                                     std::size_t columns) {
    std::vector<ColumnContent> content(columns);
    const double ticksPerColumn =
        static_cast<double>(diagram.end - diagram.begin) / static_cast<double>(columns);
    std::uint32_t value = signal.initialValue;
    auto change = signal.changes.begin();
    for (std::size_t column = 0; column < columns; ++column) {
        const double end =
            static_cast<double>(diagram.begin) + ticksPerColumn * static_cast<double>(column + 1);
        const bool isLast = column + 1 == columns;
        content[column] = {value, value, 0};
        for (; change != signal.changes.end() && (isLast || static_cast<double>(change->tick) < end);
             ++change) {
            value = change->value;
            content[column].largest = std::max(content[column].largest, value);
            ++content[column].changes;
        }
    }
    return content;
}

char characterOf(SignalShape shape, const ColumnContent& content) {
    if (shape == SignalShape::count && content.largest > 0)
        return content.largest > 9 ? '+' : static_cast<char>('0' + content.largest);
    if (shape != SignalShape::level)
        return content.changes == 0 || shape == SignalShape::count ? '_' : content.changes == 1 ? '|' : '#';
    if (content.changes > 0)
        return content.changes > 2 ? '#' : '|';
    return content.valueBefore == 0 ? '_' : '~';
}

std::string lineOf(const DiagramSignal& signal, const TriggerDiagram& diagram, std::size_t columns) {
    std::string line;
    for (const ColumnContent& content : contentOf(signal, diagram, columns))
        line += characterOf(signal.shape, content);
    return line;
}

/// Marks with their times, as far as they do not run into each other.
std::string axis(const TriggerDiagram& diagram, std::size_t columns) {
    const double distance = markDistance(diagram, static_cast<unsigned>(columns / 12));
    const double length = static_cast<double>(diagram.end - diagram.begin);
    std::string line;
    for (unsigned mark = 0; distance * mark <= length; ++mark) {
        const auto column = static_cast<std::size_t>(distance * mark / length * static_cast<double>(columns));
        if (column < line.size())
            continue;
        line.resize(column, ' ');
        line += "'" + durationText(distance * mark) + " ";
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

std::size_t nameWidth(const TriggerDiagram& diagram) {
    std::size_t width = 0;
    for (const DiagramSignal& signal : diagram.signals)
        width = std::max(width, signal.name.size());
    return width;
}

} // namespace

std::string textOf(const TriggerDiagram& diagram, unsigned width) {
    const std::size_t names = nameWidth(diagram) + 2;
    const std::size_t columns = width < names + leastColumns ? leastColumns : width - names;
    std::string text = diagram.title + "\n";
    for (const DiagramSignal& signal : diagram.signals)
        text += signal.name + std::string(names - signal.name.size(), ' ') +
                lineOf(signal, diagram, columns) + "\n";
    return text + std::string(names, ' ') + axis(diagram, columns) + "\n";
}

} // namespace orbctl
