#include "fuzz/FuzzTarget.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Tries every input of the folders that are named on the command line.

namespace {

std::vector<std::filesystem::path> inputsOf(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> inputs;
    std::copy(std::filesystem::directory_iterator(folder), {}, std::back_inserter(inputs));
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

void tryInput(const std::filesystem::path& path) {
    std::printf("%s\n", path.filename().c_str());
    std::fflush(stdout);
    std::ifstream file(path, std::ios::binary);
    const std::string content(std::istreambuf_iterator<char>(file), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
}

int replay(const std::vector<std::string>& folders) {
    std::size_t count = 0;
    for (const std::string& folder : folders) {
        for (const std::filesystem::path& input : inputsOf(folder)) {
            tryInput(input);
            ++count;
        }
    }
    std::printf("%zu inputs replayed\n", count);
    return count > 0 ? 0 : 1;
}

} // namespace

int main(int count, char** words) {
    try {
        return replay({words + 1, words + count});
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
