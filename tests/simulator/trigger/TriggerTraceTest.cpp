#include "simulator/trigger/TriggerTrace.h"
#include "tests/simulator/trigger/TriggerBench.h"

#include <algorithm>

namespace simulator {

namespace {

class TriggerTraceTest : public TriggerBench {
  protected:
    static std::uint32_t levelBefore(const TriggerTrace& trace, const TriggerSignal& signal) {
        const auto& levels = trace.levelsBefore();
        const auto found = std::find_if(levels.begin(), levels.end(), [&](const TriggerTrace::Level& level) {
            return level.signal == signal;
        });
        return found->value;
    }
};

TEST_F(TriggerTraceTest, CollectsEveryTransitionInOrder) {
    TriggerTrace trace(100);
    setForm(0, 0, 5, 10);
    runQueued(0, 100);
    trace.start(system);
    system.addListener(trace);
    system.advanceTo(50);
    sendSoftware(0, 2);
    trace.record({TriggerSignalKind::Exposure, 0, 0}, 1, 55);
    system.advanceTo(1000);
    const auto& samples = trace.samples();
    ASSERT_FALSE(samples.empty());
    EXPECT_TRUE(std::is_sorted(samples.begin(), samples.end(),
                               [](const auto& left, const auto& right) { return left.tick < right.tick; }));
    EXPECT_EQ(samples[0].signal, (TriggerSignal{TriggerSignalKind::GeneratorPulse, 0, 0}));
    EXPECT_EQ(samples[0].tick, 50U);
    EXPECT_EQ(samples[1].signal, (TriggerSignal{TriggerSignalKind::QueueFillLevel, 0, 0}));
    EXPECT_EQ(samples[1].value, 1U);
    EXPECT_EQ(samples[2].signal, (TriggerSignal{TriggerSignalKind::Exposure, 0, 0}));
    EXPECT_EQ(trace.dropped(), 0U);
    EXPECT_EQ(trace.begin(), 0U);
}

TEST_F(TriggerTraceTest, NotesTheLevelsOfItsBeginning) {
    TriggerTrace trace(100);
    system.setInput(3, true, 10);
    set(1, "TriggerOutput_Select2_Polarity_Invert", 1);
    runQueued(0, 100);
    sendSoftware(0, 5);
    trace.start(system);
    EXPECT_EQ(trace.begin(), 10U);
    EXPECT_EQ(trace.levelsBefore().size(), triggerLevelSignals().size());
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::Input, 0, 3}), 1U);
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::DebouncedInput, 0, 3}), 1U);
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::Output, 1, 2}), 1U);
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::Output, 1, 1}), 0U);
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::QueueFillLevel, 0, 0}), 4U);
}

TEST_F(TriggerTraceTest, KeepsTheLatestSamplesAndTheLevelsBeforeThem) {
    TriggerTrace trace(7);
    trace.start(system);
    system.addListener(trace);
    setForm(0, 0, 0, 50);
    for (const char* select : {"TriggerOutput_Select1_Select_Select", "TriggerOutput_Select2_Select_Select",
                               "TriggerOutput_Select3_Select_Select"})
        set(0, select, 5);
    runFree(0, 100);
    system.advanceTo(1049);
    EXPECT_EQ(trace.samples().size(), 7U);
    EXPECT_EQ(trace.dropped(), 11U * 4U + 10U * 2U - 7U);
    EXPECT_EQ(trace.begin(), 900U);
    EXPECT_EQ(trace.samples().front().tick, 900U);
    EXPECT_EQ(levelBefore(trace, {TriggerSignalKind::PulseForm, 0, 0}), 1U);
}

TEST_F(TriggerTraceTest, StartsAgainEmpty) {
    TriggerTrace trace(1);
    trace.record({TriggerSignalKind::Exposure, 0, 0}, 1, 5);
    trace.record({TriggerSignalKind::Exposure, 0, 0}, 0, 6);
    system.advanceTo(100);
    trace.start(system);
    EXPECT_TRUE(trace.samples().empty());
    EXPECT_EQ(trace.dropped(), 0U);
    EXPECT_EQ(trace.begin(), 100U);
}

TEST_F(TriggerTraceTest, TellsInstantsFromLevels) {
    EXPECT_TRUE(isInstant(TriggerSignalKind::GeneratorPulse));
    EXPECT_TRUE(isInstant(TriggerSignalKind::ActionCommand));
    for (const TriggerSignal& signal : triggerLevelSignals())
        EXPECT_FALSE(isInstant(signal.kind));
    EXPECT_EQ(triggerLevelSignals().size(), 8U + 8U + 2U * (1U + 4U + 4U + 1U));
}

} // namespace

} // namespace simulator
