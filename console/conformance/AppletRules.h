#pragma once

#include "platform/ErrorCodes.h"

#include <map>
#include <string>
#include <vector>

namespace orbctl {

/// What another parameter of the same port has to be before a parameter takes all that its limits say.
struct Need {
    enum class Value { minimum, maximum, given };

    std::string parameter;
    Value value = Value::given;
    std::string text; ///< of a given value, in the user's words
};

/// How one parameter of an applet differs from what its description says.
struct ParameterRule {
    std::vector<Need> needs;
    /// Step that the applet holds values to where it describes a smaller one; 0: the described one.
    unsigned step = 0;
    /// Answer to a write while it is described as read-only; 0: the value is remembered.
    int answerWhileReadOnly = kavo::error::notAvailable;
    /// Parameter that writes a file this one can load, and the table that both are about.
    std::string fileWriter;
    std::string table;
};

/// What cannot be derived from an applet's own descriptions. An applet that is not known here has no rules,
/// and all that it describes has to hold.
class AppletRules {
  public:
    /// \param appletName  as the applet gives it
    static AppletRules of(const std::string& appletName);

    const ParameterRule& rule(const std::string& parameter) const;
    /// Whether there are rules for this applet.
    bool isKnown() const { return !mRules.empty(); }

  private:
    std::map<std::string, ParameterRule> mRules;
};

} // namespace orbctl
