#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace kavo::test {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "orbelline-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder can be made");
    }
    mPath = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TemporaryFolder::path(std::string_view name) const { return (mPath / name).string(); }

std::string TemporaryFolder::makeFile(std::string_view name, std::string_view content) const {
    std::ofstream file(path(name), std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    return path(name);
}

std::string TemporaryFolder::makeDeepPath(std::size_t length, std::string_view name) const {
    constexpr std::size_t longestName = 100;
    std::filesystem::path folder = mPath;
    const auto missing = [&] { return length - std::min(length, folder.native().size() + 1 + name.size()); };
    while (missing() > 1) {
        // One separator each; what is left must not be a separator alone.
        const std::size_t left = missing() - 1;
        folder /= std::string(left > longestName ? longestName - 2 : left, 'd');
        std::filesystem::create_directory(folder);
    }
    return folder / name;
}

std::string fileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace kavo::test
