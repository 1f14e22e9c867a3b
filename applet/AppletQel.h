#pragma once

/// The design image that the library carries. It is opaque here: the design runtime receives it unchanged.

extern "C" {

[[gnu::visibility("hidden")]] extern const unsigned char rawQelData[];
/// Bytes at rawQelData.
[[gnu::visibility("hidden")]] extern const unsigned rawQelDataSize;
}
