#pragma once

#include "console/Parameter.h"

#include <string>
#include <string_view>

namespace orbctl {

/// Reads the user's text as a value of the parameter: whole numbers decimal or hexadecimal, enumeration
/// entries by symbol, display name or number, texts as they are. Whether the value is in range is left to
/// the applet.
/// \throws Failure  (usage) where the text can be no value of this kind
ParameterValue valueFrom(const Parameter& parameter, std::string_view text);

/// The value alone, as valueFrom takes it back: "FG_GRAY", "1024", "0.5".
std::string plainText(const Parameter& parameter, const ParameterValue& value);
/// The value for people: "FG_GRAY (3)", "1024", "\"\"" for an empty text.
std::string readableText(const Parameter& parameter, const ParameterValue& value);
/// The value for people, or "error -2070" for a failed read.
std::string readableText(const Parameter& parameter, const Reading& reading);
/// The same with the parameter's unit: "1.008 us".
std::string textWithUnit(const Parameter& parameter, const Reading& reading);
/// "Trigger / Trigger Input / External".
std::string categoryText(const Parameter& parameter);
/// What the parameter takes: "16 .. 4096, step 16", "FG_GRAY, FG_GRAY16"; empty where nothing is told.
std::string rangeText(const Parameter& parameter);
/// A whole number's or double's digits.
std::string numberText(const ParameterValue& value);
/// The number as a double; 0 for a text.
double numberOf(const ParameterValue& value);
/// "read, write, change" as the access flags say.
std::string accessText(const Parameter& parameter);
/// "rwc" with "-" for what is not allowed, "?" where nothing is told.
std::string shortAccessText(const Parameter& parameter);
/// "unsigned number", "enumeration", ...
std::string kindText(ValueKind kind);
/// True where a step narrows the values: it is told, and not the tiny step that stands for a continuous
/// value.
bool hasStep(const Parameter& parameter);

} // namespace orbctl
