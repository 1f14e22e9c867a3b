#pragma once

#include <string>
#include <utility>
#include <vector>

/// What a standard parameter that takes a number takes and refuses. Whole numbers stand as doubles, which
/// hold every 32-bit number exactly.
struct WritableParameter {
    std::string name;
    bool isReal;
    /// What a fresh applet tells.
    double initial;
    std::vector<double> accepted;
    /// With the code of the refusal.
    std::vector<std::pair<double, int>> refused;
    /// How far a value read from a register may be from the one that was set.
    double tolerance = 0;
    /// What must be set before, so that the whole range is open.
    std::vector<std::pair<std::string, double>> preparation{};
    /// One register serves both ports.
    bool isShared = false;
};

/// The writable standard parameters of a port but for texts and the table's entries.
std::vector<WritableParameter> writableParameters(int port);
