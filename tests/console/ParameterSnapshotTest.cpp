#include "console/ParameterSnapshot.h"
#include "tests/console/ExampleParameters.h"

#include <gtest/gtest.h>

namespace orbctl {

using test::fieldParameter;
using test::formatParameter;
using test::unsignedParameter;

namespace {

ParameterState width(std::uint64_t value) {
    return {unsignedParameter("FG_WIDTH", 16, 4096, 16), {0, value}, {}};
}

ParameterState table(const std::vector<std::uint64_t>& values) {
    ParameterState state{fieldParameter("FG_LUT_VALUE", static_cast<std::uint32_t>(values.size())), {}, {}};
    for (const std::uint64_t value : values)
        state.elements.push_back({0, value});
    return state;
}

} // namespace

TEST(ParameterChange, IsSeenInValuesCodesAndElements) {
    EXPECT_FALSE(isChanged(width(640), width(640)));
    EXPECT_TRUE(isChanged(width(640), width(656)));
    ParameterState unreadable = width(640);
    unreadable.reading.code = -2070;
    EXPECT_TRUE(isChanged(width(640), unreadable));
    ParameterState otherUnreadable = width(0);
    otherUnreadable.reading.code = -2070;
    EXPECT_FALSE(isChanged(unreadable, otherUnreadable)) << "what cannot be read has no value";
    EXPECT_FALSE(isChanged(table({1, 2}), table({1, 2})));
    EXPECT_TRUE(isChanged(table({1, 2}), table({1, 3})));
}

TEST(ParameterChange, CountsElements) {
    EXPECT_EQ(changedElements(table({1, 2, 3}), table({1, 5, 6})), 2U);
    EXPECT_EQ(changedElements(table({1, 2, 3}), table({1})), 2U);
    EXPECT_EQ(changedElements(width(1), width(2)), 0U);
}

TEST(ParameterChange, IsToldInWords) {
    EXPECT_EQ(changeText(width(640), width(656)), "FG_WIDTH = 656 (was 640)");
    const ParameterState gray{formatParameter(), {0, std::int64_t{3}}, {}};
    const ParameterState deep{formatParameter(), {0, std::int64_t{1}}, {}};
    EXPECT_EQ(changeText(gray, deep), "FG_FORMAT = FG_GRAY16 (1) (was FG_GRAY (3))");
    EXPECT_EQ(changeText(table({1, 2, 3}), table({1, 5, 6})), "FG_LUT_VALUE: 2 of 3 elements changed");
}

} // namespace orbctl
