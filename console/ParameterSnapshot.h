#pragma once

#include "console/Parameter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// What one parameter had at a moment, and how the applet described it then.
struct ParameterState {
    Parameter parameter;
    Reading reading;               ///< of no meaning for a field
    std::vector<Reading> elements; ///< of a field
};

/// The standard parameters of both ports, as they were at a moment. Those that cannot be read have an error
/// in place of their value.
class ParameterSnapshot {
  public:
    explicit ParameterSnapshot(const AppletHandle& applet);

    /// Port 0 first, in the order of the catalogue.
    const std::vector<ParameterState>& states() const { return mStates; }
    /// Null where there is no such parameter.
    const ParameterState* find(unsigned port, const std::string& name) const;

  private:
    std::vector<ParameterState> mStates;
};

/// A parameter that two snapshots tell differently. The states belong to the snapshots.
struct ParameterChange {
    const ParameterState* before = nullptr;
    const ParameterState* after = nullptr;
};

bool isChanged(const ParameterState& before, const ParameterState& after);
/// How many elements of a field differ.
std::size_t changedElements(const ParameterState& before, const ParameterState& after);
/// All changes, in the order of the earlier snapshot.
std::vector<ParameterChange> changesBetween(const ParameterSnapshot& before, const ParameterSnapshot& after);

/// "FG_WIDTH = 640 (was 1024)", "FG_LUT_VALUE: 4095 of 4096 elements changed".
std::string changeText(const ParameterState& before, const ParameterState& after);

} // namespace orbctl
