#include "console/WholeFile.h"

#include "console/Failure.h"

#include <fstream>

namespace orbctl {

void writeWholeFile(const std::string& file, const std::string& content) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream)
        throw Failure(ExitStatus::notFound, file + " cannot be written");
}

} // namespace orbctl
