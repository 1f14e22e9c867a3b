#pragma once

#include "console/HostLibrary.h"

#include <string>
#include <vector>

namespace orbctl {

/// Where the runtime is: the user's choice, else the one that was built beside this program, else the
/// loader's.
std::string runtimeFile(const std::string& chosen);
/// Where the applet is, in the same way.
std::string appletFile(const std::string& chosen);

/// Opens the libraries beside the runtime that an applet is linked against, so that the applet gets those
/// that belong to the runtime. There are none for a runtime that the loader looks for.
std::vector<HostLibrary> openCompanions(const std::string& runtime);

} // namespace orbctl
