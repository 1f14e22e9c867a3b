#include "console/NameSuggestion.h"

#include <gtest/gtest.h>

namespace orbctl {

namespace {

const std::vector<std::string> names = {"FG_WIDTH", "FG_HEIGHT", "FG_TRIGGER_FRAMESPERSECOND", "FG_LUT_TYPE",
                                        "Output Format"};

} // namespace

TEST(NameSuggestion, FindsASlip) {
    EXPECT_EQ(closestName("FG_WITDH", names), "FG_WIDTH");
    EXPECT_EQ(closestName("FG_HIGHT", names), "FG_HEIGHT");
    EXPECT_EQ(closestName("FG_TRIGGER_FRAMEPERSEC", names), "FG_TRIGGER_FRAMESPERSECOND");
}

TEST(NameSuggestion, LooksPastCasePrefixAndSeparators) {
    EXPECT_EQ(closestName("width", names), "FG_WIDTH");
    EXPECT_EQ(closestName("lut-type", names), "FG_LUT_TYPE");
    EXPECT_EQ(closestName("output_format", names), "Output Format");
}

TEST(NameSuggestion, GivesNothingWhereNoNameIsClose) {
    EXPECT_EQ(closestName("FG_NONSENSE_AT_ALL", names), "");
    EXPECT_EQ(didYouMean("zzzzzz", names), "");
    EXPECT_EQ(closestName("x", {}), "");
}

TEST(NameSuggestion, AsksInWords) { EXPECT_EQ(didYouMean("FG_WIDHT", names), "; did you mean FG_WIDTH?"); }

} // namespace orbctl
