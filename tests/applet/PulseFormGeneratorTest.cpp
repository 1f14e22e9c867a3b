// Delay, width, downscale and phase of the pulse form generators.

#include "tests/applet/TriggerSettings.h"

#include <cmath>
#include <limits>
#include <tuple>

namespace {

constexpr auto endless = std::numeric_limits<double>::infinity();
constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();

struct TimeTicks {
    double microseconds;
    unsigned ticks;
};

class PulseFormGeneratorTest : public testing::TestWithParam<std::tuple<int, int>> {
  protected:
    [[nodiscard]] static int port() { return std::get<0>(GetParam()); }
    [[nodiscard]] static int generator() { return std::get<1>(GetParam()); }
    [[nodiscard]] static std::string form(const char* name) { return formRegister(generator(), name); }

    /// A rate so low that every delay and width fits.
    void letEverythingFit() {
        shortenAllPulses(applet, port());
        ASSERT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, 0.01456, port()), 0);
    }

    static DesignAccesses delayAccesses(unsigned ticks) {
        return {read(port(), form("Width_Width")), wrote(port(), form("Delay_Delay"), ticks)};
    }
    static DesignAccesses widthAccesses(unsigned ticks) {
        return {read(port(), form("Delay_Delay")), wrote(port(), form("Width_Width"), ticks)};
    }
    static DesignAccesses downscaleAccesses(unsigned value) {
        return {read(port(), form("Delay_Delay")), read(port(), form("Width_Width")),
                wrote(port(), form("Downscale_Downscale"), value)};
    }
    static DesignAccesses phaseAccesses(unsigned value) {
        return {wrote(port(), form("Downscale_SelectedPulse"), value + 1)};
    }
    template <class Value>
    void set(int id, Value value) {
        ASSERT_EQ(applet.set(id, value, port()), 0);
    }
    UIntReg limits(int id) { return applet.record(id, port())->u.uiReg; }

    const int delay = delayOf(generator());
    const int width = widthOf(generator());
    const int downscale = downscaleOf(generator());
    const int phase = phaseOf(generator());
    AppletOnBoard applet;
};

INSTANTIATE_TEST_SUITE_P(All, PulseFormGeneratorTest,
                         testing::Combine(testing::Values(0, 1), testing::Values(0, 1, 2, 3)),
                         [](const auto& suiteInfo) {
                             return "Port" + std::to_string(std::get<0>(suiteInfo.param)) + "Generator" +
                                    std::to_string(std::get<1>(suiteInfo.param));
                         });

TEST_P(PulseFormGeneratorTest, StartsWithItsDefaults) {
    EXPECT_EQ(applet.get(downscale, port()), 1U);
    EXPECT_EQ(applet.get(phase, port()), 0U);
    EXPECT_EQ(applet.getReal(delay, port()), 0.0);
    EXPECT_EQ(applet.getReal(width, port()), generator() == 0 ? 4000.0 : 4.0);
}

TEST_P(PulseFormGeneratorTest, DelayIsWrittenInTicksHalvesUp) {
    letEverythingFit();
    const std::vector<TimeTicks> table = {{100.0, 6250},
                                          {0.0, 0},
                                          {-0.0, 0},
                                          {0.00799, 0},
                                          {0.008, 1},
                                          {0.016, 1},
                                          {0.02399, 1},
                                          {0.024, 2},
                                          {1.0, 63},
                                          {1.016, 64},
                                          {123.456, 7716},
                                          {4000.0, 250000},
                                          {34000000.0, 2125000000}};
    for (const TimeTicks& row : table) {
        expectAccepted(applet, port(), delay, row.microseconds, delayAccesses(row.ticks));
        EXPECT_DOUBLE_EQ(applet.getReal(delay, port()), row.ticks * 0.016);
    }
}

TEST_P(PulseFormGeneratorTest, DelayIsJudgedInSinglePrecision) {
    letEverythingFit();
    // These become 34000000 and zero.
    expectAccepted(applet, port(), delay, 34000001.0, delayAccesses(2125000063));
    expectAccepted(applet, port(), delay, 34000002.0, delayAccesses(2125000125));
    expectAccepted(applet, port(), delay, -1e-50, delayAccesses(0));
    for (const double value : {34000003.0, 34000004.0, -1e-9, -1.0, 1e300, endless, -endless, notANumber}) {
        expectRefused(applet, port(), delay, value, -6000);
    }
}

TEST_P(PulseFormGeneratorTest, WidthIsWrittenInTicksHalvesUp) {
    letEverythingFit();
    const std::vector<TimeTicks> table = {{1.0, 63},
                                          {1.00799, 63},
                                          {1.008, 63},
                                          {1.01599, 63},
                                          {1.016, 64},
                                          {100.0, 6250},
                                          {123.456, 7716},
                                          {34000001.0, 2125000063},
                                          {40000000.0, 2500000000U},
                                          {68000000.0, 4250000000U}};
    for (const TimeTicks& row : table) {
        expectAccepted(applet, port(), width, row.microseconds, widthAccesses(row.ticks));
        EXPECT_DOUBLE_EQ(applet.getReal(width, port()), row.ticks * 0.016);
    }
}

TEST_P(PulseFormGeneratorTest, RefusesAWidthOutsideItsRange) {
    letEverythingFit();
    for (const double value : {0.0, -1.0, 0.99, std::nextafter(1.0, 0.0), std::nextafter(68000000.0, endless),
                               1e300, endless, -endless, notANumber}) {
        expectRefused(applet, port(), width, value, -6000);
    }
}

TEST_P(PulseFormGeneratorTest, ReportsDelayAndWidthFromTheirRegisters) {
    const std::vector<TimeTicks> table = {
        {0.0, 0}, {0.016, 1}, {34359738.368, 2147483648U}, {68719476.72, 4294967295U}};
    for (const TimeTicks& row : table) {
        putRegister(applet, port(), form("Delay_Delay"), row.ticks);
        putRegister(applet, port(), form("Width_Width"), row.ticks);
        AppletOnBoard::forgetCalls();
        EXPECT_DOUBLE_EQ(applet.getReal(delay, port()), row.microseconds);
        EXPECT_DOUBLE_EQ(applet.getReal(width, port()), row.microseconds);
        const DesignAccesses expected = {read(port(), form("Delay_Delay")),
                                         read(port(), form("Width_Width"))};
        EXPECT_EQ(recordedAccesses(), expected);
    }
}

TEST_P(PulseFormGeneratorTest, PassesOnAFailedReading) {
    AppletOnBoard::failRead(1, -91);
    EXPECT_EQ(applet.readCode(delay, port()), -91);
    AppletOnBoard::failRead(1, -92);
    EXPECT_EQ(applet.readCode(width, port()), -92);
    EXPECT_EQ(applet.lastError(), -92);
}

TEST_P(PulseFormGeneratorTest, DownscaleTakesOneToSeven) {
    for (const unsigned value : {7U, 2U, 1U}) {
        expectAccepted(applet, port(), downscale, value, downscaleAccesses(value));
        EXPECT_EQ(applet.get(downscale, port()), value);
    }
    for (const unsigned value : {0U, 8U, 0x80000001U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), downscale, value, -6000);
    }
}

TEST_P(PulseFormGeneratorTest, DownscaleStaysAboveThePhase) {
    set(downscale, 7U);
    set(phase, 3U);
    expectRefused(applet, port(), downscale, 3U, -6000);
    expectAccepted(applet, port(), downscale, 4U, downscaleAccesses(4));
    set(phase, 0U);
    set(downscale, 7U);
    set(phase, 6U);
    expectRefused(applet, port(), downscale, 6U, -6000);
    expectAccepted(applet, port(), downscale, 7U, downscaleAccesses(7));
}

TEST_P(PulseFormGeneratorTest, PhaseStaysBelowTheDownscale) {
    expectRefused(applet, port(), phase, 1U, -6000);
    set(downscale, 5U);
    expectAccepted(applet, port(), phase, 4U, phaseAccesses(4));
    EXPECT_EQ(applet.get(phase, port()), 4U);
    for (const unsigned value : {5U, 6U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), phase, value, -6000);
    }
    expectAccepted(applet, port(), phase, 0U, phaseAccesses(0));
}

TEST_P(PulseFormGeneratorTest, DownscaleAndPhaseMoveEachOthersLimits) {
    EXPECT_EQ(limits(downscale).from, 1U);
    EXPECT_EQ(limits(phase).to, 0U);
    TriggerSettings expected = settingsOf(applet);
    const std::string where = " of port " + std::to_string(port());
    set(downscale, 6U);
    expected[std::to_string(downscale) + where] = 6;
    expected["largest " + std::to_string(phase) + where] = 5;
    EXPECT_EQ(settingsOf(applet), expected);
    set(phase, 2U);
    expected[std::to_string(phase) + where] = 2;
    expected["smallest " + std::to_string(downscale) + where] = 3;
    EXPECT_EQ(settingsOf(applet), expected);
    EXPECT_EQ(limits(downscale).to, 7U);
    EXPECT_EQ(limits(phase).from, 0U);
}

TEST_P(PulseFormGeneratorTest, UndoesAnyFailure) {
    expectEachFailureUndone(applet, port(), delay, 100.0, delayAccesses(6250), [this] { set(delay, 50.0); });
    expectEachFailureUndone(applet, port(), width, 100.0, widthAccesses(6250), [this] { set(width, 50.0); });
    expectEachFailureUndone(applet, port(), downscale, 6U, downscaleAccesses(6),
                            [this] { set(downscale, 5U); });
    expectEachFailureUndone(applet, port(), phase, 3U, phaseAccesses(3), [this] { set(phase, 1U); });
}

// ---- fit into the period

/// Eight pulses a second: 125000 us, 7812500 ticks.
constexpr double period = 125000.0;
constexpr unsigned periodTicks = 7812500;

TEST_P(PulseFormGeneratorTest, DelayStaysBelowThePeriod) {
    const DesignAccesses refused = {read(port(), form("Width_Width"))};
    expectRefused(applet, port(), delay, period, -2079, refused);
    expectRefused(applet, port(), delay, 34000000.0, -2079, refused);
    expectAccepted(applet, port(), delay, std::nextafter(period, 0.0), delayAccesses(periodTicks));
    expectAccepted(applet, port(), delay, 124999.984, delayAccesses(periodTicks - 1));
}

TEST_P(PulseFormGeneratorTest, DelayIsRefusedWhenTheWidthReachesThePeriod) {
    putRegister(applet, port(), form("Width_Width"), periodTicks);
    expectRefused(applet, port(), delay, 0.0, -2079, {read(port(), form("Width_Width"))});
    putRegister(applet, port(), form("Width_Width"), periodTicks - 1);
    expectAccepted(applet, port(), delay, 0.0, delayAccesses(0));
}

TEST_P(PulseFormGeneratorTest, WidthStaysBelowThePeriod) {
    const DesignAccesses refused = {read(port(), form("Delay_Delay"))};
    expectRefused(applet, port(), width, period, -2079, refused);
    expectRefused(applet, port(), width, 68000000.0, -2079, refused);
    expectAccepted(applet, port(), width, std::nextafter(period, 0.0), widthAccesses(periodTicks));
}

TEST_P(PulseFormGeneratorTest, WidthIsRefusedWhenTheDelayReachesThePeriod) {
    putRegister(applet, port(), form("Delay_Delay"), periodTicks);
    expectRefused(applet, port(), width, 1.0, -2079, {read(port(), form("Delay_Delay"))});
    putRegister(applet, port(), form("Delay_Delay"), periodTicks - 1);
    expectAccepted(applet, port(), width, 1.0, widthAccesses(63));
}

TEST_P(PulseFormGeneratorTest, ADownscaleGivesDelayAndWidthAsManyPeriods) {
    for (const unsigned factor : {2U, 3U, 7U}) {
        set(downscale, factor);
        expectRefused(applet, port(), delay, period * factor, -2079, {read(port(), form("Width_Width"))});
        expectRefused(applet, port(), width, period * factor, -2079, {read(port(), form("Delay_Delay"))});
        expectAccepted(applet, port(), delay, period * factor - 1.0,
                       delayAccesses(periodTicks * factor - 62));
        expectAccepted(applet, port(), width, period * factor - 1.0,
                       widthAccesses(periodTicks * factor - 62));
        set(delay, 0.0);
        set(width, 1.0);
    }
}

TEST_P(PulseFormGeneratorTest, DownscaleIsRefusedWhenAPulseWouldReachThePeriod) {
    const DesignAccesses refused = {read(port(), form("Delay_Delay")), read(port(), form("Width_Width"))};
    for (const char* time : {"Delay_Delay", "Width_Width"}) {
        SCOPED_TRACE(time);
        putRegister(applet, port(), form(time), 1);
        set(downscale, 5U);
        putRegister(applet, port(), form(time), 2 * periodTicks);
        expectRefused(applet, port(), downscale, 1U, -2078, refused);
        expectRefused(applet, port(), downscale, 2U, -2078, refused);
        expectAccepted(applet, port(), downscale, 3U, downscaleAccesses(3));
        putRegister(applet, port(), form(time), 2 * periodTicks - 1);
        expectAccepted(applet, port(), downscale, 2U, downscaleAccesses(2));
        putRegister(applet, port(), form(time), 1);
    }
}

TEST_P(PulseFormGeneratorTest, OnlyItsOwnPulseCounts) {
    for (const int other : {0, 1, 2, 3}) {
        if (other != generator()) {
            putRegister(applet, port(), formRegister(other, "Delay_Delay"), 4294967295U);
            putRegister(applet, port(), formRegister(other, "Width_Width"), 4294967295U);
        }
    }
    EXPECT_EQ(applet.set(delay, 5.0, port()), 0);
    EXPECT_EQ(applet.set(width, 5.0, port()), 0);
    EXPECT_EQ(applet.set(downscale, 2U, port()), 0);
}

} // namespace
