#pragma once

#include <cstdint>
#include <vector>

namespace orbctl {

/// The rows that a curve covers in one column of a raster; row 0 is at the bottom.
struct CurveSpan {
    unsigned lowest = 0;
    unsigned highest = 0;
};

/// Draws a table of values into a raster. Neighbouring spans touch, so that the curve has no gaps.
/// \param values   at least one; those above \p largest count as \p largest
/// \param columns  at least 1; the first value is in the first one, the last value in the last one
/// \param rows     at least 1; 0 is in the lowest one, \p largest in the highest one
std::vector<CurveSpan> spansOf(const std::vector<std::uint32_t>& values, std::uint32_t largest,
                               unsigned columns, unsigned rows);

} // namespace orbctl
