// The trigger inputs of a port: debounce, source, polarity, bypass and downscale.

#include "tests/applet/TriggerSettings.h"

#include <cmath>
#include <limits>

namespace {

constexpr const char* debounceRegister = "Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period";
constexpr auto endless = std::numeric_limits<double>::infinity();

/// A parameter whose value is written as it is.
struct PlainParameter {
    int id;
    const char* name;
    unsigned values; ///< it takes 0 to values - 1
};

class TriggerInputTest : public OnBothPorts {
  protected:
    UIntReg limits(int id) { return applet.record(id, port())->u.uiReg; }
    static DesignAccesses downscaleAccesses(unsigned value) {
        return {wrote(port(), "Downscale_Downscale_Downscale", value)};
    }
    static DesignAccesses phaseAccesses(unsigned value) {
        return {wrote(port(), "Downscale_Downscale_SelectedPulse", value + 1)};
    }
    void set(int id, unsigned value) { ASSERT_EQ(applet.set(id, value, port()), 0); }
};
FOR_BOTH_PORTS(TriggerInputTest);

const std::vector<PlainParameter> plainParameters = {
    {FG_TRIGGERIN_SRC, "InputSelect_Select_Select", 8},
    {FG_TRIGGERIN_POLARITY, "InputSelect_Polarity_Invert", 2},
    {FG_TRIGGERIN_BYPASS_SRC, "InputSelect_BypassSelect_Select", 8},
};

TEST_P(TriggerInputTest, StartsWithItsDefaults) {
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_DEBOUNCE, port()), 21 * 0.048);
    for (const PlainParameter& parameter : plainParameters) {
        EXPECT_EQ(applet.get(parameter.id, port()), 0U);
    }
    EXPECT_EQ(applet.get(FG_TRIGGERIN_DOWNSCALE, port()), 1U);
    EXPECT_EQ(applet.get(FG_TRIGGERIN_DOWNSCALE_PHASE, port()), 0U);
}

TEST_P(TriggerInputTest, DebounceIsWrittenInStepsOf48Nanoseconds) {
    const std::vector<std::pair<double, unsigned>> table = {{0.096, 2},  {0.1, 2},   {0.1199, 2},
                                                            {0.12, 3},   {0.144, 3}, {1.0, 21},
                                                            {1.008, 21}, {3.0, 63},  {3.024, 63}};
    for (const auto& [microseconds, steps] : table) {
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(FG_TRIGGERIN_DEBOUNCE, microseconds, port()), 0);
        EXPECT_EQ(recordedAccesses(), DesignAccesses{wroteShared(port(), debounceRegister, steps)});
        EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_DEBOUNCE, port()), steps * 0.048);
    }
}

TEST_P(TriggerInputTest, RefusesADebounceOutsideItsRange) {
    for (const double value : {0.0, 0.095, std::nextafter(0.096, 0.0), std::nextafter(3.024, endless), 3.1,
                               -1.0, endless, -endless, std::numeric_limits<double>::quiet_NaN()}) {
        expectRefused(applet, port(), FG_TRIGGERIN_DEBOUNCE, value, -6000);
    }
}

TEST_P(TriggerInputTest, TheLastPortSetsTheDebounceOfBoth) {
    ASSERT_EQ(applet.set(FG_TRIGGERIN_DEBOUNCE, 0.48, otherPort()), 0);
    ASSERT_EQ(applet.set(FG_TRIGGERIN_DEBOUNCE, 0.96, port()), 0);
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_DEBOUNCE, otherPort()), 0.96);
    EXPECT_EQ(applet.wrapper().cache_FG_TRIGGERIN_DEBOUNCE(otherPort()), 0.48);
}

TEST_P(TriggerInputTest, DebounceIsReadFromItsRegister) {
    applet.board().setDesignValue(debounceRegister, 40);
    AppletOnBoard::forgetCalls();
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_DEBOUNCE, port()), 1.92);
    EXPECT_EQ(recordedAccesses(), DesignAccesses{readShared(port(), debounceRegister)});
    AppletOnBoard::failRead(1, -55);
    EXPECT_EQ(applet.readCode(FG_TRIGGERIN_DEBOUNCE, port()), -55);
}

TEST_P(TriggerInputTest, PlainParametersAreWrittenAsTheyAre) {
    for (const PlainParameter& parameter : plainParameters) {
        for (unsigned value = parameter.values; value-- > 0;) {
            expectAccepted(applet, port(), parameter.id, value, {wrote(port(), parameter.name, value)});
            EXPECT_EQ(applet.get(parameter.id, port()), value);
        }
        for (const unsigned value : {parameter.values, parameter.values + 1, 0x80000000U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), parameter.id, value, -6000);
        }
    }
}

TEST_P(TriggerInputTest, DownscaleHasNoUpperEnd) {
    for (const unsigned value : {2U, 1000000U, 0xFFFFFFFFU, 1U}) {
        expectAccepted(applet, port(), FG_TRIGGERIN_DOWNSCALE, value, downscaleAccesses(value));
        EXPECT_EQ(applet.get(FG_TRIGGERIN_DOWNSCALE, port()), value);
        EXPECT_EQ(limits(FG_TRIGGERIN_DOWNSCALE_PHASE).to, value - 1);
    }
    expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE, 0U, -6000);
}

TEST_P(TriggerInputTest, DownscaleStaysAboveThePhase) {
    for (const unsigned phase : {1U, 41U, 0xFFFFFFFDU}) {
        set(FG_TRIGGERIN_DOWNSCALE, 0xFFFFFFFFU);
        set(FG_TRIGGERIN_DOWNSCALE_PHASE, phase);
        expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE, phase, -6000);
        expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE, 0U, -6000);
        expectAccepted(applet, port(), FG_TRIGGERIN_DOWNSCALE, phase + 1, downscaleAccesses(phase + 1));
    }
}

TEST_P(TriggerInputTest, PhaseStaysBelowTheDownscale) {
    expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, 1U, -6000);
    expectAccepted(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, 0U, phaseAccesses(0));
    for (const unsigned downscale : {10U, 0xFFFFFFFFU}) {
        set(FG_TRIGGERIN_DOWNSCALE, downscale);
        expectAccepted(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, downscale - 1,
                       phaseAccesses(downscale - 1));
        EXPECT_EQ(limits(FG_TRIGGERIN_DOWNSCALE).from, downscale);
        expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, downscale, -6000);
        expectRefused(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, 0xFFFFFFFFU, -6000);
    }
}

TEST_P(TriggerInputTest, DownscaleAndPhaseMoveEachOthersLimits) {
    TriggerSettings expected = settingsOf(applet);
    const std::string where = " of port " + std::to_string(port());
    const std::string downscale = std::to_string(FG_TRIGGERIN_DOWNSCALE) + where;
    const std::string phase = std::to_string(FG_TRIGGERIN_DOWNSCALE_PHASE) + where;
    set(FG_TRIGGERIN_DOWNSCALE, 300);
    expected[downscale] = 300;
    expected["largest " + phase] = 299;
    EXPECT_EQ(settingsOf(applet), expected);
    set(FG_TRIGGERIN_DOWNSCALE_PHASE, 120);
    expected[phase] = 120;
    expected["smallest " + downscale] = 121;
    EXPECT_EQ(settingsOf(applet), expected);
}

TEST_P(TriggerInputTest, UndoesAnyFailure) {
    for (const PlainParameter& parameter : plainParameters) {
        expectEachFailureUndone(applet, port(), parameter.id, 1U, {wrote(port(), parameter.name, 1)},
                                [&] { set(parameter.id, 0); });
    }
    expectEachFailureUndone(applet, port(), FG_TRIGGERIN_DEBOUNCE, 3.0,
                            {wroteShared(port(), debounceRegister, 63)},
                            [this] { ASSERT_EQ(applet.set(FG_TRIGGERIN_DEBOUNCE, 0.2, port()), 0); });
    expectEachFailureUndone(applet, port(), FG_TRIGGERIN_DOWNSCALE, 9U, downscaleAccesses(9),
                            [this] { set(FG_TRIGGERIN_DOWNSCALE, 8); });
    expectEachFailureUndone(applet, port(), FG_TRIGGERIN_DOWNSCALE_PHASE, 5U, phaseAccesses(5),
                            [this] { set(FG_TRIGGERIN_DOWNSCALE_PHASE, 2); });
}

TEST_P(TriggerInputTest, DigitalInputsAreReadAsTheyAre) {
    const std::string status = "Device1_Process2_Trigger_TriggerInput_InputStatus_Status";
    applet.board().setDesignValue(status, 0xA5);
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(applet.get(FG_DIGIO_INPUT, port()), 0xA5U);
    EXPECT_EQ(recordedAccesses(), DesignAccesses{readShared(port(), status)});
    AppletOnBoard::failRead(1, -56);
    EXPECT_EQ(applet.readCode(FG_DIGIO_INPUT, port()), -56);
    expectRefused(applet, port(), FG_DIGIO_INPUT, 1U, -12);
}

} // namespace
