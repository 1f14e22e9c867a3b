#pragma once

#include "grabber_basis/parameterInfo.h"
#include "simulator/model/DesignStore.h"

#include <memory>

namespace simulator {

/// Describes every parameter of an inner handle, for each port alike: the design parameters in groups that
/// follow the parts of their names, and the runtime's own in a group beside them. A record bears the full
/// name.
std::unique_ptr<Fg_ParameterInfo> makeParameterTree(const DesignBinding& binding, int firstDesignId);

} // namespace simulator
