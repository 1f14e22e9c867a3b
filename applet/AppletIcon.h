#pragma once

/// The applet's icon, a PNG file as it stands in the library.

extern "C" {

[[gnu::visibility("hidden")]] extern const unsigned char appletIconData[];
/// Bytes at appletIconData.
[[gnu::visibility("hidden")]] extern const unsigned appletIconSize;
}
