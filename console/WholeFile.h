#pragma once

#include <string>

namespace orbctl {

/// Writes a whole file. \throws Failure (notFound) where it cannot be written
void writeWholeFile(const std::string& file, const std::string& content);

} // namespace orbctl
