#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavo::fuzz {

/// An input whose first lines are words for the target and whose rest is the content of a file.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : mRest(reinterpret_cast<const char*>(data), size) {}

    /// The next line without its end.
    std::string takeLine();
    std::string_view rest() const { return mRest; }

  private:
    std::string_view mRest;
};

/// Writes a file into a folder of this process that is removed at the end, and gives its path.
std::string makeFile(const char* name, std::string_view content);

/// Ends the program when something that always holds does not.
void require(bool holds, const char* what);

} // namespace kavo::fuzz
