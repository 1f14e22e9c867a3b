#pragma once

#include "platform/FrameGrabber.h"

#include <arv.h>

namespace kavo::test {

/// One port of an applet as a device of Aravis: its description is the port's XML description, and its memory
/// at the address of a parameter's id is that parameter's value. The caller owns the reference.
ArvDevice* newAppletDevice(Fg_Struct* handle, int port);

} // namespace kavo::test
