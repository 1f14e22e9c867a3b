#pragma once

#include "console/Parameter.h"

#include <string>
#include <vector>

namespace orbctl {

/// A value to be tried, and what it is among the parameter's values.
struct TrialValue {
    std::string what; ///< "its minimum", "what lies above its maximum"
    ParameterValue value;
    int code = 0; ///< the answer that it has to get
};

/// Values that a number or an enumeration has to take, each once: its ends, its middle, their neighbours; its
/// entries.
/// \param step  step that counts in place of the described one; 0: the described one
std::vector<TrialValue> legalValues(const Parameter& parameter, unsigned step = 0);
/// Values that it has to refuse, with the code for each.
std::vector<TrialValue> illegalValues(const Parameter& parameter, unsigned step = 0);

/// Whether a value that was read is the one that was written, as exactly as the parameter's step lets it be.
bool isSameValue(const Parameter& parameter, const ParameterValue& written, const ParameterValue& read);
/// Whether a value is within the limits, or one of the entries. An infinite measurement counts as none.
bool isDescribedValue(const Parameter& parameter, const ParameterValue& value);
/// Whether the description leaves the limits open: from 0 to 0 without a step.
bool hasOpenLimits(const Parameter& parameter);
/// Whether it is a single number.
bool isNumber(const Parameter& parameter);

} // namespace orbctl
