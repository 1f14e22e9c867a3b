#include "tests/applet/ConfigurationOnBoard.h"

#include <algorithm>
#include <cmath>
#include <random>

// Whatever legal state is saved comes back when it is loaded.

namespace {

constexpr int pulseFormIds[] = {FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE, FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE,
                                FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE, FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE};

/// Every pulse below fits its period.
constexpr double slowRate = 0.02;
/// The longest pulse of the start state fits its period.
constexpr double startRate = 249;

/// Sets parameters of an applet in its start state to random legal values.
class RandomState {
  public:
    RandomState(AppletOnBoard& applet, std::mt19937& random) : mApplet(applet), mRandom(random) {}

    /// \param highestRate  bound of the frame rate in Hz
    void enter(int port, double highestRate, const std::string& tableFile) {
        mPort = port;
        enterImage();
        enterTable(tableFile);
        std::uniform_real_distribution<double> exponent(std::log(slowRate), std::log(highestRate));
        enterPulses(std::exp(exponent(mRandom)));
        enterTrigger();
    }

  private:
    unsigned upTo(unsigned largest) { return between(0, largest); }
    unsigned between(unsigned smallest, unsigned largest) {
        return std::uniform_int_distribution<unsigned>(smallest, largest)(mRandom);
    }
    double thousandths(int smallest, int largest) {
        return std::uniform_int_distribution<int>(smallest, largest)(mRandom) / 1000.0;
    }
    unsigned anyOf(std::initializer_list<unsigned> values) {
        return values.begin()[upTo(static_cast<unsigned>(values.size()) - 1)];
    }

    template <class Value>
    void set(int id, Value value) {
        EXPECT_EQ(mApplet.set(id, value, mPort), 0) << "parameter " << id << " <- " << value;
    }

    void enterImage() {
        set(FG_TIMEOUT, between(2, 2147483646));
        set(FG_GBE_CAMTYPE, anyOf({0, 1, 2, 4, 6}));
        set(FG_MTU_SIZE, 44 + 8 * upTo(1124));
        set(FG_SWAP_CHANNELS, upTo(1));
        set(FG_CAMERA_WIDTH, 16 * between(1, 256));
        const unsigned width = between(1, 256);
        set(FG_WIDTH, 16 * width);
        set(FG_XOFFSET, 16 * upTo(256 - width));
        const unsigned height = between(2, 4096);
        set(FG_HEIGHT, height);
        set(FG_YOFFSET, upTo(4096 - height));
        set(FG_FORMAT, anyOf({1, 3}));
        set(FG_BITALIGNMENT, upTo(1));
    }

    void enterTable(const std::string& tableFile) {
        set(FG_PROCESSING_OFFSET, thousandths(-1000, 1000));
        set(FG_PROCESSING_GAIN, thousandths(0, 4096000));
        set(FG_PROCESSING_GAMMA, thousandths(-1000000, 1000000));
        set(FG_PROCESSING_INVERT, upTo(1));
        set(FG_LUT_CUSTOM_FILE, upTo(1) == 1 ? tableFile.c_str() : "");
        set(FG_LUT_TYPE, anyOf({0, 3}));
    }

    void enterPulses(double rate) {
        set(FG_TRIGGER_FRAMESPERSECOND, slowRate);
        for (const int downscaleId : pulseFormIds) {
            const unsigned downscale = between(1, 7);
            // Strictly shorter than the period.
            const double longest = 0.99 * downscale * 1e6 / rate;
            std::uniform_real_distribution<double> time(1.0, std::min(longest, 3.4e7));
            set(downscaleId, downscale);
            set(downscaleId + 1, upTo(downscale - 1));
            set(downscaleId + 2, upTo(3) == 0 ? 0.0 : time(mRandom));
            set(downscaleId + 3, time(mRandom));
        }
        set(FG_TRIGGER_FRAMESPERSECOND, rate);
    }

    void enterTrigger() {
        set(FG_TRIGGERIN_DEBOUNCE, thousandths(96, 3024));
        set(FG_TRIGGERIN_SRC, upTo(7));
        set(FG_TRIGGERIN_POLARITY, upTo(1));
        const unsigned downscale = between(1, 0xFFFFFFFF);
        set(FG_TRIGGERIN_DOWNSCALE, downscale);
        set(FG_TRIGGERIN_DOWNSCALE_PHASE, upTo(downscale - 1));
        set(FG_TRIGGERIN_BYPASS_SRC, upTo(7));
        set(FG_TRIGGER_MULTIPLY_PULSES, between(1, 65535));
        set(FG_AREATRIGGERMODE, mPort == 0 ? anyOf({1, 2, 4}) : anyOf({1, 2, 3, 4}));
        set(FG_TRIGGERSTATE, upTo(2));
        set(FG_TRIGGERQUEUE_MODE, upTo(1));
        set(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, between(2, 2047));
        set(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, between(2, 2047));
        for (const int output : {FG_CAMERA_ACTION_COMMAND_SOURCE, FG_TRIGGEROUT_SELECT0,
                                 FG_TRIGGEROUT_SELECT1, FG_TRIGGEROUT_SELECT2, FG_TRIGGEROUT_SELECT3}) {
            set(output, upTo(11));
        }
        set(FG_TRIGGEROUT_STATS_SOURCE, upTo(3));
        set(FG_TRIGGER_OUTPUT_EVENT_SELECT, upTo(3));
    }

    AppletOnBoard& mApplet;
    std::mt19937& mRandom;
    int mPort = 0;
};

} // namespace

class ConfigurationRoundTrip : public ConfigurationOnBoard {
  protected:
    void enterStartState() {
        // The pulses of the start state fit its rate, not every other one.
        ASSERT_EQ(load(freshConfiguration()), 0);
        ASSERT_EQ(load(freshConfiguration()), 0);
        expectTold(freshSection(), 0);
        expectTold(freshSection(), 1);
    }

    void enterRandomState(double highestRate) {
        for (const int port : {0, 1}) {
            RandomState(applet, random).enter(port, highestRate, tableFile);
        }
    }

    std::vector<std::uint32_t> table(int port) {
        return applet.board().designField(AppletOnBoard::process(port, "LookupTable_LookupTable_LUTcontent"));
    }

    std::mt19937 random{4711};
    const std::string tableFile = folder.makeFile("some.lut", "[gray]\nnrOfElements=2;\n0,4095;\n1,77;\n");
};

TEST_F(ConfigurationRoundTrip, AThousandStatesComeBackOverTheStartState) {
    for (int round = 0; round < 1000 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        enterStartState();
        // The rate is judged by the pulses of before, here those of the start state.
        enterRandomState(startRate);
        const Section states[] = {told(0), told(1)};
        const std::vector<std::uint32_t> tables[] = {table(0), table(1)};
        const std::string file = saved();
        EXPECT_EQ(file, configurationText(states[0], states[1]));
        enterStartState();
        ASSERT_EQ(load(file), 0);
        for (const int port : {0, 1}) {
            expectTold(states[port], port);
            expectGettersToTellTheHardware(port);
            if (applet.get(FG_LUT_TYPE, port) == 3) {
                EXPECT_TRUE(table(port) == tables[port]);
            }
        }
        EXPECT_EQ(saved(), file);
    }
}

TEST_F(ConfigurationRoundTrip, LoadingWhatWasJustSavedChangesNothing) {
    for (int round = 0; round < 200 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        enterStartState();
        enterRandomState(100000);
        const std::vector<std::uint32_t> tables[] = {table(0), table(1)};
        const std::string file = saved();
        ASSERT_EQ(load(file), 0);
        EXPECT_EQ(saved(), file);
        EXPECT_TRUE(table(0) == tables[0]);
        EXPECT_TRUE(table(1) == tables[1]);
    }
}

TEST_F(ConfigurationRoundTrip, OverAnyOtherStateEachValueIsTheOldOneOrTheNew) {
    for (int round = 0; round < 200 && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        enterStartState();
        enterRandomState(100000);
        const Section states[] = {told(0), told(1)};
        const std::string file = saved();
        enterStartState();
        enterRandomState(100000);
        const Section before[] = {told(0), told(1)};
        ASSERT_EQ(load(file), 0);
        // The clock of the inputs, which is one for both ports, is the new one for either.
        const Section expected =
            with(before[0], "FG_TRIGGERIN_DEBOUNCE", valueIn(states[1], "FG_TRIGGERIN_DEBOUNCE"));
        expectEachValueFrom(expected, states[0], 0);
        expectEachValueFrom(before[1], states[1], 1);
        expectGettersToTellTheHardware(0);
        expectGettersToTellTheHardware(1);
    }
}
