#pragma once

#include "console/Failure.h"
#include "console/Parameter.h"

#include <string>

namespace orbctl {

/// What an error code of the runtime or the applet means, without the code: "the value is off its step".
/// Codes that are not the project's own give "the host answered with an error".
std::string meaningOf(int code);
/// The same with the code behind it: "the file does not exist (-2076)".
std::string withCode(int code);

/// How the program ends after an applet could not read or write a file, or refused it.
ExitStatus statusOfFileError(int code);

/// How a value contradicts what the applet tells about the parameter: "20 is off its step of 16"; empty where
/// it does not.
std::string contradictionOf(const Parameter& parameter, const ParameterValue& value);
/// Why a value was refused, from the parameter's description and the code:
/// "FG_WIDTH: 20 is off its step of 16 (-7080)".
/// \param value  the value in the user's words
std::string refusedWrite(const Parameter& parameter, const ParameterValue& value, int code);
/// Why a parameter could not be read: "FG_FILLLEVEL cannot be read: ... (-2070)".
std::string refusedRead(const Parameter& parameter, int code);

} // namespace orbctl
