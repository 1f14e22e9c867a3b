// Counters, measured frequencies, monitoring flags, and what clears them.

#include "tests/applet/TriggerChange.h"
#include "tests/applet/TriggerSettings.h"

#include <cmath>

namespace {

const std::string monitoring = "Device1_Process2_Trigger_Monitoring_";
const std::string queueStatus = monitoring + "ReadQueueStatus_Status";

std::string camera(int port) { return "Cam" + std::to_string(port); }

class TriggerStatisticsTest : public OnBothPorts {
  protected:
    void pinFlags(unsigned flags) { applet.board().setDesignValue(queueStatus, flags); }

    /// Reads a parameter that asks one register of the board.
    void expectReadsOne(int id, const DesignAccess& access) {
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.readCode(id, port()), 0) << id;
        EXPECT_EQ(recordedAccesses(), DesignAccesses{access}) << id;
        AppletOnBoard::failRead(1, -61);
        EXPECT_EQ(applet.readCode(id, port()), -61) << id;
        EXPECT_EQ(applet.lastError(), -61);
        expectRefused(applet, port(), id, 1U, -12);
    }
};
FOR_BOTH_PORTS(TriggerStatisticsTest);

TEST_P(TriggerStatisticsTest, CountersAreReadAsTheyAre) {
    const std::vector<std::pair<int, const char*>> counters = {
        {FG_TRIGGERIN_STATS_PULSECOUNT, "InputStatistics_ReadPulses_Status"},
        {FG_TRIGGEROUT_STATS_PULSECOUNT, "OutputStatistics_ReadPulses_Status"},
        {FG_CAMERA_ACTION_COMMAND_PENDING_COUNT, "TriggerCamera_ActionCommand_PendingActionCmdCount"}};
    unsigned value = 51234;
    for (const auto& [id, name] : counters) {
        putRegister(applet, port(), name, ++value);
        EXPECT_EQ(applet.get(id, port()), value);
        expectReadsOne(id, read(port(), name));
    }
}

TEST_P(TriggerStatisticsTest, FrequenciesComeFromPeriods) {
    // The longest period is the lowest frequency.
    const std::vector<std::pair<int, const char*>> frequencies = {
        {FG_TRIGGERIN_STATS_FREQUENCY, "InputStatistics_ReadPeriod_Status"},
        {FG_TRIGGERIN_STATS_MINFREQUENCY, "InputStatistics_ReadMax_Status"},
        {FG_TRIGGERIN_STATS_MAXFREQUENCY, "InputStatistics_ReadMin_Status"}};
    for (const auto& [id, name] : frequencies) {
        for (const auto& [period, frequency] :
             {std::pair{1U, 62500000.0}, {62500U, 1000.0}, {625000U, 100.0}, {0U, HUGE_VAL}}) {
            putRegister(applet, port(), name, period);
            EXPECT_DOUBLE_EQ(applet.getReal(id, port()), frequency) << name << ' ' << period;
        }
        expectReadsOne(id, read(port(), name));
    }
}

TEST_P(TriggerStatisticsTest, APeriodIsUnsigned) {
    putRegister(applet, port(), "InputStatistics_ReadPeriod_Status", 0xFFFFFFFFU);
    const double period =
        static_cast<double>(registerValue(applet, port(), "InputStatistics_ReadPeriod_Status"));
    EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGERIN_STATS_FREQUENCY, port()), 62500000.0 / period);
}

TEST_P(TriggerStatisticsTest, AClearIsOneRequestAndTakesOnlyApply) {
    const std::vector<std::pair<int, std::string>> clears = {
        {FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR,
         AppletOnBoard::trigger(port(), "InputStatistics_ClearPulses_Mode")},
        {FG_TRIGGEROUT_STATS_PULSECOUNT_CLEAR,
         AppletOnBoard::trigger(port(), "OutputStatistics_ClearPulses_Mode")},
        {FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CLEAR, monitoring + "ClearOverride" + camera(port()) + "_Mode"},
        {FG_MISSING_CAMERA_FRAME_RESPONSE_CLEAR,
         monitoring + "ClearMissingFrame_" + camera(port()) + "_Mode"}};
    for (const auto& [id, name] : clears) {
        EXPECT_EQ(applet.get(id, port()), 1U);
        const DesignAccesses request = {wroteShared(port(), name, 2)};
        expectAccepted(applet, port(), id, 1U, request);
        for (const unsigned value : {0U, 2U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), id, value, -6000);
        }
        expectEachFailureUndone(applet, port(), id, 1U, request, [] {});
        EXPECT_EQ(applet.get(id, port()), 1U);
    }
}

TEST_P(TriggerStatisticsTest, ClearingTheFrequenciesTogglesALevel) {
    const std::string level = "InputStatistics_ClearMinMax_Value";
    const auto toggled = [&](unsigned value) {
        return DesignAccesses{read(port(), level), wrote(port(), level, value)};
    };
    putRegister(applet, port(), level, 0);
    expectAccepted(applet, port(), FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U, toggled(1));
    expectAccepted(applet, port(), FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U, toggled(0));
    expectAccepted(applet, port(), FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U, toggled(1));
    for (const unsigned value : {0U, 2U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, value, -6000);
    }
    expectEachFailureUndone(applet, port(), FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U, toggled(1),
                            [&] { putRegister(applet, port(), level, 0); });
    EXPECT_EQ(applet.get(FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, port()), 1U);
}

TEST_P(TriggerStatisticsTest, ExceededPeriodsAreReportedWhereAGeneratorSetsThePace) {
    const unsigned flag = port() == 0 ? 1 : 8;
    for (const unsigned mode : modesOf(port())) {
        bringTo(applet, port(), mode, active);
        const bool isReported = mode == generatorMode || mode == synchronizedMode;
        pinFlags(flag);
        EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), isReported ? 1U : 0U) << mode;
        pinFlags(63U - flag);
        EXPECT_EQ(applet.get(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, port()), 0U) << mode;
        expectReadsOne(FG_TRIGGER_EXCEEDED_PERIOD_LIMITS, readShared(port(), queueStatus));
    }
}

TEST_P(TriggerStatisticsTest, MissingFramesAreReportedInEveryMode) {
    const unsigned flag = port() == 0 ? 4 : 32;
    for (const unsigned mode : modesOf(port())) {
        bringTo(applet, port(), mode, active);
        pinFlags(flag);
        EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 1U) << mode;
        pinFlags(63U - flag);
        EXPECT_EQ(applet.get(FG_MISSING_CAMERA_FRAME_RESPONSE, port()), 0U) << mode;
        expectReadsOne(FG_MISSING_CAMERA_FRAME_RESPONSE, readShared(port(), queueStatus));
    }
}

} // namespace
