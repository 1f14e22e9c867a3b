#include "tests/build/ToolOutput.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace orbelline::tests {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

std::vector<std::string> outputLines(const std::string& command) {
    FILE* pipe = popen(("LC_ALL=C " + command).c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot run: " + command);
    }
    std::string text;
    std::array<char, 4096> block{};
    for (std::size_t count = 1; count > 0;) {
        count = fread(block.data(), 1, block.size(), pipe);
        text.append(block.data(), count);
    }
    if (pclose(pipe) != 0) {
        throw std::runtime_error("failed: " + command);
    }
    return linesOf(text);
}

std::vector<std::string> words(const std::string& line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<std::string> linesWith(const std::vector<std::string>& lines, const std::string& text) {
    std::vector<std::string> found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [&text](const std::string& line) { return line.find(text) != std::string::npos; });
    return found;
}

std::vector<std::string> fileLines(const std::string& path) { return linesOf(fileBytes(path)); }

std::string fileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read: " + path);
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace orbelline::tests
