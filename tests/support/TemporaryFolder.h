#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kavo::test {

/// A new empty folder, removed with everything in it at the end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string path(std::string_view name) const;
    /// Writes a file and gives its path.
    std::string makeFile(std::string_view name, std::string_view content) const;
    /// Makes folders so deep that the path of a file by this name in the last one has the given length.
    std::string makeDeepPath(std::size_t length, std::string_view name) const;

  private:
    std::filesystem::path mPath;
};

/// All bytes of a file; a file that cannot be read has none.
std::string fileContent(const std::string& path);

} // namespace kavo::test
