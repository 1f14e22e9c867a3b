#pragma once

/// Error codes of the board in software's own, beside those of the platform. An applet passes them on
/// unchanged; a real board has others.
namespace kavo::error::board {

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

} // namespace kavo::error::board
