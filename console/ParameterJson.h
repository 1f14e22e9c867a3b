#pragma once

#include "console/Json.h"
#include "console/Parameter.h"
#include "console/ParameterAccess.h"

namespace orbctl {

/// Writes the members "value" (with "symbol" for an enumeration) or, for a failed read, "error".
void writeReading(JsonWriter& json, const Parameter& parameter, const Reading& reading);
/// Writes the members that identify a parameter: name, id, port.
void writeIdentity(JsonWriter& json, const Parameter& parameter);
/// Writes everything that the applet tells about a parameter, its identity included.
void writeDescription(JsonWriter& json, const Parameter& parameter);

} // namespace orbctl
