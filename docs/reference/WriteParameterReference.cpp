// Writes the parameter reference, or compares a page with what a live applet tells.

#include "docs/reference/ParameterReference.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

int compareWith(const std::string& page, const std::string& path) {
    std::ifstream file(path);
    const std::string written((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (written == page) {
        return 0;
    }
    const auto difference = std::mismatch(written.begin(), written.end(), page.begin(), page.end()).first;
    std::cerr << path << " is stale from line " << 1 + std::count(written.begin(), difference, '\n')
              << " on: build the target parameter_reference\n";
    return 1;
}

int write(const std::string& page, const std::string& path) {
    std::ofstream file(path);
    file << page << std::flush;
    if (!file) {
        std::cerr << path << " cannot be written\n";
        return 1;
    }
    return 0;
}

} // namespace

int main(int count, char** words) try {
    const bool compares = count == 3 && std::strcmp(words[1], "--compare") == 0;
    if (count != 2 && !compares) {
        std::cerr << "usage: write_parameter_reference [--compare] PAGE\n";
        return 2;
    }
    const LiveApplet applet(APPLET_FILE);
    const std::string page = parameterReference(applet);
    return compares ? compareWith(page, words[2]) : write(page, words[1]);
} catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
    return 1;
}
