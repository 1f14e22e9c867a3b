// Trigger mode, trigger state and the procedures behind them, beyond the table of changes.

#include "tests/applet/TriggerChange.h"

#include <cmath>
#include <limits>

namespace {

class TriggerModeTest : public OnBothPorts {
  protected:
    void expectRefused(int id, unsigned value) {
        const unsigned before = applet.get(id, port());
        markAccessFlags(applet, port());
        const auto flags = accessFlagsOf(applet, port());
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(id, value, port()), -6000) << value;
        EXPECT_EQ(applet.lastError(), -6000);
        EXPECT_EQ(recordedAccesses(), DesignAccesses());
        EXPECT_EQ(applet.get(id, port()), before);
        EXPECT_EQ(accessFlagsOf(applet, port()), flags);
    }

    template <class Procedure>
    static int thrownBy(Procedure procedure) {
        try {
            procedure();
        } catch (int code) {
            return code;
        }
        return 0;
    }

    /// Runs a procedure that only exists as a member of either port.
    template <class Member>
    void run(Member ofPort0, Member ofPort1) {
        (applet.wrapper().*(port() == 0 ? ofPort0 : ofPort1))();
    }
    template <class Member>
    void run(Member ofPort0, Member ofPort1, bool enable) {
        (applet.wrapper().*(port() == 0 ? ofPort0 : ofPort1))(enable);
    }
    void switchTo(unsigned oldMode, unsigned oldState, unsigned newMode, unsigned newState) {
        const auto member = port() == 0 ? &FgQxWrapperImpl::switchTriggerModeAndState_P0
                                        : &FgQxWrapperImpl::switchTriggerModeAndState_P1;
        (applet.wrapper().*member)(oldMode, oldState, newMode, newState);
    }
    void setMode(unsigned value, bool throwOnError) {
        const auto member = port() == 0 ? &FgQxWrapperImpl::set_sdk_param_FG_AREATRIGGERMODE_P0
                                        : &FgQxWrapperImpl::set_sdk_param_FG_AREATRIGGERMODE_P1;
        (applet.wrapper().*member)(value, throwOnError);
    }
    void setState(unsigned value, bool throwOnError) {
        const auto member = port() == 0 ? &FgQxWrapperImpl::set_sdk_param_FG_TRIGGERSTATE_P0
                                        : &FgQxWrapperImpl::set_sdk_param_FG_TRIGGERSTATE_P1;
        (applet.wrapper().*member)(value, throwOnError);
    }
    double& cachedRate() { return applet.wrapper().cache_FG_TRIGGER_FRAMESPERSECOND(port()); }
};
FOR_BOTH_PORTS(TriggerModeTest);

TEST_P(TriggerModeTest, StartsAsAStoppedGenerator) {
    EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, port()), generatorMode);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);
}

TEST_P(TriggerModeTest, RefusesAnUnknownMode) {
    for (const unsigned value : {0U, 5U, 6U, 0x80000001U, 0xFFFFFFFFU}) {
        expectRefused(FG_AREATRIGGERMODE, value);
    }
}

TEST_P(TriggerModeTest, RefusesAnUnknownState) {
    for (const unsigned value : {3U, 4U, 0x80000000U, 0xFFFFFFFFU}) {
        expectRefused(FG_TRIGGERSTATE, value);
    }
}

TEST_P(TriggerModeTest, OnlyPort1CanFollowTheOtherPort) {
    if (port() == 0) {
        expectRefused(FG_AREATRIGGERMODE, synchronizedMode);
    } else {
        EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, synchronizedMode, port()), 0);
        EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, port()), synchronizedMode);
    }
}

TEST_P(TriggerModeTest, DescribesItsModesAndStates) {
    const EnumReg& modes = applet.record(FG_AREATRIGGERMODE, port())->u.eReg;
    ASSERT_EQ(modes.nrOfElements, port() == 0 ? 3 : 4);
    EXPECT_EQ(applet.record(FG_TRIGGERSTATE, port())->u.eReg.nrOfElements, 3);
    EXPECT_STREQ(applet.record(FG_TRIGGERSTATE, port())->name, "Trigger State");
}

TEST_P(TriggerModeTest, ThrowsACodeOnlyWhenAsked) {
    EXPECT_EQ(thrownBy([this] { setMode(9, true); }), -6000);
    EXPECT_EQ(thrownBy([this] { setMode(9, false); }), 0);
    EXPECT_EQ(thrownBy([this] { setState(9, true); }), -6000);
    EXPECT_EQ(thrownBy([this] { setState(9, false); }), 0);
    EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, port()), generatorMode);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);
}

TEST_P(TriggerModeTest, DropsAFailedWriteInSilenceButKeepsTheOldPair) {
    AppletOnBoard::failWrite(2, -77);
    EXPECT_EQ(thrownBy([this] { setState(active, false); }), 0);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);
    AppletOnBoard::failWrite(2, -78);
    EXPECT_EQ(thrownBy([this] { setState(active, true); }), -78);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);

    setState(active, true);
    AppletOnBoard::failWrite(2, -79);
    EXPECT_EQ(thrownBy([this] { setMode(externalMode, false); }), 0);
    EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, port()), generatorMode);
}

TEST_P(TriggerModeTest, RefusesToReadIntoNothing) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_AREATRIGGERMODE_P0(nullptr); }), -2070);
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_AREATRIGGERMODE_P1(nullptr); }), -2070);
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_TRIGGERSTATE_P0(nullptr); }), -2070);
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_TRIGGERSTATE_P1(nullptr); }), -2070);
}

TEST_P(TriggerModeTest, NeverAsksTheHardwareForItsModeAndState) {
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, port()), generatorMode);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);
    EXPECT_EQ(recordedAccesses(), DesignAccesses());
}

TEST_P(TriggerModeTest, EachProcedureWritesItsRegisters) {
    using Wrapper = FgQxWrapperImpl;
    applyRecognizableSettings(applet, port());
    const auto expectSteps = [this](const char* steps, auto procedure) {
        AppletOnBoard::forgetCalls();
        procedure();
        EXPECT_EQ(recordedAccesses(), accessesOf(port(), steps)) << steps;
    };
    const auto onOff = [&](auto member0, auto member1, bool enable) {
        return [=] { run(member0, member1, enable); };
    };
    expectSteps("OUT0", onOff(&Wrapper::triggerOutputsEnable_P0, &Wrapper::triggerOutputsEnable_P1, false));
    expectSteps("OUT1", onOff(&Wrapper::triggerOutputsEnable_P0, &Wrapper::triggerOutputsEnable_P1, true));
    expectSteps("GEN0",
                onOff(&Wrapper::triggerGeneratorEnable_P0, &Wrapper::triggerGeneratorEnable_P1, false));
    expectSteps("GEN1",
                onOff(&Wrapper::triggerGeneratorEnable_P0, &Wrapper::triggerGeneratorEnable_P1, true));
    expectSteps("RQ", [this] { run(&Wrapper::triggerResetQueue_P0, &Wrapper::triggerResetQueue_P1); });
    expectSteps("CD",
                [this] { run(&Wrapper::triggerClearDownscale_P0, &Wrapper::triggerClearDownscale_P1); });
    expectSteps("CPF", [this] {
        run(&Wrapper::triggerClearPulseFormDownscales_P0, &Wrapper::triggerClearPulseFormDownscales_P1);
    });
}

TEST_P(TriggerModeTest, AProcedureThrowsTheCodeOfAFailedWrite) {
    using Wrapper = FgQxWrapperImpl;
    const auto expectThrown = [](int code, auto procedure) {
        AppletOnBoard::failWrite(1, code);
        EXPECT_EQ(thrownBy(procedure), code);
    };
    expectThrown(
        -31, [this] { run(&Wrapper::triggerOutputsEnable_P0, &Wrapper::triggerOutputsEnable_P1, false); });
    expectThrown(-32,
                 [this] { run(&Wrapper::triggerOutputsEnable_P0, &Wrapper::triggerOutputsEnable_P1, true); });
    expectThrown(-33, [this] { run(&Wrapper::triggerResetQueue_P0, &Wrapper::triggerResetQueue_P1); });
    expectThrown(-34, [this] { applet.wrapper().triggerSynchronEnable_P1(true); });
}

TEST_P(TriggerModeTest, OutputsStayOffInAnAsynchronousStop) {
    ASSERT_EQ(applet.set(FG_TRIGGERSTATE, asyncStop, port()), 0);
    AppletOnBoard::forgetCalls();
    run(&FgQxWrapperImpl::triggerOutputsEnable_P0, &FgQxWrapperImpl::triggerOutputsEnable_P1, true);
    EXPECT_EQ(recordedAccesses(), DesignAccesses());
}

TEST_P(TriggerModeTest, GivesAllAccessToItsOwnPortAlone) {
    markAccessFlags(applet, 0);
    markAccessFlags(applet, 1);
    const auto expected = accessFlagsAfterChangeTo(applet, port(), generatorMode);
    const auto other = accessFlagsOf(applet, otherPort());
    run(&FgQxWrapperImpl::setAllTriggerAccessModesToRWC_P0,
        &FgQxWrapperImpl::setAllTriggerAccessModesToRWC_P1);
    EXPECT_EQ(adjustableTriggerParameters().size(), 37U);
    EXPECT_EQ(accessFlagsOf(applet, port()), expected);
    EXPECT_EQ(accessFlagsOf(applet, otherPort()), other);
    EXPECT_EQ(applet.record(FG_TRIGGERIN_BYPASS_SRC, port())->accessFlags, markedAccess);
}

TEST_P(TriggerModeTest, ASwitchToAModeThatThePortLacksChangesNothing) {
    markAccessFlags(applet, port());
    const auto flags = accessFlagsOf(applet, port());
    AppletOnBoard::forgetCalls();
    switchTo(generatorMode, active, 7, active);
    if (port() == 0) {
        switchTo(generatorMode, active, synchronizedMode, active);
    }
    EXPECT_EQ(recordedAccesses(), DesignAccesses());
    EXPECT_EQ(accessFlagsOf(applet, port()), flags);
}

TEST_P(TriggerModeTest, TheLowestAndTheHighestRateCanBeStarted) {
    for (const double rate : {0.01455191522836685, 6250000.0}) {
        ASSERT_EQ(applet.set(FG_TRIGGERSTATE, syncStop, port()), 0);
        for (const int generator : {0, 1, 2, 3}) {
            applet.board().setDesignValue(
                AppletOnBoard::trigger(port(), formRegister(generator, "Width_Width")), 1);
        }
        ASSERT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, rate, port()), 0);
        EXPECT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), 0) << rate;
        EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), rate);
    }
}

TEST_P(TriggerModeTest, ARateOutOfRangeStopsTheStart) {
    const auto expectStartRefused = [this](unsigned mode, const DesignAccesses& reached) {
        bringTo(applet, port(), mode, syncStop);
        for (const double rate : {6250001.0, 0.0145, std::numeric_limits<double>::quiet_NaN()}) {
            cachedRate() = rate;
            AppletOnBoard::forgetCalls();
            EXPECT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), -6000) << rate;
            EXPECT_EQ(recordedAccesses(), reached) << rate;
            EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);
        }
        cachedRate() = 100.0;
    };
    applyRecognizableSettings(applet, port());
    expectStartRefused(generatorMode, accessesOf(port(), "CPF") +
                                          DesignAccesses{wrote(port(), "Generators_ClearQueuePulse_Mode", 1),
                                                         wrote(port(), "Generators_EnableQueue_Select", 0)});
    expectStartRefused(softwareMode, accessesOf(port(), "OUT0 CD") +
                                         DesignAccesses{wrote(port(), "Generators_ClearQueuePulse_Mode", 1),
                                                        wrote(port(), "Generators_EnableQueue_Select", 1)});
}

TEST_P(TriggerModeTest, APulseThatNoLongerFitsStopsTheStart) {
    applyRecognizableSettings(applet, port());
    const std::string width = AppletOnBoard::trigger(port(), formRegister(3, "Width_Width"));
    applet.board().setDesignValue(width, 625000);
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), -2079);
    DesignAccesses reached = accessesOf(port(), "CPF") +
                             DesignAccesses{wrote(port(), "Generators_ClearQueuePulse_Mode", 1),
                                            wrote(port(), "Generators_EnableQueue_Select", 0)} +
                             frameRateAccesses(port(), 0);
    reached.pop_back();
    EXPECT_EQ(recordedAccesses(), reached);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, port()), syncStop);

    applet.board().setDesignValue(width, 624999);
    EXPECT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), 0);
}

TEST_P(TriggerModeTest, AStartAppliesTheRateThroughItsPeriodInExtendedPrecision) {
    // In doubles alone the way there and back would end one tick short.
    constexpr double rate = 62500000.0 / 495000;
    constexpr unsigned minimumPeriod = 495000 - 9;
    const std::string period = AppletOnBoard::trigger(port(), "Generators_Generator_MinimumPeriod_Number");
    ASSERT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, rate, port()), 0);
    EXPECT_EQ(applet.board().designValue(period), minimumPeriod);
    applet.board().setDesignValue(period, 1);
    ASSERT_EQ(applet.set(FG_TRIGGERSTATE, active, port()), 0);
    EXPECT_EQ(applet.board().designValue(period), minimumPeriod);
    EXPECT_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, port()), rate);
}

TEST(TriggerEnableAccessor, WritesTheGivenValueAsItIsAsked) {
    AppletOnBoard applet;
    const std::string name = "PulseFormGenerators_Enable_Select";
    const auto member =
        &FgQxWrapperImpl::set_qx_param_Device1_Process2_Trigger_TriggerCam1_PulseFormGenerators_Enable_Select;
    const unsigned enabled = 1;
    AppletOnBoard::forgetCalls();
    (applet.wrapper().*member)(&enabled, 1, 2, true);
    EXPECT_EQ(recordedAccesses(), DesignAccesses{wrote(1, name, 1)});

    const auto codeOf = [&](const void* value, bool throwOnError) {
        try {
            (applet.wrapper().*member)(value, 1, 2, throwOnError);
        } catch (int code) {
            return code;
        }
        return 0;
    };
    EXPECT_EQ(codeOf(nullptr, true), -2070);
    EXPECT_EQ(codeOf(nullptr, false), 0);
    AppletOnBoard::failWrite(1, -99);
    EXPECT_EQ(codeOf(&enabled, true), -99);
    AppletOnBoard::failWrite(1, -99);
    EXPECT_EQ(codeOf(&enabled, false), 0);
}

} // namespace
