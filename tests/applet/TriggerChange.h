#pragma once

#include "tests/applet/DesignAccessRecord.h"

#include <map>
#include <string>
#include <vector>

/// Values of the trigger mode and the trigger state.
constexpr unsigned generatorMode = 1;
constexpr unsigned externalMode = 2;
constexpr unsigned synchronizedMode = 3;
constexpr unsigned softwareMode = 4;
constexpr unsigned active = 0;
constexpr unsigned asyncStop = 1;
constexpr unsigned syncStop = 2;

/// One change of a port's trigger mode or trigger state.
struct TriggerChange {
    int port;
    unsigned oldMode, oldState;
    unsigned newMode, newState;

    [[nodiscard]] bool changesTheMode() const { return oldMode != newMode; }
};
std::ostream& operator<<(std::ostream& out, const TriggerChange& change);

/// "Port1_External_Active_to_Synchronized".
std::string nameOf(const TriggerChange& change);

/// The modes that a port knows.
std::vector<unsigned> modesOf(int port);

/// Every change of the mode and every change of the state of both ports, those to the present value included.
std::vector<TriggerChange> allTriggerChanges();
/// Those that write registers.
std::vector<TriggerChange> writingTriggerChanges();

/// The steps that a change has to take, such as "OUT0 GEN0"; empty when it has to write nothing.
std::string stepsOf(const TriggerChange& change);

/// Settings of a port that its trigger changes write again, told apart from the defaults and from each other.
void applyRecognizableSettings(AppletOnBoard& applet, int port);
/// The accesses of a list of steps on a port with those settings.
DesignAccesses accessesOf(int port, const std::string& steps);

/// The 37 parameters whose access rights follow the trigger mode.
const std::vector<int>& adjustableTriggerParameters();
/// The access flags of every described parameter of a port, by parameter id.
std::map<int, int> accessFlagsOf(AppletOnBoard& applet, int port);
/// Gives every described parameter of a port the same flags, which no parameter has of itself.
void markAccessFlags(AppletOnBoard& applet, int port);
constexpr int markedAccess = 42;
/// The flags of a marked port after a successful change to a mode.
std::map<int, int> accessFlagsAfterChangeTo(AppletOnBoard& applet, int port, unsigned mode);

/// Brings a port to a mode and state, through its setters.
void bringTo(AppletOnBoard& applet, int port, unsigned mode, unsigned state);
/// Makes the change; the result is the error code.
int make(AppletOnBoard& applet, const TriggerChange& change);
