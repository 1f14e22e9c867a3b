#pragma once

#include "grabber_basis/Fg_ConfigFileParser.h"

#include <optional>
#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// An applet takes and makes no configuration file of another name. \throws Failure (usage)
void requireConfigurationName(const std::string& file);

/// A configuration file, read as an applet reads it.
class ConfigurationFile {
  public:
    /// \throws Failure (notFound where it cannot be read, usage where its name is none of a configuration)
    explicit ConfigurationFile(const std::string& file);

    /// The text of a quoted entry of the header; empty where there is none.
    std::optional<std::string> headerText(const std::string& key) const;
    /// What loading takes for a key of a port, from a later section too; empty where it finds nothing.
    std::optional<std::string> text(unsigned port, const std::string& key) const;
    /// The keys that stand in the port's own section, in their order.
    const std::vector<std::string>& keys(unsigned port) const { return mKeys.at(port); }

  private:
    /// A lookup goes through the file from its beginning; nobody sees where it stopped.
    mutable Fg_ConfigFileParser mParser;
    std::vector<std::vector<std::string>> mKeys;
};

/// The configuration of a board as the applet saves it at the moment.
/// \throws Failure (refused) where it cannot be saved
ConfigurationFile savedConfiguration(const AppletHandle& applet);

/// What keeps an applet from loading a file, in words; empty where nothing shows.
/// \param reference  what the applet saves itself
std::string obstacleTo(const ConfigurationFile& file, const ConfigurationFile& reference);

} // namespace orbctl
