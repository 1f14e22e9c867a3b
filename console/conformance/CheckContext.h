#pragma once

#include "console/AppletHandle.h"
#include "console/conformance/AppletRules.h"
#include "console/conformance/BoardState.h"
#include "console/conformance/CheckReport.h"
#include "console/HostLibrary.h"
#include "console/ParameterAccess.h"

#include <string>

namespace orbctl {

/// What every check works with.
struct CheckContext {
    const AppletHandle& applet;
    HostLibrary library; ///< the applet's own
    CheckReport& report;
    AppletRules rules;
    SettingNames settings;
    std::string folder; ///< for files, empty at first

    const HostFunctions& functions() const { return applet.functions(); }
    Fg_Struct* handle() const { return applet.handle(); }
    int lastError() const { return functions().lastError(handle()); }
    BoardState state(TableDepth depth = TableDepth::some) const { return {applet, settings, depth}; }
    /// The present description of a parameter.
    /// \throws Failure (refused) where there is none any more
    Parameter described(unsigned port, const std::string& name) const;
    /// The same; false where there is none.
    bool isDescribed(unsigned port, const std::string& name) const;
};

CheckSubject subjectOf(const Parameter& parameter);
/// DMA indices that stand for no port, the nearest first.
const std::vector<unsigned>& strangeDmaIndices();

} // namespace orbctl
