// Limits and access that settings have moved, as a program sees them that takes the description anew.

#include "tests/genicam/DescribedFeatures.h"
#include "tests/genicam/GenicamClient.h"
#include "tests/support/AppletOnBoard.h"

using namespace kavo::test;

namespace {

using Range = FeatureRange<std::int64_t>;

class GenicamLimits : public OnBothPorts {
  protected:
    /// The limits in the description as it is now.
    Range now(const std::string& name) { return GenicamClient(applet.handle(), port()).integerRange(name); }
    bool isReadOnlyNow(const std::string& name) {
        return GenicamClient(applet.handle(), port()).isReadOnly(name);
    }

    GenicamClient atFirst{applet.handle(), port()};
    GenicamClient onOtherPort{applet.handle(), otherPort()};
};
FOR_BOTH_PORTS(GenicamLimits);

} // namespace

TEST_P(GenicamLimits, AWidthTakesRoomFromTheOffset) {
    EXPECT_EQ(atFirst.write("FG_WIDTH", std::int64_t{512}), "");
    EXPECT_EQ(now("FG_XOFFSET"), (Range{0, 3584}));
    EXPECT_EQ(now("FG_WIDTH"), (Range{16, 4096}));
}

TEST_P(GenicamLimits, AnOffsetTakesRoomFromTheWidth) {
    EXPECT_EQ(atFirst.write("FG_XOFFSET", std::int64_t{1600}), "");
    EXPECT_EQ(now("FG_WIDTH"), (Range{16, 2496}));
}

TEST_P(GenicamLimits, HeightAndItsOffsetShareTheOtherSide) {
    EXPECT_EQ(atFirst.write("FG_HEIGHT", std::int64_t{96}), "");
    EXPECT_EQ(atFirst.write("FG_YOFFSET", std::int64_t{100}), "");
    EXPECT_EQ(now("FG_YOFFSET"), (Range{0, 4000}));
    EXPECT_EQ(now("FG_HEIGHT"), (Range{2, 3996}));
}

TEST_P(GenicamLimits, DownscaleAndPhaseMoveEachOther) {
    EXPECT_EQ(atFirst.write("FG_TRIGGERIN_DOWNSCALE", std::int64_t{4294967295}), "");
    EXPECT_EQ(now("FG_TRIGGERIN_DOWNSCALE_PHASE"), (Range{0, 4294967294}));
    EXPECT_EQ(atFirst.write("FG_TRIGGERIN_DOWNSCALE_PHASE", std::int64_t{6}), "");
    EXPECT_EQ(now("FG_TRIGGERIN_DOWNSCALE"), (Range{7, 4294967295}));
}

TEST_P(GenicamLimits, DownscaleAndPhaseOfAGeneratorMoveEachOther) {
    EXPECT_EQ(atFirst.write("FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE", std::int64_t{5}), "");
    EXPECT_EQ(now("FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE_PHASE"), (Range{0, 4}));
    EXPECT_EQ(atFirst.write("FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE_PHASE", std::int64_t{2}), "");
    EXPECT_EQ(now("FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE"), (Range{3, 7}));
    EXPECT_EQ(now("FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE"), (Range{1, 7}));
}

TEST_P(GenicamLimits, AQueueHoldsManySoftwareTriggersAndNoQueueOne) {
    EXPECT_EQ(now("FG_SENDSOFTWARETRIGGER"), (Range{1, 1}));
    EXPECT_EQ(atFirst.write("FG_TRIGGERQUEUE_MODE", std::string("FG_ON")), "");
    EXPECT_EQ(now("FG_SENDSOFTWARETRIGGER"), (Range{1, 2040}));
    EXPECT_EQ(atFirst.write("FG_TRIGGERQUEUE_MODE", std::string("FG_OFF")), "");
    EXPECT_EQ(now("FG_SENDSOFTWARETRIGGER"), (Range{1, 1}));
}

TEST_P(GenicamLimits, SoftwareTriggersAreReadOnlyWhileThePortListensToItsInput) {
    EXPECT_FALSE(isReadOnlyNow("FG_SENDSOFTWARETRIGGER"));
    EXPECT_EQ(atFirst.write("FG_AREATRIGGERMODE", std::string("ATM_EXTERNAL")), "");
    EXPECT_TRUE(isReadOnlyNow("FG_SENDSOFTWARETRIGGER"));
    EXPECT_EQ(atFirst.write("FG_AREATRIGGERMODE", std::string("ATM_SOFTWARE")), "");
    EXPECT_FALSE(isReadOnlyNow("FG_SENDSOFTWARETRIGGER"));
}

TEST_P(GenicamLimits, OnlyTheControlsOfTheLookupTablesTypeAreWritable) {
    EXPECT_FALSE(isReadOnlyNow("FG_PROCESSING_GAIN"));
    EXPECT_TRUE(isReadOnlyNow("FG_LUT_CUSTOM_FILE"));
    EXPECT_EQ(atFirst.write("FG_LUT_TYPE", std::string("LUT_TYPE_CUSTOM")), "");
    EXPECT_TRUE(isReadOnlyNow("FG_PROCESSING_GAIN"));
    EXPECT_TRUE(isReadOnlyNow("FG_PROCESSING_INVERT"));
    EXPECT_FALSE(isReadOnlyNow("FG_LUT_CUSTOM_FILE"));
}

TEST_P(GenicamLimits, ADescriptionTakenBeforeKnowsTheFormerLimits) {
    EXPECT_EQ(atFirst.write("FG_WIDTH", std::int64_t{512}), "");
    EXPECT_EQ(atFirst.integerRange("FG_XOFFSET"), (Range{0, 3072}));
}

TEST_P(GenicamLimits, TheOtherPortKeepsItsOwn) {
    EXPECT_EQ(atFirst.write("FG_WIDTH", std::int64_t{512}), "");
    EXPECT_EQ(atFirst.write("FG_TRIGGERQUEUE_MODE", std::string("FG_ON")), "");
    const GenicamClient laterOnOtherPort(applet.handle(), otherPort());
    for (const CatalogueRow& row : describedFeatures("uint")) {
        EXPECT_EQ(laterOnOtherPort.integerRange(row.name), onOtherPort.integerRange(row.name)) << row.name;
    }
}
