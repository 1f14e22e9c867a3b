#include "tests/applet/TriggerOnBoard.h"

using simulator::TriggerSignal;
using simulator::TriggerSignalKind;
using simulator::TriggerTrace;

namespace {

constexpr std::size_t traceCapacity = 200000;
constexpr Tick inputPulseTicks = 100;

void makeCamerasWait(simulator::Board& board) {
    for (const unsigned port : {0U, 1U}) {
        simulator::CameraSetup camera;
        camera.sensorWidth = 16;
        camera.sensorHeight = 2;
        camera.exposureTicks = 1000;
        camera.readoutTicks = 2000;
        camera.freeRunningTicks = 0;
        board.setCamera(port, camera);
    }
}

} // namespace

TriggerOnBoard::TriggerOnBoard() {
    makeCamerasWait(applet.board());
    setUp(0);
    setUp(1);
    simulator::hostCalls().record(false);
    applet.board().startTrace(traceCapacity);
}

void TriggerOnBoard::setUp(int ofPort) {
    const auto apply = [&](int id, auto value) { EXPECT_EQ(applet.set(id, value, ofPort), 0) << id; };
    apply(FG_TRIGGERIN_DEBOUNCE, 0.096);
    apply(widthOf(0), formWidth);
    apply(delayOf(0), formDelay);
    apply(FG_TRIGGER_FRAMESPERSECOND, triggerRate);
    for (unsigned output = 0; output < simulator::triggerOutputCount; ++output) {
        apply(FG_TRIGGEROUT_SELECT0 + static_cast<int>(output), output);
    }
}

Tick TriggerOnBoard::now() { return applet.board().clock().now(); }

void TriggerOnBoard::advance(Tick ticks) { applet.board().clock().advance(ticks); }

void TriggerOnBoard::advanceTo(Tick tick) { applet.board().clock().advanceTo(tick); }

void TriggerOnBoard::planPulses(unsigned input, const Ticks& rises) {
    for (const Tick rise : rises) {
        applet.board().driveInputAt(rise, input, true);
        applet.board().driveInputAt(rise + inputPulseTicks, input, false);
    }
}

Ticks TriggerOnBoard::ticksOf(TriggerSignalKind kind, int ofPort, unsigned index, unsigned value) {
    const TriggerSignal signal{kind, static_cast<unsigned>(ofPort), index};
    const TriggerTrace trace = applet.board().trace();
    EXPECT_EQ(trace.dropped(), 0U);
    Ticks ticks;
    for (const TriggerTrace::Sample& sample : trace.samples()) {
        if (sample.signal == signal && sample.value == value) {
            ticks.push_back(sample.tick);
        }
    }
    return ticks;
}

Ticks TriggerOnBoard::outputRises(int ofPort, unsigned output) {
    return ticksOf(TriggerSignalKind::Output, ofPort, output, 1);
}

Ticks TriggerOnBoard::outputFalls(unsigned output) {
    return ticksOf(TriggerSignalKind::Output, port(), output, 0);
}

Ticks TriggerOnBoard::generatorPulses(int ofPort) {
    return ticksOf(TriggerSignalKind::GeneratorPulse, ofPort, 0, 1);
}

Ticks TriggerOnBoard::actionCommands() { return ticksOf(TriggerSignalKind::ActionCommand, port(), 0, 1); }

bool TriggerOnBoard::outputLevel(unsigned output) {
    const TriggerSignal signal{TriggerSignalKind::Output, static_cast<unsigned>(port()), output};
    const TriggerTrace trace = applet.board().trace();
    std::uint32_t level = 0;
    for (const TriggerTrace::Level& before : trace.levelsBefore()) {
        level = before.signal == signal ? before.value : level;
    }
    for (const TriggerTrace::Sample& sample : trace.samples()) {
        level = sample.signal == signal ? sample.value : level;
    }
    return level != 0;
}

Ticks every(Tick distance, Tick first, std::size_t count) {
    Ticks ticks;
    for (std::size_t pulse = 0; pulse < count; ++pulse) {
        ticks.push_back(first + pulse * distance);
    }
    return ticks;
}

Ticks later(const Ticks& ticks, Tick by) {
    Ticks moved;
    for (const Tick tick : ticks) {
        moved.push_back(tick + by);
    }
    return moved;
}
