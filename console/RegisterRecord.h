#pragma once

#include "console/Parameter.h"

#include <string>
#include <vector>

struct RegisterInfo;

namespace orbctl {

/// Copies the parameters of a port's tree of records, group by group in the order in which they were
/// registered.
/// \param head  the port's top-level group that was registered last, or null
std::vector<Parameter> parametersOf(const RegisterInfo* head);

} // namespace orbctl
