#include "console/Duration.h"

#include <gtest/gtest.h>

namespace orbctl {

TEST(Duration, ReadsTimesAsTicksOfSixteenNanoseconds) {
    EXPECT_EQ(ticksFrom("16ns"), 1U);
    EXPECT_EQ(ticksFrom("20us"), 1250U);
    EXPECT_EQ(ticksFrom("1.5ms"), 93750U);
    EXPECT_EQ(ticksFrom("2s"), 125000000U);
    EXPECT_EQ(ticksFrom("0"), 0U);
    EXPECT_EQ(ticksFrom("7ns"), 0U);
    EXPECT_EQ(ticksFrom("8ns"), 1U);
}

TEST(Duration, RefusesWhatIsNoTime) {
    for (const char* const text : {"", "s", "ms", "5", "-1s", "5m", "1e300s", "nans", "infs", "1 s x"})
        EXPECT_EQ(ticksFrom(text), std::nullopt) << text;
}

TEST(Duration, IsWrittenInTheUnitThatSuitsIt) {
    EXPECT_EQ(durationText(7812500), "125 ms");
    EXPECT_EQ(durationText(1250), "20 us");
    EXPECT_EQ(durationText(1), "16 ns");
    EXPECT_EQ(durationText(93750000), "1.5 s");
    EXPECT_EQ(durationText(62500000.0 / 3), "333.3 ms");
    EXPECT_EQ(durationText(0), "0 s");
}

} // namespace orbctl
