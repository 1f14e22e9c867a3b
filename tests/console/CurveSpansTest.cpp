#include "console/CurveSpans.h"

#include <gtest/gtest.h>
#include <numeric>

namespace orbctl {

namespace {

std::vector<std::uint32_t> identity(std::size_t count) {
    std::vector<std::uint32_t> values(count);
    std::iota(values.begin(), values.end(), 0U);
    return values;
}

} // namespace

TEST(CurveSpans, GoFromTheLowestToTheHighestRow) {
    const auto spans = spansOf(identity(4096), 4095, 100, 50);
    ASSERT_EQ(spans.size(), 100U);
    EXPECT_EQ(spans.front().lowest, 0U);
    EXPECT_EQ(spans.back().highest, 49U);
}

TEST(CurveSpans, LeaveNoGapBetweenNeighbours) {
    std::vector<std::uint32_t> steps(64);
    for (std::size_t place = 0; place < steps.size(); ++place)
        steps[place] = place / 8 % 2 == 0 ? 10U : 4000U;
    const auto spans = spansOf(steps, 4095, 64, 80);
    for (std::size_t column = 1; column < spans.size(); ++column) {
        EXPECT_LE(spans[column].lowest, spans[column - 1].highest + 1) << column;
        EXPECT_LE(spans[column - 1].lowest, spans[column].highest + 1) << column;
    }
}

TEST(CurveSpans, CoverEveryValueOfAColumn) {
    const auto spans = spansOf({0, 100, 50, 50}, 100, 2, 101);
    EXPECT_EQ(spans[0].lowest, 0U);
    EXPECT_EQ(spans[0].highest, 100U);
    EXPECT_EQ(spans[1].lowest, 50U);
    EXPECT_EQ(spans[1].highest, 50U);
}

TEST(CurveSpans, StretchFewValuesOverManyColumns) {
    const auto spans = spansOf({0, 100}, 100, 10, 11);
    EXPECT_EQ(spans[4].highest, 0U);
    EXPECT_EQ(spans[5].highest, 10U);
    EXPECT_EQ(spans[5].lowest, 1U) << "joined to the column before";
    EXPECT_EQ(spans[6].lowest, 10U);
}

TEST(CurveSpans, HoldValuesBeyondTheLargestInTheHighestRow) {
    const auto spans = spansOf({4294967295U}, 4095, 3, 4);
    for (const CurveSpan& span : spans) {
        EXPECT_EQ(span.lowest, 3U);
        EXPECT_EQ(span.highest, 3U);
    }
}

} // namespace orbctl
