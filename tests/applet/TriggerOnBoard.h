#pragma once

#include "tests/applet/TriggerChange.h"
#include "tests/applet/TriggerSettings.h"

#include <cstdint>
#include <vector>

using simulator::Tick;
using Ticks = std::vector<Tick>;

/// 100 frames a second, in ticks of 16 ns.
constexpr double triggerRate = 100.0;
constexpr Tick triggerPeriod = 625000;
/// The debounce of these tests, in ticks.
constexpr Tick debounce = 6;
/// First pulse form generator: its delay and width, in microseconds and in ticks.
constexpr double formDelay = 10.0;
constexpr Tick formDelayTicks = 625;
constexpr double formWidth = 20.0;
constexpr Tick formWidthTicks = 1250;

/// A port's trigger system as the applet drives it, seen at its signals. The cameras wait for action commands
/// and are quick; output n carries pulse form generator n, of which the first delays; time stands still but
/// for advance().
class TriggerOnBoard : public OnBothPorts {
  protected:
    TriggerOnBoard();

    /// Settings of a port as told above.
    void setUp(int ofPort);
    void set(int id, unsigned value) { ASSERT_EQ(applet.set(id, value, port()), 0) << id; }
    void set(int id, double value) { ASSERT_EQ(applet.set(id, value, port()), 0) << id; }

    [[nodiscard]] Tick now();
    void advance(Tick ticks);
    void advanceTo(Tick tick);
    /// Plans pulses of 100 ticks on a trigger input, one at each tick.
    void planPulses(unsigned input, const Ticks& rises);

    /// Ticks at which a signal of a port took a value.
    Ticks ticksOf(simulator::TriggerSignalKind kind, int ofPort, unsigned index, unsigned value);
    Ticks outputRises(unsigned output) { return outputRises(port(), output); }
    Ticks outputFalls(unsigned output);
    Ticks outputRises(int ofPort, unsigned output);
    Ticks generatorPulses(int ofPort);
    Ticks generatorPulses() { return generatorPulses(port()); }
    Ticks actionCommands();
    /// What an output was last seen at.
    bool outputLevel(unsigned output);
    std::uint64_t exposures() { return applet.board().exposures(static_cast<unsigned>(port())); }
};

/// count ticks from a first one on.
Ticks every(Tick distance, Tick first, std::size_t count);
/// Each tick later.
Ticks later(const Ticks& ticks, Tick by);
