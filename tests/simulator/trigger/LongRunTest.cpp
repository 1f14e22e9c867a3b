#include "tests/simulator/trigger/TriggerBench.h"

#include <array>

namespace simulator {

namespace {

constexpr std::uint64_t manyPulses = 10000000;

/// Counts pulses and checks their spacing without keeping them.
class PulseCounter : public TriggerListener {
  public:
    explicit PulseCounter(Tick expectedSpacing) : mSpacing(expectedSpacing) {}

    void signalChanged(const TriggerSignal& signal, std::uint32_t value, Tick tick) override {
        if (signal.kind == TriggerSignalKind::PulseForm && value == 1)
            ++rises[signal.index];
        if (signal.kind != TriggerSignalKind::GeneratorPulse)
            return;
        if (pulses > 0 && tick - mLast != mSpacing)
            ++badSpacings;
        mLast = tick;
        ++pulses;
    }
    void cameraActionCommand(unsigned, Tick) override { ++commands; }
    void event(const TriggerEvent& raised, Tick) override {
        if (raised.kind == TriggerEventKind::Override)
            ++overrides;
    }

    std::uint64_t pulses = 0;
    std::uint64_t commands = 0;
    std::uint64_t badSpacings = 0;
    std::uint64_t overrides = 0;
    std::array<std::uint64_t, pulseFormCount> rises{};

  private:
    Tick mSpacing;
    Tick mLast = 0;
};

class LongRunTest : public TriggerBench {
  protected:
    LongRunTest() { system.removeListener(recorder); }
};

TEST_F(LongRunTest, TenMillionGeneratorPulsesAreCountedExactly) {
    PulseCounter counter(100);
    setForm(0, 0, 0, 63);
    setForm(0, 1, 40, 50, 2, 1);
    setForm(0, 2, 99, 99, 5, 5);
    setForm(0, 3, 10, 20, 7, 3);
    system.addListener(counter);
    runFree(0, 100);
    system.advanceTo(100 * manyPulses - 1);
    EXPECT_EQ(counter.pulses, manyPulses);
    EXPECT_EQ(counter.badSpacings, 0U);
    EXPECT_EQ(counter.commands, manyPulses);
    EXPECT_EQ(counter.overrides, 0U);
    EXPECT_EQ(counter.rises[0], manyPulses);
    EXPECT_EQ(counter.rises[1], manyPulses / 2);
    EXPECT_EQ(counter.rises[2], manyPulses / 5) << "the last one rises in the last tick";
    EXPECT_EQ(counter.rises[3], 1428572U) << "pulses 3, 10, ... 10000000";
    EXPECT_EQ(get(0, "OutputStatistics_ReadPulses_Status"), manyPulses % 65536);
}

TEST_F(LongRunTest, AMillionExternalPulsesPassAtTheirOwnSpacing) {
    PulseCounter counter(120);
    setForm(0, 0, 0, 63);
    setShared("TriggerInput_Debounce8_Prescale_Period", 2);
    set(0, "TriggerMode_SelectExternal_Select", 1);
    runQueued(0, 100);
    system.addListener(counter);
    system.driveInput(0, {10, 60, 60, 1000000});
    system.advanceTo(120 * 1000000ULL + 10);
    EXPECT_EQ(counter.pulses, 1000000U);
    EXPECT_EQ(counter.commands, 1000000U);
    EXPECT_EQ(counter.badSpacings, 0U);
    EXPECT_EQ(counter.overrides, 0U);
    EXPECT_EQ(get(0, "InputStatistics_ReadPulses_Status"), 1000000U % 65536);
}

TEST_F(LongRunTest, IdleTimeCostsNothing) {
    PulseCounter counter(1ULL << 40);
    runQueued(0, 100);
    system.addListener(counter);
    for (unsigned pulse = 0; pulse < 1000; ++pulse) {
        system.advanceTo(pulse * (1ULL << 40));
        sendSoftware(0);
    }
    EXPECT_EQ(counter.pulses, 1000U);
    EXPECT_EQ(counter.badSpacings, 0U);
}

} // namespace

} // namespace simulator
