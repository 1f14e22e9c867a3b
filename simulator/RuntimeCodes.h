#pragma once

#include "platform/BoardErrorCodes.h"
#include "platform/ErrorCodes.h"

/// The codes that the board gives: its own, which an applet passes on unchanged, and the platform's where
/// those say the same thing.
namespace simulator::code {

using namespace kavo::error::board;

constexpr int ok = kavo::error::ok;
constexpr int noHandle = kavo::error::noHandle;
constexpr int invalidParameter = kavo::error::invalidParameter;
constexpr int notSupported = kavo::error::notSupported;
/// A function is missing in an applet, or a status was to be written.
constexpr int notAvailable = kavo::error::notAvailable;

} // namespace simulator::code
