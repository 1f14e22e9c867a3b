#include "console/CurveSpans.h"

#include <algorithm>

namespace orbctl {

namespace {

/// The values that fall into a column; where there are more columns than values, one stands for several.
CurveSpan spanOfColumn(const std::vector<std::uint32_t>& values, unsigned column, unsigned columns) {
    const std::uint64_t count = values.size();
    const auto first = static_cast<std::size_t>(count * column / columns);
    const auto end = std::max(first + 1, static_cast<std::size_t>(count * (column + 1) / columns));
    const auto range = std::minmax_element(values.begin() + static_cast<std::ptrdiff_t>(first),
                                           values.begin() + static_cast<std::ptrdiff_t>(end));
    return {*range.first, *range.second};
}

void join(CurveSpan& span, const CurveSpan& before) {
    if (span.lowest > before.highest + 1)
        span.lowest = before.highest + 1;
    if (span.highest + 1 < before.lowest)
        span.highest = before.lowest - 1;
}

} // namespace

std::vector<CurveSpan> spansOf(const std::vector<std::uint32_t>& values, std::uint32_t largest,
                               unsigned columns, unsigned rows) {
    const auto rowOf = [&](std::uint32_t value) {
        const std::uint64_t top = std::uint64_t{rows} - 1;
        return static_cast<unsigned>((std::min(value, largest) * top + largest / 2) / largest);
    };
    std::vector<CurveSpan> spans;
    spans.reserve(columns);
    for (unsigned column = 0; column < columns; ++column) {
        const CurveSpan covered = spanOfColumn(values, column, columns);
        spans.push_back({rowOf(covered.lowest), rowOf(covered.highest)});
        if (column > 0)
            join(spans[column], spans[column - 1]);
    }
    return spans;
}

} // namespace orbctl
