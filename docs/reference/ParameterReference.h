#pragma once

#include "docs/reference/LiveApplet.h"

/// The reference of all parameters, in Markdown.
std::string parameterReference(const LiveApplet& applet);
