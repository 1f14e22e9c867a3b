#include "tests/applet/ConfigurationOnBoard.h"

#include <numeric>

// The state that creation puts both ports into.

class DefaultValues : public ConfigurationOnBoard {
  protected:
    void setDefaults() { applet.wrapper().setDefaultValues(); }
    /// Settings from which one walk reaches the defaults: a downscale cannot fall below its phase.
    Section withoutPhases() {
        Section section = other();
        for (auto& [key, value] : section) {
            if (key.find("_PHASE") != std::string::npos) {
                value = "0";
            }
        }
        return section;
    }
    /// The defaults leave the settings of the table alone.
    Section defaultsWithTableOf(const Section& before) {
        Section section = freshSection();
        for (const char* key : {"FG_LUT_CUSTOM_FILE", "FG_PROCESSING_OFFSET", "FG_PROCESSING_GAIN",
                                "FG_PROCESSING_GAMMA", "FG_PROCESSING_INVERT"}) {
            section = with(section, key, valueIn(before, key));
        }
        return section;
    }
};

TEST_F(DefaultValues, AreToldByAMasterAndByASlave) {
    for (const int port : {0, 1}) {
        expectTold(freshSection(), port);
        for (const int id : {FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR, FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR,
                             FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR, FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR,
                             FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR, FG_SENDSOFTWARETRIGGER}) {
            EXPECT_EQ(applet.get(id, port), 1U) << id;
        }
        EXPECT_EQ(applet.getText(FG_LUT_SAVE_FILE, port), "");
    }
    AppletOnBoard slave(AppletOnBoard::Role::slave);
    ASSERT_EQ(slave.creationError(), 0);
    for (const int port : {0, 1}) {
        for (const auto& [key, value] : told(slave, port)) {
            // Times are the design's, which a slave leaves alone.
            const bool isTime =
                key.find("_DEBOUNCE") != std::string::npos || key.find("_DELAY") != std::string::npos ||
                (key.find("PULSEFORMGEN") != std::string::npos && key.find("_WIDTH") != std::string::npos);
            EXPECT_TRUE(isTime || value == valueIn(freshSection(), key)) << key << " is " << value;
        }
    }
}

TEST_F(DefaultValues, TheTableIsTheIdentity) {
    std::vector<std::uint32_t> identity(4096);
    std::iota(identity.begin(), identity.end(), 0U);
    for (const int port : {0, 1}) {
        const std::string content = AppletOnBoard::process(port, "LookupTable_LookupTable_LUTcontent");
        EXPECT_TRUE(applet.board().designField(content) == identity);
        const auto& table = applet.wrapper().cache_FG_LUT_VALUE(port);
        EXPECT_TRUE(std::equal(table.begin(), table.end(), identity.begin(), identity.end()));
    }
}

TEST_F(DefaultValues, AMasterWritesThemAndASlaveDoesNot) {
    const std::string width = AppletOnBoard::process(1, "Buffer_0_DRAM_A_1_XLength");
    EXPECT_EQ(applet.board().designValue(width), 1024U);
    expectGettersToTellTheHardware(0);
    expectGettersToTellTheHardware(1);
    AppletOnBoard slave(AppletOnBoard::Role::slave);
    EXPECT_NE(slave.board().designValue(width), 1024U);
}

TEST_F(DefaultValues, AreWrittenInTheirOrder) {
    AppletOnBoard::forgetCalls();
    setDefaults();
    std::vector<RecordedWrite> expected = writesOfFreshValues(0, true);
    const std::vector<RecordedWrite> portB = writesOfFreshValues(1, true);
    expected.insert(expected.end(), portB.begin(), portB.end());
    EXPECT_EQ(AppletOnBoard::writes(), expected);
}

TEST_F(DefaultValues, BringBackEverythingButTheTablesOwnSettings) {
    ASSERT_EQ(load(withoutPhases(), withoutPhases()), 0);
    expectTold(withoutPhases(), 0);
    setDefaults();
    for (const int port : {0, 1}) {
        expectTold(defaultsWithTableOf(other()), port);
        expectGettersToTellTheHardware(port);
    }
}

TEST_F(DefaultValues, AFailedWriteLeavesOnlyItsParameterAsItWas) {
    const std::string settings = configurationText(withoutPhases(), withoutPhases());
    const Section defaults = defaultsWithTableOf(other());
    ASSERT_EQ(load(settings), 0);
    AppletOnBoard::forgetCalls();
    setDefaults();
    const std::size_t writeCount = AppletOnBoard::writes().size();
    ASSERT_GT(writeCount, 120U);
    for (unsigned nth = 1; nth <= writeCount; ++nth) {
        SCOPED_TRACE("write " + std::to_string(nth));
        ASSERT_EQ(load(settings), 0);
        AppletOnBoard::failWrite(nth, runtimeFailure);
        setDefaults();
        ASSERT_EQ(simulator::hostCalls().pendingFailures(), 0U);
        unsigned kept = 0;
        for (const int port : {0, 1}) {
            expectEachValueFrom(withoutPhases(), defaults, port);
            expectGettersToTellTheHardware(port);
            for (const auto& [key, value] : told(port)) {
                kept += value != valueIn(defaults, key) ? 1 : 0;
            }
        }
        EXPECT_LE(kept, 1U);
        setDefaults();
        expectTold(defaults, 0);
        expectTold(defaults, 1);
    }
}

TEST_F(DefaultValues, AFailedReadLeavesOnlyItsParameterAsItWas) {
    AppletOnBoard::forgetCalls();
    setDefaults();
    const std::size_t readCount = AppletOnBoard::reads().size();
    ASSERT_GT(readCount, 40U);
    for (unsigned nth = 1; nth <= readCount; ++nth) {
        SCOPED_TRACE("read " + std::to_string(nth));
        AppletOnBoard::failRead(nth, runtimeFailure);
        setDefaults();
        EXPECT_EQ(simulator::hostCalls().pendingFailures(), 0U);
        expectTold(freshSection(), 0);
        expectTold(freshSection(), 1);
    }
}
