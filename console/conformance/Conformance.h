#pragma once

#include "console/conformance/CheckContext.h"
#include "console/conformance/ScratchFolder.h"

#include <functional>
#include <string>
#include <vector>

namespace orbctl {

/// Which parameters are checked.
struct CheckSelection {
    std::vector<unsigned> ports;
    /// Names of parameters or of groups of functions, with * and ?; none: everything.
    std::vector<std::string> patterns;
};

/// Names of the groups of checks that concern no single parameter.
std::vector<std::string> checkGroups();

/// All checks of an applet that is open. Everything that is tried comes from what the applet tells about
/// itself, but for the rules of applets that are known.
class Conformance {
  public:
    /// \param library  the applet's
    Conformance(const AppletHandle& applet, HostLibrary library, CheckReport& report,
                CheckSelection selection);

    /// Makes the checks and gives the board its settings again. Ends early when an interruption is asked for.
    /// \throws Failure (notFound) where a name is that of no parameter and no group
    void run();

  private:
    void requireNames() const;
    std::vector<Parameter> chosen() const;
    void checkParameters(const std::vector<Parameter>& parameters) const;
    void checkAcquisitions(const std::vector<Parameter>& parameters) const;
    void checkFunctions() const;
    void checkRestored(const BoardState& before) const;
    /// Makes some checks, the last of which is that they end without an exception.
    void guarded(const CheckSubject& subject, const std::function<void()>& checks) const;

    ScratchFolder mFolder;
    CheckContext mContext;
    CheckSelection mSelection;
};

} // namespace orbctl
