#pragma once

#include "console/Parameter.h"

#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// Category of the parameters that the applet names but does not describe.
extern const char* const undescribedCategory;

/// Everything that an applet tells about the parameters of one port, as it stands at the moment.
class ParameterCatalogue {
  public:
    ParameterCatalogue(const AppletHandle& applet, unsigned port);

    /// In the order of the applet's categories; those without a description last.
    const std::vector<Parameter>& parameters() const { return mParameters; }

    /// By name or, for a number, by id.
    /// \throws Failure (notFound) with the closest names
    const Parameter& find(const std::string& nameOrId) const;
    const Parameter* findName(const std::string& name) const;

  private:
    const Parameter* findId(int id) const;

    std::vector<Parameter> mParameters;
};

} // namespace orbctl
