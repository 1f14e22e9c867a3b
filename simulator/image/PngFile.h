#pragma once

#include "simulator/image/GrayPicture.h"

#include <optional>
#include <string>

namespace simulator {

/// Reads a PNG file of any kind as gray.
std::optional<GrayPicture> readPngFile(const std::string& name);

} // namespace simulator
