#include "tests/build/ToolOutput.h"

#include <filesystem>
#include <map>
#include <set>

#include <gtest/gtest.h>

namespace orbelline::tests {

namespace {

namespace files = std::filesystem;

/// The folders that a folder may include from, beside itself.
const std::map<std::string, std::set<std::string>> floors{
    {"platform", {}},
    {"templates", {"platform"}},
    {"grabber_basis", {"platform", "templates"}},
    {"appletwrappers-baselib", {"platform", "templates", "grabber_basis"}},
    {"applet", {"platform", "templates", "grabber_basis", "appletwrappers-baselib"}},
    {"simulator", {"platform", "templates", "grabber_basis"}},
    {"console", {"platform", "templates", "grabber_basis"}},
};

std::vector<files::path> sources(const std::string& folder) {
    std::vector<files::path> found;
    for (const auto& entry : files::recursive_directory_iterator(files::path(ORBELLINE_SOURCE) / folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".h" || extension == ".cpp" || extension == ".S") {
            found.push_back(entry.path());
        }
    }
    return found;
}

/// The folder that a line includes from, or nothing.
std::string includedFolder(const std::string& line) {
    const std::string start = "#include \"";
    const std::size_t slash = line.find('/');
    const bool isOurs = line.rfind(start, 0) == 0 && slash != std::string::npos;
    return isOurs ? line.substr(start.size(), slash - start.size()) : "";
}

class Floors : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(Floors, IncludeOnlyFromBelow) {
    const std::string& folder = GetParam();
    const std::vector<files::path> all = sources(folder);
    EXPECT_FALSE(all.empty());
    for (const files::path& source : all) {
        for (const std::string& line : fileLines(source.string())) {
            const std::string included = includedFolder(line);
            const bool isAllowed =
                included.empty() || included == folder || floors.at(folder).count(included) > 0;
            EXPECT_TRUE(isAllowed) << source << ": " << line;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFolder, Floors,
                         testing::Values("platform", "templates", "grabber_basis", "appletwrappers-baselib",
                                         "applet", "simulator", "console"));

} // namespace orbelline::tests
