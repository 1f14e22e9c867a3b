#pragma once

#include "tests/support/AppletOnBoard.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// One read or write of a design parameter as it reached the runtime, in words for tests.
struct DesignAccess {
    simulator::CallKind kind;
    std::string name;
    std::uint32_t value; ///< what was written; 0 for a read
    unsigned dmaIndex;
    int type;

    bool operator==(const DesignAccess& other) const {
        return kind == other.kind && name == other.name && value == other.value &&
               dmaIndex == other.dmaIndex && type == other.type;
    }
};
std::ostream& operator<<(std::ostream& out, const DesignAccess& access);

using DesignAccesses = std::vector<DesignAccess>;
DesignAccesses operator+(DesignAccesses first, const DesignAccesses& second);

/// A write with the type code that the applet uses for design parameters, by the parameter's full name.
DesignAccess wroteShared(int port, const std::string& fullName, std::uint32_t value);
DesignAccess readShared(int port, const std::string& fullName);
/// The same for a parameter of the port's own trigger system.
DesignAccess wrote(int port, const std::string& name, std::uint32_t value);
DesignAccess read(int port, const std::string& name);

/// What was read and written since AppletOnBoard::forgetCalls(), in order, failed accesses included.
DesignAccesses recordedAccesses();

/// "PulseFormGenerators_PulseFormGenerator<generator>_<name>".
std::string formRegister(int generator, const std::string& name);

/// The eight reads and the write that set a frame rate.
DesignAccesses frameRateAccesses(int port, std::uint32_t minimumPeriod);

/// Runs a change once for each access that it makes, with that access failing, and once undisturbed after
/// each.
///
/// Checks that the failure's code is passed on, that the accesses before the failing one reached the board
/// and none came after it, and that the same change then works in full.
/// \param expected   accesses of the undisturbed change
/// \param prepare    brings the applet to where the change starts
/// \param change     the change, its result the error code
/// \param unchanged  checks that a failed change left no other trace
void expectEachFailureIsPassedOn(AppletOnBoard& applet, const DesignAccesses& expected,
                                 const std::function<void()>& prepare, const std::function<int()>& change,
                                 const std::function<void()>& unchanged);
