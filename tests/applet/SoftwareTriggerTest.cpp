// The software trigger: when it is refused, what it sends, and whether it is busy.

#include "tests/applet/TriggerChange.h"
#include "tests/applet/TriggerSettings.h"

#include <ctime>

namespace {

/// Every pause that the applet asked for, in place of the C library's own pausing.
std::vector<timespec>& pauses() {
    static std::vector<timespec> asked;
    return asked;
}

} // namespace

extern "C" int nanosleep(const timespec* duration, timespec* /*remaining*/) {
    pauses().push_back(*duration);
    return 0;
}

namespace {

constexpr unsigned queueOff = 0;
constexpr unsigned queueOn = 1;
constexpr const char* maximumReached = "Generators_Generator_MaximumReached_Status";
constexpr const char* queueValue = "Generators_QueueValue_Status";
constexpr const char* queueStatus = "Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status";

class SoftwareTriggerTest : public OnBothPorts {
  protected:
    SoftwareTriggerTest() { bringTo(applet, port(), softwareMode, active); }

    void pinGenerator(unsigned maximumReachedStatus, unsigned queued) {
        putRegister(applet, port(), maximumReached, maximumReachedStatus);
        putRegister(applet, port(), queueValue, queued);
    }
    void pinFlags(unsigned flags) { applet.board().setDesignValue(queueStatus, flags); }
    void setQueue(unsigned mode) { ASSERT_EQ(applet.set(FG_TRIGGERQUEUE_MODE, mode, port()), 0); }

    static DesignAccesses busyReads() { return {read(port(), maximumReached), read(port(), queueValue)}; }
    static DesignAccesses pulses(unsigned count) {
        return DesignAccesses(count, wrote(port(), "TriggerMode_SoftwareTrigger_Mode", 2));
    }
    unsigned valueAfterReads(int id, const DesignAccesses& reads) {
        AppletOnBoard::forgetCalls();
        const unsigned value = applet.get(id, port());
        EXPECT_EQ(recordedAccesses(), reads) << "parameter " << id;
        return value;
    }
};
FOR_BOTH_PORTS(SoftwareTriggerTest);

TEST_P(SoftwareTriggerTest, ASinglePulseWithoutQueueAsksWhetherTheGeneratorIsBusy) {
    pinGenerator(1, 0);
    pauses().clear();
    expectAccepted(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, busyReads() + pulses(1));
    EXPECT_EQ(pauses().size(), 1U);
}

TEST_P(SoftwareTriggerTest, PulsesIntoTheQueueAreSentWithoutAsking) {
    setQueue(queueOn);
    pinGenerator(0, 7);
    for (const unsigned count : {1U, 3U, 2040U}) {
        pauses().clear();
        expectAccepted(applet, port(), FG_SENDSOFTWARETRIGGER, count, pulses(count));
        EXPECT_EQ(applet.get(FG_SENDSOFTWARETRIGGER, port()), count);
        ASSERT_EQ(pauses().size(), count);
        for (const timespec& pause : pauses()) {
            ASSERT_EQ(pause.tv_sec, 0);
            ASSERT_EQ(pause.tv_nsec, 160);
        }
    }
}

TEST_P(SoftwareTriggerTest, RefusesACountThatTheQueueDoesNotTake) {
    pinGenerator(1, 0);
    for (const unsigned count : {0U, 2U, 2040U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, count, -6000);
    }
    setQueue(queueOn);
    for (const unsigned count : {0U, 2041U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, count, -6000);
    }
}

TEST_P(SoftwareTriggerTest, RefusesInTheOrderCountModeStateBusy) {
    pinGenerator(0, 1);
    expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, -60, busyReads());
    expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 2U, -6000);
    for (const unsigned stop : {syncStop, asyncStop}) {
        bringTo(applet, port(), softwareMode, stop);
        expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, -2141);
        expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 2U, -6000);
    }
    for (const unsigned mode : modesOf(port())) {
        if (mode == softwareMode) {
            continue;
        }
        for (const unsigned state : {active, syncStop, asyncStop}) {
            bringTo(applet, port(), mode, state);
            expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, -2140);
            expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 0U, -6000);
        }
    }
}

TEST_P(SoftwareTriggerTest, EitherStatusMeansBusy) {
    for (const auto& [reached, queued] : {std::pair{0U, 0U}, {1U, 1U}, {0U, 5U}, {1U, 2040U}}) {
        pinGenerator(reached, queued);
        expectRefused(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, -60, busyReads());
    }
    pinGenerator(1, 0);
    EXPECT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 1U, port()), 0);
}

TEST_P(SoftwareTriggerTest, PassesOnAFailureAndLeavesThePulsesSent) {
    pinGenerator(1, 0);
    expectEachFailureUndone(applet, port(), FG_SENDSOFTWARETRIGGER, 1U, busyReads() + pulses(1), [] {});
    setQueue(queueOn);
    expectEachFailureUndone(applet, port(), FG_SENDSOFTWARETRIGGER, 5U, pulses(5),
                            [this] { ASSERT_EQ(applet.set(FG_SENDSOFTWARETRIGGER, 2U, port()), 0); });
}

TEST_P(SoftwareTriggerTest, ItsDescriptionFollowsTheQueue) {
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, port())->u.uiReg.to, 1U);
    setQueue(queueOn);
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, port())->u.uiReg.to, 2040U);
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, port())->u.uiReg.from, 1U);
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, otherPort())->u.uiReg.to, 1U);
    setQueue(queueOff);
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, port())->u.uiReg.to, 1U);
}

TEST_P(SoftwareTriggerTest, BusyFlagTellsBothStatuses) {
    for (const auto& [reached, queued, busy] :
         {std::tuple{1U, 0U, 0U}, {0U, 0U, 1U}, {1U, 3U, 1U}, {0U, 3U, 1U}}) {
        pinGenerator(reached, queued);
        EXPECT_EQ(valueAfterReads(FG_SOFTWARETRIGGER_IS_BUSY, busyReads()), busy) << reached << queued;
    }
    pinGenerator(0, 3);
    for (const unsigned mode : modesOf(port())) {
        if (mode != softwareMode) {
            bringTo(applet, port(), mode, active);
            EXPECT_EQ(valueAfterReads(FG_SOFTWARETRIGGER_IS_BUSY, {}), 0U);
        }
    }
}

TEST_P(SoftwareTriggerTest, FillLevelTellsFullQueuedAndInProgress) {
    const std::vector<DesignAccess> full = {readShared(port(), queueStatus)};
    const DesignAccesses counted = full + DesignAccesses{read(port(), queueValue)};
    const DesignAccesses all = counted + DesignAccesses{read(port(), maximumReached)};
    const unsigned fullBit = port() == 0 ? 2 : 16;
    for (const unsigned mode : {softwareMode, externalMode}) {
        for (const unsigned state : {active, syncStop}) {
            bringTo(applet, port(), mode, state);
            pinFlags(fullBit);
            pinGenerator(1, 12);
            EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, full), 2040U);
            pinFlags(63U - fullBit);
            EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, counted), 12U);
            pinGenerator(1, 0);
            EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, all), 0U);
            pinGenerator(0, 0);
            EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, all), 1U);
        }
    }
}

TEST_P(SoftwareTriggerTest, FillLevelIsNothingWithoutAQueue) {
    pinFlags(63);
    pinGenerator(0, 12);
    for (const unsigned mode : modesOf(port())) {
        bringTo(applet, port(), mode, asyncStop);
        EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, {}), 0U);
    }
    for (const unsigned mode : {generatorMode, synchronizedMode}) {
        if (port() == 1 || mode == generatorMode) {
            bringTo(applet, port(), mode, active);
            EXPECT_EQ(valueAfterReads(FG_TRIGGERQUEUE_FILLLEVEL, {}), 0U);
        }
    }
}

TEST_P(SoftwareTriggerTest, SoftwareFillLevelIsTheQueuesInSoftwareModeAlone) {
    const DesignAccesses counted = {readShared(port(), queueStatus), read(port(), queueValue)};
    pinFlags(0);
    pinGenerator(1, 12);
    EXPECT_EQ(valueAfterReads(FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL, counted), 12U);
    for (const unsigned mode : modesOf(port())) {
        if (mode != softwareMode) {
            bringTo(applet, port(), mode, active);
            EXPECT_EQ(valueAfterReads(FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL, {}), 0U);
        }
    }
}

TEST_P(SoftwareTriggerTest, StatusReadingsPassOnAFailure) {
    pinFlags(0);
    pinGenerator(1, 0);
    for (const auto& [id, reads] : {std::pair{FG_SOFTWARETRIGGER_IS_BUSY, 2U},
                                    {FG_TRIGGERQUEUE_FILLLEVEL, 3U},
                                    {FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL, 3U}}) {
        for (unsigned nth = 1; nth <= reads; ++nth) {
            AppletOnBoard::forgetCalls();
            AppletOnBoard::failRead(nth, -800 - static_cast<int>(nth));
            EXPECT_EQ(applet.readCode(id, port()), -800 - static_cast<int>(nth));
            EXPECT_EQ(recordedAccesses().size(), nth);
        }
        EXPECT_EQ(applet.readCode(id, port()), 0);
    }
}

TEST_P(SoftwareTriggerTest, StatusParametersCannotBeWritten) {
    for (const int id :
         {FG_SOFTWARETRIGGER_IS_BUSY, FG_TRIGGERQUEUE_FILLLEVEL, FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL}) {
        expectRefused(applet, port(), id, 1U, -12);
    }
}

} // namespace
