#include "fuzz/CheckedApplet.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <filesystem>

namespace kavo::fuzz {

namespace {

using ConfigurationFiles = std::array<std::string, configurationFileCount - 1>;
using TableFiles = std::array<std::string, tableFileCount>;

const kavo::test::TemporaryFolder& folder() {
    static const kavo::test::TemporaryFolder made;
    return made;
}

std::string makeFolder(const char* name) {
    std::string path = folder().path(name);
    std::filesystem::create_directory(path);
    return path;
}

} // namespace

const char* configurationFile(unsigned number) {
    static const ConfigurationFiles files{folder().path("first.mcf"), folder().path("second.mcf"),
                                          folder().makeFile("other.txt", "a text\n"),
                                          folder().path("missing/third.mcf"), makeFolder("folder.mcf")};
    return number < files.size() ? files[number].c_str() : nullptr;
}

const std::string& tableFile(unsigned number) {
    static const TableFiles files{
        "",
        folder().makeFile("few.lut", "[gray]\nid=3;\nnrOfElements=3;\n0,7;\n1,6;\n2,5;\n"),
        folder().makeFile("empty.lut", ""),
        folder().makeFile("absurd.lut", "[gray]\nnrOfElements=4294967295;\n0,7;\n"),
        folder().makeFile("large-values.lut", "[gray]\nnrOfElements=5000;\n0,4294967295;\n1,4096;\n"),
        folder().path("missing/table.lut"),
        makeFolder("folder.lut"),
        folder().path("written-\xff.lut")};
    return files[number % files.size()];
}

} // namespace kavo::fuzz
