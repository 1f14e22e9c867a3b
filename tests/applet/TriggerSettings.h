#pragma once

#include "tests/applet/DesignAccessRecord.h"

#include <map>
#include <string>

/// What can be seen of the trigger settings of both ports: values, limits of values, and the caches behind
/// values that are read from the board. The key says which and where.
using TriggerSettings = std::map<std::string, double>;
TriggerSettings settingsOf(AppletOnBoard& applet);
/// Those of one port.
TriggerSettings settingsOf(AppletOnBoard& applet, int port);

/// Ids of a pulse form generator's parameters.
constexpr int downscaleOf(int generator) { return FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE + 4 * generator; }
constexpr int phaseOf(int generator) { return FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE_PHASE + 4 * generator; }
constexpr int delayOf(int generator) { return FG_TRIGGER_PULSEFORMGEN0_DELAY + 4 * generator; }
constexpr int widthOf(int generator) { return FG_TRIGGER_PULSEFORMGEN0_WIDTH + 4 * generator; }

/// Puts a value into a register of the port's trigger system, past the record and the failures.
void putRegister(AppletOnBoard& applet, int port, const std::string& name, std::uint64_t value);
std::uint64_t registerValue(AppletOnBoard& applet, int port, const std::string& name);

/// Smallest pulses everywhere, so that any rate fits.
void shortenAllPulses(AppletOnBoard& applet, int port);

/// A set that succeeds, with the accesses that it makes.
template <class Value>
void expectAccepted(AppletOnBoard& applet, int port, int id, Value value, const DesignAccesses& accesses) {
    const TriggerSettings other = settingsOf(applet, 1 - port);
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(applet.set(id, value, port), 0) << id << " = " << value;
    EXPECT_EQ(recordedAccesses(), accesses) << id << " = " << value;
    EXPECT_EQ(settingsOf(applet, 1 - port), other);
}

/// A set that is refused: the code, nothing but the given accesses, nothing changed to see.
template <class Value>
void expectRefused(AppletOnBoard& applet, int port, int id, Value value, int code,
                   const DesignAccesses& accesses = {}) {
    const TriggerSettings before = settingsOf(applet);
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(applet.set(id, value, port), code) << id << " = " << value;
    EXPECT_EQ(applet.lastError(), code);
    EXPECT_EQ(recordedAccesses(), accesses) << id << " = " << value;
    EXPECT_EQ(settingsOf(applet), before) << id << " = " << value;
}

/// A set with each of its accesses failing in turn: nothing changes to see, and the set works afterwards.
/// \param prepare  brings the port to where the set starts
template <class Value>
void expectEachFailureUndone(AppletOnBoard& applet, int port, int id, Value value,
                             const DesignAccesses& accesses, const std::function<void()>& prepare) {
    TriggerSettings before;
    expectEachFailureIsPassedOn(
        applet, accesses,
        [&] {
            prepare();
            before = settingsOf(applet);
        },
        [&] { return applet.set(id, value, port); }, [&] { EXPECT_EQ(settingsOf(applet), before); });
}
