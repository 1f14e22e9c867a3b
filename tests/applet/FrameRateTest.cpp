// The frame rate of the trigger generator.

#include "tests/applet/TriggerSettings.h"

#include <cmath>
#include <limits>

namespace {

constexpr double lowestRate = 0.01455191522836685;
constexpr double highestRate = 6250000.0;
constexpr auto endless = std::numeric_limits<double>::infinity();

/// A rate and the register value that makes it: the period in ticks, less 9.
struct RatePeriod {
    double rate;
    unsigned minimumPeriod;
};

class FrameRateTest : public OnBothPorts {
  protected:
    /// The eight reads that a refused rate makes.
    static DesignAccesses readsOnly() {
        DesignAccesses accesses = frameRateAccesses(port(), 0);
        accesses.pop_back();
        return accesses;
    }
};
FOR_BOTH_PORTS(FrameRateTest);

TEST_P(FrameRateTest, ReadsEveryPulseAndWritesThePeriodLessNine) {
    const std::vector<RatePeriod> table = {
        {8.0, 7812490}, {50.0, 1249991}, {100.0, 624991}, {31.25, 1999990}, {40.0, 1562491},
    };
    for (const RatePeriod& row : table) {
        expectAccepted(applet, port(), FG_TRIGGER_FRAMESPERSECOND, row.rate,
                       frameRateAccesses(port(), row.minimumPeriod));
        EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), row.rate);
    }
}

TEST_P(FrameRateTest, AcceptsBothEndsOfItsRange) {
    shortenAllPulses(applet, port());
    expectAccepted(applet, port(), FG_TRIGGER_FRAMESPERSECOND, highestRate, frameRateAccesses(port(), 1));
    EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), highestRate);
    expectAccepted(applet, port(), FG_TRIGGER_FRAMESPERSECOND, lowestRate,
                   frameRateAccesses(port(), 4294967287U));
    EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), lowestRate);
}

TEST_P(FrameRateTest, RefusesWhatLiesOutside) {
    shortenAllPulses(applet, port());
    for (const double rate :
         {0.0, -8.0, 0.0145, std::nextafter(lowestRate, 0.0), std::nextafter(highestRate, endless), 1e300,
          endless, -endless, std::numeric_limits<double>::quiet_NaN()}) {
        expectRefused(applet, port(), FG_TRIGGER_FRAMESPERSECOND, rate, -6000);
    }
}

TEST_P(FrameRateTest, IsReportedAsSet) {
    shortenAllPulses(applet, port());
    for (const double rate : {29.97, 59.94, 126.26262626262626, 0.1, 1.0 / 3.0, 3141592.6535, 0.02}) {
        ASSERT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, rate, port()), 0);
        EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), rate);
    }
}

TEST_P(FrameRateTest, RefusesAPeriodThatAnyPulseReaches) {
    constexpr double rate = 8.0;
    constexpr std::uint64_t periodTicks = 7812500;
    constexpr unsigned minimumPeriod = 7812490;
    for (const int generator : {0, 1, 2, 3}) {
        for (const char* time : {"Delay_Delay", "Width_Width"}) {
            SCOPED_TRACE(formRegister(generator, time));
            shortenAllPulses(applet, port());
            putRegister(applet, port(), formRegister(generator, time), periodTicks);
            expectRefused(applet, port(), FG_TRIGGER_FRAMESPERSECOND, rate, -2079, readsOnly());
            EXPECT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, std::nextafter(rate, 0.0), port()), 0);
            putRegister(applet, port(), formRegister(generator, time), periodTicks - 1);
            expectAccepted(applet, port(), FG_TRIGGER_FRAMESPERSECOND, rate,
                           frameRateAccesses(port(), minimumPeriod));
        }
    }
}

TEST_P(FrameRateTest, APulseMayLastAsManyPeriodsAsItsDownscale) {
    constexpr double rate = 8.0;
    for (const int generator : {0, 1, 2, 3}) {
        const auto downscale = static_cast<unsigned>(generator) + 3;
        shortenAllPulses(applet, port());
        ASSERT_EQ(applet.set(downscaleOf(generator), downscale, port()), 0);
        putRegister(applet, port(), formRegister(generator, "Width_Width"), 7812500U * downscale);
        expectRefused(applet, port(), FG_TRIGGER_FRAMESPERSECOND, rate, -2079, readsOnly());
        putRegister(applet, port(), formRegister(generator, "Width_Width"), 7812500U * downscale - 1);
        EXPECT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, rate, port()), 0);
    }
}

TEST_P(FrameRateTest, TheOtherPortsPulsesDoNotMatter) {
    putRegister(applet, otherPort(), formRegister(0, "Width_Width"), 4294967295U);
    EXPECT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, 100.0, port()), 0);
}

TEST_P(FrameRateTest, UndoesAnyFailure) {
    expectEachFailureUndone(applet, port(), FG_TRIGGER_FRAMESPERSECOND, 100.0,
                            frameRateAccesses(port(), 624991),
                            [this] { ASSERT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, 50.0, port()), 0); });
}

} // namespace
