#pragma once

#include "console/Parameter.h"

#include <cstdint>

namespace orbctl {

class AppletHandle;

/// Reads a parameter on its port. A kind that cannot be read gives the code of an unsupported operation.
/// \param element  which element of a field, from 0; of no meaning for other kinds
Reading readParameter(const AppletHandle& applet, const Parameter& parameter, std::uint32_t element = 0);

/// Writes a value that valueFrom() made for this parameter: 0 or the error code.
int writeParameter(const AppletHandle& applet, const Parameter& parameter, const ParameterValue& value,
                   std::uint32_t element = 0);

} // namespace orbctl
