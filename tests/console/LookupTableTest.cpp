#include "console/LookupTable.h"

#include <gtest/gtest.h>
#include <numeric>

namespace orbctl {

namespace {

LookupTable identity() {
    LookupTable table;
    table.values.resize(4096);
    std::iota(table.values.begin(), table.values.end(), 0U);
    return table;
}

} // namespace

TEST(LookupTable, KnowsTheIdentity) {
    LookupTable table = identity();
    EXPECT_TRUE(table.isIdentity());
    EXPECT_TRUE(table.followsProcessor());
    table.values[4095] = 4094;
    EXPECT_FALSE(table.isIdentity());
    EXPECT_EQ(table.largest(), 4094U);
    EXPECT_EQ(table.smallest(), 0U);
}

TEST(LookupTable, SeesEntriesThatTheProcessorDoesNotGive) {
    LookupTable table = identity();
    table.values[100] = 102;
    EXPECT_FALSE(table.followsProcessor());
    table.values[100] = 100;
    table.isInverted = true;
    EXPECT_FALSE(table.followsProcessor());
    for (std::uint32_t input = 0; input < 4096; ++input)
        table.values[input] = 4095 - input;
    EXPECT_TRUE(table.followsProcessor());
}

TEST(LookupTable, FollowsAProcessorThatIsOutOfRange) {
    LookupTable table = identity();
    table.gain = 4096;
    for (std::uint32_t input = 0; input < 4096; ++input)
        table.values[input] = input == 0 ? 0 : 4095;
    EXPECT_TRUE(table.followsProcessor());
    table.gain = 0;
    table.gamma = -1;
    table.values.assign(4096, 0);
    EXPECT_TRUE(table.followsProcessor()) << "0 to the power of -1 is no number that an entry can hold";
}

TEST(LookupTable, LegendNamesWhatFillsTheTable) {
    LookupTable table = identity();
    EXPECT_EQ(legendText(table), "port 0: offset 0, gain 1, gamma 1, invert off");
    table.values[7] = 4000;
    EXPECT_EQ(legendText(table), "port 0: offset 0, gain 1, gamma 1, invert off, entries set by hand");
    table.port = 1;
    table.isProcessed = false;
    table.file = "a.lut";
    EXPECT_EQ(legendText(table), "port 1: file a.lut");
    table.file.clear();
    EXPECT_EQ(legendText(table), "port 1: no file loaded");
}

} // namespace orbctl
