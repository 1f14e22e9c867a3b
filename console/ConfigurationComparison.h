#pragma once

#include "console/ConfigurationFile.h"
#include "console/ParameterSnapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace orbctl {

/// How the value of a file and that of the board go together.
enum class Agreement {
    same,
    rounded, ///< the board has the nearest value that its step allows
    different,
    missing ///< the file does not have the key
};

/// One key that the applet saves, in a file and on the board. The state belongs to the snapshot.
struct ComparedKey {
    const ParameterState* state = nullptr;
    std::string text;     ///< the file's value as it stands there
    ParameterValue value; ///< as loading understands it
    Agreement agreement = Agreement::missing;

    bool isDifferent() const { return agreement == Agreement::different || agreement == Agreement::missing; }
};

/// A file against a board, port 0 first, in the order in which the applet saves its keys.
/// \param reference  what the applet saves at the moment
std::vector<ComparedKey> compared(const ConfigurationFile& file, const ConfigurationFile& reference,
                                  const ParameterSnapshot& board);

/// A key of the file that the applet does not have.
struct UnknownKey {
    unsigned port = 0;
    std::string key;
};
std::vector<UnknownKey> unknownKeys(const ConfigurationFile& file, const ConfigurationFile& reference);

/// A text of a configuration file as a value of a parameter, as loading converts it: what is no number is 0.
ParameterValue configuredValue(const Parameter& parameter, const std::string& text);
/// \param value  from configuredValue()
Agreement agreementOf(const Parameter& parameter, const ParameterValue& value, const Reading& reading);

} // namespace orbctl
