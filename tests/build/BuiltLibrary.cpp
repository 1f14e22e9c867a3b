#include "tests/build/BuiltLibrary.h"

namespace orbelline::tests {

namespace {

std::vector<DynamicName> dynamicNames(const std::string& selection) {
    std::vector<DynamicName> names;
    for (const std::string& line : outputLines("nm -D " + selection + " '" + libraryPath() + "'")) {
        const std::vector<std::string> parts = words(line);
        const std::string& kind = parts.at(parts.size() - 2);
        if (kind == "w" || kind == "v") {
            continue;
        }
        const std::string& name = parts.back();
        const std::size_t at = name.find('@');
        names.push_back({name.substr(0, at),
                         at == std::string::npos ? "" : name.substr(name.find_first_not_of('@', at))});
    }
    return names;
}

} // namespace

std::string libraryPath() { return ORBELLINE_LIBRARY; }

std::vector<std::string> readelf(const std::string& options) {
    return outputLines("readelf --wide " + options + " '" + libraryPath() + "'");
}

std::vector<DynamicName> offeredNames() { return dynamicNames("--defined-only"); }

std::vector<DynamicName> neededNames() { return dynamicNames("--undefined-only"); }

std::vector<std::string> neededLibraries() {
    std::vector<std::string> libraries;
    for (const std::string& line : linesWith(readelf("--dynamic"), "(NEEDED)")) {
        const std::size_t start = line.find('[') + 1;
        libraries.push_back(line.substr(start, line.find(']') - start));
    }
    return libraries;
}

} // namespace orbelline::tests
