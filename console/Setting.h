#pragma once

#include "console/Parameter.h"

#include <string>
#include <string_view>
#include <vector>

namespace orbctl {

class AppletHandle;
class ParameterCatalogue;

/// A parameter and the value that it shall have, in the user's words.
struct Setting {
    std::string target; ///< name or id, an element of a field as "FG_LUT_VALUE[5]"
    std::string value;
};

/// A setting for certain ports.
struct PortSetting {
    std::vector<unsigned> ports;
    Setting setting;
};

/// A parameter, or one element of a field.
struct Target {
    Parameter parameter;
    std::uint32_t element = 0;
    std::string name; ///< as the user would write it
};

/// Reads "NAME=VALUE".
/// \throws Failure  (usage)
Setting settingFrom(const std::string& text);
/// Reads "NAME=VALUE" for both ports, "0:NAME=VALUE" or "1:NAME=VALUE" for one.
/// \throws Failure  (usage)
PortSetting portSettingFrom(const std::string& text);

/// Finds what a name, an id or "NAME[INDEX]" stands for.
/// \throws Failure (notFound for an unknown name, usage for a field without an element or an element too
/// many)
Target targetFrom(const ParameterCatalogue& catalogue, const std::string& text);

/// Writes the settings one after another, each on every port. Nothing is written unless all names and
/// values can be understood; the first that the applet refuses ends the row.
/// \throws Failure  (notFound, usage or refused)
void applySettings(const AppletHandle& applet, const std::vector<unsigned>& ports,
                   const std::vector<Setting>& settings);

} // namespace orbctl
