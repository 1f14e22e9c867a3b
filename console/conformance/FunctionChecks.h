#pragma once

#include "console/conformance/CheckContext.h"
#include "console/Parameter.h"

#include <string>
#include <vector>

namespace orbctl {

/// Every entry point is there, and answers a missing handle, or one without an applet, as it has to.
void checkHandles(const CheckContext& context);
/// Names, ids, indices, selectors and constants that do not exist are refused.
void checkLookups(const CheckContext& context);
/// Event names and masks lead to each other, and nothing else does.
void checkEvents(const CheckContext& context);
/// The XML description's size is told, a short buffer is left alone, ports that are not there have none.
void checkXmlCalls(const CheckContext& context);
/// The XML description says of the parameters what the applet says.
void checkXmlContent(const CheckContext& context, const std::vector<Parameter>& parameters);
/// A configuration that was saved brings every setting back; files that are no configuration change nothing.
void checkConfigurations(const CheckContext& context);

} // namespace orbctl
