#pragma once

#include <string>

namespace orbctl {

/// The bytes as a zlib stream.
/// \throws std::bad_alloc
std::string zlibCompressed(const std::string& bytes);

} // namespace orbctl
