#include "console/CameraStatus.h"

#include <gtest/gtest.h>

namespace orbctl {

namespace {

std::vector<std::string> namesOf(std::uint32_t status) {
    std::vector<std::string> names;
    for (const CameraStatusBit& bit : cameraStatusBits())
        if (isSet(status, bit))
            names.emplace_back(bit.name);
    return names;
}

} // namespace

TEST(CameraStatus, NamesTheBitsThatAreSet) {
    EXPECT_EQ(namesOf(0x09), (std::vector<std::string>{"camera connected", "acquiring"}));
    EXPECT_EQ(namesOf(0x26), (std::vector<std::string>{"link 0 up", "link 1 up", "overflow"}));
    EXPECT_TRUE(namesOf(0xFFFFFFD0).empty());
}

TEST(CameraStatus, TellsTheQuarterOfTheFillLevel) {
    EXPECT_EQ(fillBandText(0x3F), "below 25 %");
    EXPECT_EQ(fillBandText(0x40), "25 to 49 %");
    EXPECT_EQ(fillBandText(0x80), "50 to 74 %");
    EXPECT_EQ(fillBandText(0xFFFFFFFF), "75 % and above");
    EXPECT_EQ(fillBand(0xC0), 3U);
}

TEST(CameraStatus, ListsBitsWithoutAName) {
    EXPECT_TRUE(unnamedBits(0xEF).empty());
    EXPECT_EQ(unnamedBits(0x80000110), (std::vector<unsigned>{4, 8, 31}));
}

} // namespace orbctl
