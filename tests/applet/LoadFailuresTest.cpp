#include "tests/applet/ConfigurationOnBoard.h"

#include <set>

// Loads that are refused, end early, or meet a board that does not answer.

namespace {

/// A value that its parameter refuses. What is applied earlier and judged by it is refused with it.
struct RefusedValue {
    const char* key;
    const char* value;
    const char* dependent = nullptr;
};

const RefusedValue refusedValues[] = {
    {"FG_TIMEOUT", "1"},
    {"FG_GBE_CAMTYPE", "3"},
    {"FG_SWAP_CHANNELS", "2"},
    {"FG_CAMERA_WIDTH", "17"},
    {"FG_WIDTH", "17"},
    {"FG_HEIGHT", "1"},
    {"FG_XOFFSET", "8"},
    {"FG_YOFFSET", "4096", "FG_HEIGHT"},
    {"FG_FORMAT", "2"},
    {"FG_BITALIGNMENT", "2"},
    {"FG_AREATRIGGERMODE", "5"},
    {"FG_TRIGGERSTATE", "3"},
    {"FG_TRIGGER_FRAMESPERSECOND", "6250001", "FG_TRIGGERSTATE"},
    {"FG_TRIGGERIN_DEBOUNCE", "0.095"},
    {"FG_TRIGGERIN_SRC", "9"},
    {"FG_TRIGGERIN_POLARITY", "2"},
    {"FG_TRIGGERIN_BYPASS_SRC", "8"},
    {"FG_TRIGGER_MULTIPLY_PULSES", "65536"},
    {"FG_TRIGGERQUEUE_MODE", "2"},
    {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD", "1"},
    {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD", "2048"},
    {"FG_TRIGGER_PULSEFORMGEN0_DELAY", "-1"},
    {"FG_TRIGGER_PULSEFORMGEN1_DELAY", "34000010"},
    {"FG_TRIGGER_PULSEFORMGEN2_WIDTH", "0.5"},
    {"FG_TRIGGER_PULSEFORMGEN3_WIDTH", "68000001"},
    {"FG_CAMERA_ACTION_COMMAND_SOURCE", "12", "FG_TRIGGERSTATE"},
    {"FG_TRIGGEROUT_SELECT0", "-1", "FG_TRIGGERSTATE"},
    {"FG_TRIGGEROUT_SELECT1", "12", "FG_TRIGGERSTATE"},
    {"FG_TRIGGEROUT_SELECT2", "100", "FG_TRIGGERSTATE"},
    {"FG_TRIGGEROUT_SELECT3", "2147483647", "FG_TRIGGERSTATE"},
    {"FG_TRIGGEROUT_STATS_SOURCE", "4"},
    {"FG_TRIGGER_OUTPUT_EVENT_SELECT", "4"},
};

const std::set<std::string> appliedOnly{"FG_AREATRIGGERMODE", "FG_TRIGGERSTATE"};

/// Told from the design, so that a cached value does not show.
bool isTold(const std::string& key) {
    return key.find("_DEBOUNCE") == std::string::npos && key.find("_DELAY") == std::string::npos &&
           (key.find("PULSEFORMGEN") == std::string::npos || key.find("_WIDTH") == std::string::npos);
}

/// The fresh values, those of the keys before the given one replaced as far as caches tell them.
Section cachedUntil(const Section& file, const std::string& end) {
    Section section = freshSection();
    for (const auto& [key, value] : file) {
        if (key == end) {
            break;
        }
        if (isTold(key) && appliedOnly.count(key) == 0) {
            section = with(section, key, value);
        }
    }
    return section;
}

} // namespace

class LoadFailures : public ConfigurationOnBoard {
  protected:
    void expectFailed(const std::string& text) {
        EXPECT_EQ(load(text), -5000);
        EXPECT_EQ(applet.lastError(), -5000);
    }
};

TEST_F(LoadFailures, ARefusedValueIsLeftOutAndNothingElse) {
    for (const auto& [key, value, dependent] : refusedValues) {
        SCOPED_TRACE(std::string(key) + "=" + value);
        ASSERT_EQ(load(freshConfiguration()), 0);
        ASSERT_EQ(load(with(other(), key, value), with(other(), key, value)), 0);
        EXPECT_EQ(applet.lastError(), 0);
        Section expected = with(other(), key, valueIn(freshSection(), key));
        if (dependent != nullptr) {
            expected = with(expected, dependent, valueIn(freshSection(), dependent));
        }
        for (const int port : {0, 1}) {
            expectTold(expected, port);
            expectGettersToTellTheHardware(port);
        }
    }
}

TEST_F(LoadFailures, ARefusedPacketSizeOrLimitKeepsWhatDependsOnItConsistent) {
    for (const char* mtu : {"1496", "1498", "0", "-1", "40004"}) {
        ASSERT_EQ(load(freshConfiguration()), 0);
        ASSERT_EQ(load(with(other(), "FG_MTU_SIZE", mtu), other()), 0);
        EXPECT_EQ(applet.get(FG_MTU_SIZE, 0), 7204U);
        expectGettersToTellTheHardware(0);
        // The length that the links have belongs to the size and the type that are told.
        EXPECT_EQ(applet.board().designValue(AppletOnBoard::process(0, "LAG_MTUSizeCam1_LineLength")),
                  applet.get(FG_GBE_CAMTYPE, 0) == 0 ? 7168U : 3584U);
    }
    for (const auto& [key, value] : Section{{"FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE", "8"},
                                            {"FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE_PHASE", "7"},
                                            {"FG_TRIGGERIN_DOWNSCALE", "0"},
                                            {"FG_TRIGGERIN_DOWNSCALE_PHASE", "-1"}}) {
        SCOPED_TRACE(key + "=" + value);
        ASSERT_EQ(load(freshConfiguration()), 0);
        ASSERT_EQ(load(with(other(), key, value), other()), 0);
        EXPECT_EQ(valueIn(told(0), key), valueIn(freshSection(), key));
        expectEachValueFrom(freshSection(), other(), 0);
        expectGettersToTellTheHardware(0);
    }
}

TEST_F(LoadFailures, AbsurdNumbersAreRefusedLikeOthers) {
    const Section absurd{{"FG_WIDTH", "99999999999999999999"},
                         {"FG_HEIGHT", "-99999999999999999999"},
                         {"FG_XOFFSET", "-16"},
                         {"FG_TIMEOUT", "abc"},
                         {"FG_TRIGGER_FRAMESPERSECOND", "nan"},
                         {"FG_TRIGGERIN_DEBOUNCE", "1e999"},
                         {"FG_TRIGGER_PULSEFORMGEN0_WIDTH", "inf"},
                         {"FG_TRIGGER_PULSEFORMGEN1_DELAY", "-1e-300"},
                         {"FG_TRIGGERIN_SRC", "4294967296000"}};
    for (const auto& [key, value] : absurd) {
        SCOPED_TRACE(key + "=" + value);
        ASSERT_EQ(load(with(freshSection(), key, value), freshSection()), 0);
        expectTold(freshSection(), 0);
    }
}

TEST_F(LoadFailures, AMissingKeyOfTheLastPortEndsTheLoadThere) {
    for (const auto& [key, value] : freshSection()) {
        SCOPED_TRACE(key);
        ASSERT_EQ(load(freshConfiguration()), 0);
        // The clock of the inputs is one for both ports: the first one has set it.
        const Section file = other();
        expectFailed(configurationText(file, without(file, key)));
        expectTold(file, 0);
        const Section portB = with(told(1), "FG_TRIGGERIN_DEBOUNCE", "1.008");
        if (appliedOnly.count(key) == 0) {
            EXPECT_EQ(portB, cachedUntil(file, key));
        } else {
            expectEachValueFrom(freshSection(), file, 1);
            EXPECT_EQ(valueIn(portB, "FG_TRIGGER_OUTPUT_EVENT_SELECT"), "2");
            EXPECT_EQ(valueIn(portB, "FG_LUT_TYPE"), "0");
            EXPECT_EQ(valueIn(portB, key), valueIn(freshSection(), key));
        }
        EXPECT_EQ(load(file, file), 0);
        expectTold(file, 1);
    }
}

TEST_F(LoadFailures, AKeyMissingInBothPortsEndsTheLoadAtTheFirst) {
    for (const auto& [key, value] : freshSection()) {
        SCOPED_TRACE(key);
        ASSERT_EQ(load(freshConfiguration()), 0);
        AppletOnBoard::forgetCalls();
        expectFailed(configurationText(without(other(), key), without(other(), key)));
        expectTold(freshSection(), 1);
        if (appliedOnly.count(key) == 0) {
            EXPECT_TRUE(AppletOnBoard::writes().empty());
        }
        ASSERT_EQ(load(other(), other()), 0);
        expectTold(other(), 0);
    }
}

TEST_F(LoadFailures, AKeyMissingInTheFirstPortIsTakenFromTheNext) {
    for (const auto& [key, value] : freshSection()) {
        SCOPED_TRACE(key);
        ASSERT_EQ(load(freshConfiguration()), 0);
        EXPECT_EQ(load(without(other(), key), other()), 0);
        expectTold(other(), 0);
    }
}

TEST_F(LoadFailures, ANumberThatReadsErrorCountsAsMissing) {
    expectFailed(configurationText(with(other(), "FG_WIDTH", "Error"), other()));
    EXPECT_EQ(applet.get(FG_CAMERA_WIDTH, 0), 4096U);
    EXPECT_EQ(applet.get(FG_WIDTH, 0), 1024U);
}

TEST_F(LoadFailures, AFailedWriteLeavesEachParameterAsBeforeOrAsInTheFile) {
    const std::string settings = configurationText(other(), other());
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(load(settings), 0);
    const std::size_t writeCount = AppletOnBoard::writes().size();
    ASSERT_GT(writeCount, 150U);
    for (unsigned nth = 1; nth <= writeCount; ++nth) {
        SCOPED_TRACE("write " + std::to_string(nth));
        ASSERT_EQ(load(freshConfiguration()), 0);
        AppletOnBoard::failWrite(nth, runtimeFailure);
        EXPECT_EQ(load(settings), 0);
        EXPECT_EQ(applet.lastError(), 0);
        ASSERT_EQ(simulator::hostCalls().pendingFailures(), 0U);
        for (const int port : {0, 1}) {
            expectEachValueFrom(freshSection(), other(), port);
            expectGettersToTellTheHardware(port);
        }
        EXPECT_EQ(load(settings), 0);
        expectTold(other(), 0);
        expectTold(other(), 1);
    }
}

TEST_F(LoadFailures, AFailedReadLeavesEachParameterAsBeforeOrAsInTheFile) {
    const std::string settings = configurationText(other(), other());
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(load(settings), 0);
    const std::size_t readCount = AppletOnBoard::reads().size();
    ASSERT_GT(readCount, 40U);
    for (unsigned nth = 1; nth <= readCount; ++nth) {
        SCOPED_TRACE("read " + std::to_string(nth));
        ASSERT_EQ(load(freshConfiguration()), 0);
        AppletOnBoard::failRead(nth, runtimeFailure);
        EXPECT_EQ(load(settings), 0);
        ASSERT_EQ(simulator::hostCalls().pendingFailures(), 0U);
        for (const int port : {0, 1}) {
            expectEachValueFrom(freshSection(), other(), port);
            expectGettersToTellTheHardware(port);
        }
        EXPECT_EQ(load(settings), 0);
        expectTold(other(), 0);
        expectTold(other(), 1);
    }
}

TEST_F(LoadFailures, ABoardThatTakesNothingKeepsWhatItHas) {
    simulator::hostCalls().failFrom(simulator::CallKind::write, 1, runtimeFailure);
    EXPECT_EQ(load(other(), other()), 0);
    simulator::hostCalls().stopFailing();
    // In the queue's mode and the outputs nothing is written while the generator triggers and is stopped.
    for (const int port : {0, 1}) {
        expectEachValueFrom(freshSection(), other(), port);
        expectGettersToTellTheHardware(port);
        EXPECT_EQ(applet.get(FG_WIDTH, port), 1024U);
        EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port), 2U);
        EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port), 8.0);
    }
}
