// Queue mode, the queue's event thresholds, and the multiplication of pulses.

#include "tests/applet/TriggerChange.h"
#include "tests/applet/TriggerSettings.h"

namespace {

constexpr unsigned queueOff = 0;
constexpr unsigned queueOn = 1;
/// 100 frames a second.
constexpr unsigned minimumPeriod = 624991;

class TriggerQueueTest : public OnBothPorts {
  protected:
    TriggerQueueTest() { EXPECT_EQ(applet.set(FG_TRIGGER_FRAMESPERSECOND, 100.0, port()), 0); }

    static DesignAccesses switchedOff() {
        return {wrote(port(), "Generators_Generator_MinimumPeriod_Number", 10),
                wrote(port(), "Generators_Queue_QueueFullValue_Number", 1),
                wrote(port(), "Generators_Queue_QueueEnabled_Select", 0)};
    }
    static DesignAccesses switchedOn() {
        return frameRateAccesses(port(), minimumPeriod) +
               DesignAccesses{wrote(port(), "Generators_Queue_QueueFullValue_Number", 2040),
                              wrote(port(), "Generators_Queue_QueueEnabled_Select", 1)};
    }
    static DesignAccesses multiplied(unsigned value, bool upwards) {
        const DesignAccess downscale = wrote(port(), "Generators_Sequence_Downscale", value);
        const DesignAccess selected = wrote(port(), "Generators_Sequence_SelectedPulse", value);
        const DesignAccess restart = wrote(port(), "Generators_ClearDownscale_Mode", 2);
        return upwards ? DesignAccesses{downscale, selected, restart}
                       : DesignAccesses{selected, downscale, restart};
    }
    unsigned mostPulses() { return applet.record(FG_SENDSOFTWARETRIGGER, port())->u.uiReg.to; }
    std::vector<unsigned> queuedModes() {
        std::vector<unsigned> modes = modesOf(port());
        modes.erase(modes.begin());
        return modes;
    }
    void setQueue(unsigned mode) { ASSERT_EQ(applet.set(FG_TRIGGERQUEUE_MODE, mode, port()), 0); }
};
FOR_BOTH_PORTS(TriggerQueueTest);

TEST_P(TriggerQueueTest, AGeneratorNeedsNoQueueButKeepsTheSetting) {
    for (const unsigned state : {syncStop, active, asyncStop}) {
        bringTo(applet, port(), generatorMode, state);
        expectAccepted(applet, port(), FG_TRIGGERQUEUE_MODE, queueOn, {});
        EXPECT_EQ(applet.get(FG_TRIGGERQUEUE_MODE, port()), queueOn);
        EXPECT_EQ(mostPulses(), 2040U);
        expectAccepted(applet, port(), FG_TRIGGERQUEUE_MODE, queueOff, {});
        EXPECT_EQ(applet.get(FG_TRIGGERQUEUE_MODE, port()), queueOff);
        EXPECT_EQ(mostPulses(), 1U);
    }
}

TEST_P(TriggerQueueTest, EveryOtherModeSwitchesItsQueue) {
    for (const unsigned mode : queuedModes()) {
        for (const unsigned state : {syncStop, active, asyncStop}) {
            bringTo(applet, port(), mode, state);
            expectAccepted(applet, port(), FG_TRIGGERQUEUE_MODE, queueOn, switchedOn());
            EXPECT_EQ(mostPulses(), 2040U);
            expectAccepted(applet, port(), FG_TRIGGERQUEUE_MODE, queueOff, switchedOff());
            EXPECT_EQ(mostPulses(), 1U);
        }
    }
}

TEST_P(TriggerQueueTest, RefusesAnUnknownQueueMode) {
    for (const unsigned mode : modesOf(port())) {
        bringTo(applet, port(), mode, syncStop);
        for (const unsigned value : {2U, 3U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), FG_TRIGGERQUEUE_MODE, value, -6000);
        }
    }
}

TEST_P(TriggerQueueTest, UndoesAnyFailureOfTheSwitch) {
    bringTo(applet, port(), softwareMode, active);
    expectEachFailureUndone(applet, port(), FG_TRIGGERQUEUE_MODE, queueOn, switchedOn(),
                            [this] { setQueue(queueOff); });
    expectEachFailureUndone(applet, port(), FG_TRIGGERQUEUE_MODE, queueOff, switchedOff(),
                            [this] { setQueue(queueOn); });
}

TEST_P(TriggerQueueTest, StaysOffWhenTheRateNoLongerFits) {
    bringTo(applet, port(), externalMode, syncStop);
    putRegister(applet, port(), formRegister(2, "Width_Width"), 625000);
    DesignAccesses reads = frameRateAccesses(port(), 0);
    reads.pop_back();
    expectRefused(applet, port(), FG_TRIGGERQUEUE_MODE, queueOn, -2079, reads);
    applet.wrapper().cache_FG_TRIGGER_FRAMESPERSECOND(port()) = 7e6;
    expectRefused(applet, port(), FG_TRIGGERQUEUE_MODE, queueOn, -6000);
}

TEST_P(TriggerQueueTest, ThresholdsTake2To2047AndMayCross) {
    const std::vector<std::pair<int, const char*>> thresholds = {
        {FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, "Hysteresis_OnLevel_Number"},
        {FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, "Hysteresis_OffLevel_Number"}};
    EXPECT_EQ(applet.get(thresholds[0].first, port()), 2047U);
    EXPECT_EQ(applet.get(thresholds[1].first, port()), 2U);
    for (const auto& [id, name] : thresholds) {
        for (const unsigned value : {2U, 1000U, 2047U}) {
            expectAccepted(applet, port(), id, value, {wrote(port(), name, value)});
            EXPECT_EQ(applet.get(id, port()), value);
        }
        for (const unsigned value : {0U, 1U, 2048U, 0xFFFFFFFFU}) {
            expectRefused(applet, port(), id, value, -6000);
        }
    }
    EXPECT_EQ(applet.set(thresholds[0].first, 2U, port()), 0);
    EXPECT_EQ(applet.get(thresholds[1].first, port()), 2047U);
}

TEST_P(TriggerQueueTest, UndoesAFailureOfAThreshold) {
    for (const auto& [id, name] :
         {std::pair{FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, "Hysteresis_OnLevel_Number"},
          {FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, "Hysteresis_OffLevel_Number"}}) {
        const int threshold = id;
        expectEachFailureUndone(applet, port(), threshold, 30U, {wrote(port(), name, 30)},
                                [&] { ASSERT_EQ(applet.set(threshold, 20U, port()), 0); });
    }
}

TEST_P(TriggerQueueTest, AMultiplicationNeverSelectsAPulseBehindItsLast) {
    EXPECT_EQ(applet.get(FG_TRIGGER_MULTIPLY_PULSES, port()), 1U);
    const auto expectSet = [this](unsigned value, bool upwards) {
        expectAccepted(applet, port(), FG_TRIGGER_MULTIPLY_PULSES, value, multiplied(value, upwards));
        EXPECT_EQ(applet.get(FG_TRIGGER_MULTIPLY_PULSES, port()), value);
    };
    expectSet(1, false);
    expectSet(2, true);
    expectSet(65535, true);
    expectSet(65535, false);
    expectSet(65534, false);
    expectSet(1, false);
}

TEST_P(TriggerQueueTest, RefusesAMultiplicationOutsideItsRange) {
    for (const unsigned value : {0U, 65536U, 0x10001U, 0xFFFFFFFFU}) {
        expectRefused(applet, port(), FG_TRIGGER_MULTIPLY_PULSES, value, -6000);
    }
}

TEST_P(TriggerQueueTest, UndoesAnyFailureOfAMultiplication) {
    expectEachFailureUndone(applet, port(), FG_TRIGGER_MULTIPLY_PULSES, 9U, multiplied(9, true),
                            [this] { ASSERT_EQ(applet.set(FG_TRIGGER_MULTIPLY_PULSES, 8U, port()), 0); });
    expectEachFailureUndone(applet, port(), FG_TRIGGER_MULTIPLY_PULSES, 5U, multiplied(5, false),
                            [this] { ASSERT_EQ(applet.set(FG_TRIGGER_MULTIPLY_PULSES, 8U, port()), 0); });
}

} // namespace
