#include "console/Setting.h"
#include "console/Failure.h"

#include <gtest/gtest.h>

namespace orbctl {

TEST(Setting, SplitsAtTheFirstEqualsSign) {
    const Setting setting = settingFrom("FG_LUT_SAVE_FILE=a=b.lut");
    EXPECT_EQ(setting.target, "FG_LUT_SAVE_FILE");
    EXPECT_EQ(setting.value, "a=b.lut");
    EXPECT_EQ(settingFrom("FG_LUT_CUSTOM_FILE=").value, "");
}

TEST(Setting, RefusesATextWithoutAName) {
    for (const char* const text : {"", "FG_WIDTH", "=5"})
        EXPECT_THROW(settingFrom(text), Failure) << text;
}

TEST(Setting, TakesAPortInFrontOrBothPorts) {
    EXPECT_EQ(portSettingFrom("FG_WIDTH=16").ports, (std::vector<unsigned>{0, 1}));
    EXPECT_EQ(portSettingFrom("1:FG_WIDTH=16").ports, std::vector<unsigned>{1});
    EXPECT_EQ(portSettingFrom("0:FG_WIDTH=16").setting.target, "FG_WIDTH");
    EXPECT_EQ(portSettingFrom("2:FG_WIDTH=16").setting.target, "2:FG_WIDTH");
}

} // namespace orbctl
