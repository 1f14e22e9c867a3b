#pragma once

#include "platform/ErrorCodes.h"

/// The board's own error codes, which an applet passes on unchanged. Where the platform's codes say the same
/// thing, the libraries use those.
namespace simulator::code {

constexpr int ok = kavo::error::ok;
constexpr int noHandle = kavo::error::noHandle;
constexpr int invalidParameter = kavo::error::invalidParameter;
constexpr int notSupported = kavo::error::notSupported;
/// A function is missing in an applet, or a status was to be written.
constexpr int notAvailable = kavo::error::notAvailable;

/// The board has no design yet, or the register is not in it.
constexpr int noRegister = -9101;
/// No picture came within the time.
constexpr int timeout = -9102;
/// The port acquires nothing, or will not reach the picture.
constexpr int notAcquiring = -9103;
/// The port acquires already, or the image memory is in use.
constexpr int busy = -9104;
/// The applet library cannot be opened, or is no applet.
constexpr int noApplet = -9105;
/// Creating the applet ended in an exception.
constexpr int appletThrew = -9106;
/// There is no board of that number.
constexpr int noBoard = -9107;
/// The scene file has a mistake, which was told on standard error.
constexpr int noScene = -9108;

} // namespace simulator::code
