#include "tests/simulator/trigger/PerTickModel.h"
#include "tests/simulator/trigger/TriggerBench.h"

#include <random>

namespace simulator {

namespace {

/// Reports of the model under test in the words of the plain one.
class ReportListener : public TriggerListener {
  public:
    void signalChanged(const TriggerSignal& signal, std::uint32_t value, Tick tick) override {
        static const std::map<TriggerSignalKind, const char*> words{
            {TriggerSignalKind::Input, "input"},
            {TriggerSignalKind::DebouncedInput, "accepted"},
            {TriggerSignalKind::QueueFillLevel, "waiting"},
            {TriggerSignalKind::GeneratorPulse, "pulse"},
            {TriggerSignalKind::PulseForm, "form"},
            {TriggerSignalKind::Output, "output"},
            {TriggerSignalKind::ActionCommand, "command"},
            {TriggerSignalKind::FrameStart, "frame"}};
        reports.push_back({tick, words.at(signal.kind), signal.port, signal.index, value});
    }
    void event(const TriggerEvent& raised, Tick tick) override {
        static const std::map<TriggerEventKind, const char*> words{
            {TriggerEventKind::InputRising, "event rising"},
            {TriggerEventKind::InputFalling, "event falling"},
            {TriggerEventKind::FrameStart, "event frame"},
            {TriggerEventKind::Override, "event override"},
            {TriggerEventKind::MissingFrame, "event missing"},
            {TriggerEventKind::HysteresisOn, "event on"},
            {TriggerEventKind::HysteresisOff, "event off"},
            {TriggerEventKind::OutputEvent, "event output"}};
        reports.push_back({tick, words.at(raised.kind), raised.index, 0, 0});
    }

    std::vector<Report> reports;
};

std::string describe(const std::vector<Report>& reports, std::size_t place) {
    if (place >= reports.size())
        return "nothing more";
    const Report& report = reports[place];
    return std::to_string(report.tick) + ": " + report.what + " of port " + std::to_string(report.port) +
           " [" + std::to_string(report.index) + "] " + std::to_string(report.value);
}

/// Does the same random things to both models.
class RandomScenario {
  public:
    explicit RandomScenario(unsigned seed) : mRandom(seed) { mSystem.addListener(mListener); }

    void run(unsigned steps) {
        prepare();
        for (unsigned step = 0; step < steps && !::testing::Test::HasFatalFailure(); ++step) {
            advance();
            act();
            compareReports();
        }
        compareReports();
        compareRegisters();
    }

    std::size_t reportCount() const { return mListener.reports.size(); }

  private:
    std::uint32_t choose(std::uint32_t below) { return static_cast<std::uint32_t>(mRandom() % below); }
    std::uint32_t chooseOf(std::initializer_list<std::uint32_t> values) {
        return *(values.begin() + choose(static_cast<std::uint32_t>(values.size())));
    }

    /// Something should flow in most scenarios: sources on, short times.
    void prepare() {
        write("TriggerInput_Debounce8_Prescale_Period", choose(4));
        for (unsigned port = 0; port < triggerPortCount; ++port) {
            const std::string camera = "TriggerCam" + std::to_string(port) + "_";
            write(camera + "Generators_EnableQueue_Select", choose(2));
            write(camera + "Generators_Generator_MinimumPeriod_Number", choose(40));
            write(camera + "TriggerMode_SelectExternal_Select", choose(2));
            write(camera + "InputSelect_Select_Select", choose(2));
            write(camera + "PulseFormGenerators_Enable_Select", 1);
            for (unsigned form = 0; form < pulseFormCount; ++form) {
                const std::string beginning =
                    camera + "PulseFormGenerators_PulseFormGenerator" + std::to_string(form) + "_";
                write(beginning + "Delay_Delay", choose(30));
                write(beginning + "Width_Width", choose(30));
            }
            write(camera + "Generators_ClearQueuePulse_Mode", 0);
        }
    }

    void advance() {
        const Tick tick = mSystem.now() + chooseOf({0, 1, 1, 2, 3, 5, 9, 17, 40});
        const Tick next = mSystem.nextActivity();
        ASSERT_GT(next, mSystem.now());
        const std::size_t heard = mListener.reports.size();
        if (next > tick) {
            mSystem.advanceTo(tick);
            ASSERT_EQ(mListener.reports.size(), heard) << "nothing may happen before the next activity";
        } else if (choose(2) == 0) {
            while (mSystem.nextActivity() <= tick)
                mSystem.advanceTo(mSystem.nextActivity());
        }
        mSystem.advanceTo(tick);
        mPlain.advanceTo(tick);
        ASSERT_EQ(mSystem.now(), mPlain.now());
    }

    void act() {
        const std::uint32_t kind = choose(100);
        if (kind < 35)
            writeAny();
        else if (kind < 50)
            sendSoftware();
        else if (kind < 75)
            toggleInput();
        else if (kind < 80)
            plan();
        else if (kind < 82)
            drive();
        else if (kind < 92)
            startFrame();
        else
            compareRegisters();
    }

    void write(const std::string& ending, std::uint32_t value) {
        const TriggerParameterIndex index =
            findTriggerParameter("Device1_Process2_Trigger_" + ending).value();
        mPlain.write(index, value);
        ASSERT_TRUE(mSystem.write(index, value, mSystem.now()));
    }

    void writeAny() {
        const TriggerParameterIndex index = choose(static_cast<std::uint32_t>(triggerParameters().size()));
        const TriggerParameter& parameter = triggerParameters()[index];
        if (parameter.readOnly) {
            EXPECT_FALSE(mSystem.write(index, choose(10), mSystem.now()));
            return;
        }
        const std::uint32_t value = chooseValue(parameter.name);
        mPlain.write(index, value);
        ASSERT_TRUE(mSystem.write(index, value, mSystem.now()));
    }

    std::uint32_t chooseValue(const std::string& name) {
        if (name.find("_Mode") != std::string::npos)
            return chooseOf({0, 0, 1, 2, 2, 3});
        if (name.find("MinimumPeriod") != std::string::npos)
            return chooseOf({0, 1, 5, 20, 50, UINT32_MAX});
        if (name.find("QueueFullValue") != std::string::npos)
            return chooseOf({0, 1, 2, 3, 7, 2040, 5000});
        if (name.find("Delay_Delay") != std::string::npos || name.find("Width_Width") != std::string::npos)
            return chooseOf({0, 1, 2, 9, 10, 30, 60, UINT32_MAX});
        if (name.find("Select") != std::string::npos && name.find("SelectedPulse") == std::string::npos)
            return choose(10);
        return choose(6);
    }

    void sendSoftware() {
        const std::string ending =
            "TriggerCam" + std::to_string(choose(2)) + "_TriggerMode_SoftwareTrigger_Mode";
        for (std::uint32_t pulse = choose(4); pulse > 0; --pulse)
            write(ending, 2);
    }

    void toggleInput() {
        const unsigned pin = chooseOf({0, 0, 0, 1, 1, 2, 3, 4, 5, 6, 7});
        const bool level = choose(2) == 1;
        mPlain.setInput(pin, level);
        mSystem.setInput(pin, level, mSystem.now());
    }

    void plan() {
        const unsigned pin = choose(triggerPinCount);
        const bool level = choose(2) == 1;
        const Tick tick = mSystem.now() + choose(30);
        mPlain.scheduleInput(pin, level, tick);
        mSystem.scheduleInput(pin, level, tick);
    }

    void drive() {
        const InputWave wave{mSystem.now() + choose(20), 1 + choose(20), 1 + choose(20), choose(20)};
        const unsigned pin = choose(2);
        mPlain.driveInput(pin, wave.firstRise, wave.highTicks, wave.lowTicks, wave.count);
        mSystem.driveInput(pin, wave);
    }

    void startFrame() {
        const unsigned port = choose(triggerPortCount);
        mPlain.frameStarted(port);
        mSystem.frameStarted(port, mSystem.now());
    }

    void compareReports() {
        for (; mCompared < std::max(mPlain.reports.size(), mListener.reports.size()); ++mCompared)
            ASSERT_TRUE(mCompared < mPlain.reports.size() && mCompared < mListener.reports.size() &&
                        mPlain.reports[mCompared] == mListener.reports[mCompared])
                << "plain: " << describe(mPlain.reports, mCompared)
                << "\nmodel: " << describe(mListener.reports, mCompared);
    }

    void compareRegisters() {
        for (TriggerParameterIndex index = 0; index < triggerParameters().size(); ++index)
            ASSERT_EQ(mSystem.read(index, mSystem.now()), mPlain.read(index))
                << triggerParameters()[index].name << " at " << mSystem.now();
    }

    std::mt19937 mRandom;
    TriggerSystem mSystem;
    ReportListener mListener;
    PerTickModel mPlain;
    std::size_t mCompared = 0;
};

TEST(RandomTriggerTest, TheModelDoesWhatAPlainCountOfEveryTickDoes) {
    std::size_t reports = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomScenario scenario(seed);
        scenario.run(150);
        reports += scenario.reportCount();
        ASSERT_FALSE(::testing::Test::HasFatalFailure());
    }
    EXPECT_GT(reports, 300000U) << "the scenarios have to make things happen";
}

TEST(RandomTriggerTest, AnyWriteAtAnyTimeKeepsTimeInOrder) {
    std::mt19937_64 random(7);
    TriggerSystem system;
    TriggerRecorder recorder;
    system.addListener(recorder);
    Tick last = 0;
    for (unsigned step = 0; step < 200000; ++step) {
        const Tick tick = system.now() + random() % 64 - std::min<Tick>(system.now(), random() % 32);
        const auto index = static_cast<TriggerParameterIndex>(random() % triggerParameters().size());
        const auto value = static_cast<std::uint32_t>(random() >> (random() % 64));
        const Tick before = system.now();
        random() % 4 == 0 ? static_cast<void>(system.read(index, tick))
                          : static_cast<void>(system.write(index, value, tick));
        system.setInput(static_cast<unsigned>(random() % 8), random() % 2 == 0, tick);
        ASSERT_EQ(system.now(), std::max(before, tick));
        ASSERT_GT(system.nextActivity(), system.now());
        for (const TriggerRecorder::Signal& change : recorder.signals) {
            ASSERT_GE(change.tick, last);
            last = change.tick;
        }
        recorder.clear();
    }
}

} // namespace

} // namespace simulator
