#pragma once

#include "simulator/image/GrayPicture.h"

#include <optional>
#include <string>

namespace simulator {

/// Reads a PGM (plain or raw, any maximum up to 65535) or PNG file; colours become gray. Nothing for a file
/// that cannot be read or is larger than 65536 pixels in a direction or 2^28 in all.
std::optional<GrayPicture> readPictureFile(const std::string& file);

/// Whether the name says that readPictureFile may know it.
bool isPictureFileName(const std::string& file);

/// The picture at another size: shrunk or enlarged without changing its shape, black at the sides it does not
/// reach.
GrayPicture fitPicture(const GrayPicture& picture, std::uint32_t width, std::uint32_t height);

} // namespace simulator
