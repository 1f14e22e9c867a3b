#pragma once

#include "docs/reference/LiveApplet.h"

#include <set>
#include <string>

/// The design parameters and the runtime's own that a parameter of port 0 reads and writes, from the board's
/// record of the calls that reach it. A writable parameter is set to each of its entries, or to its limits
/// and its present value; what it had before is set again.
struct DrivenParameters {
    std::set<std::string> written;
    std::set<std::string> readOnGet;
};

DrivenParameters drivenBy(const LiveApplet& applet, const RegisterInfo& record);
