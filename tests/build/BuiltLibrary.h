#pragma once

#include "tests/build/ToolOutput.h"

namespace orbelline::tests {

/// One name of the library's dynamic symbol table.
struct DynamicName {
    std::string name;
    /// "GLIBC_2.0" and the like; empty where the name is looked for without a version.
    std::string version;
};

/// Path of the library under test.
std::string libraryPath();
/// What readelf says about the library, without line breaks inside an entry.
std::vector<std::string> readelf(const std::string& options);
/// The names that the library offers.
std::vector<DynamicName> offeredNames();
/// The names that the library needs from others; weak ones, which may stay unbound, are left out.
std::vector<DynamicName> neededNames();
/// The sonames that the library needs.
std::vector<std::string> neededLibraries();

} // namespace orbelline::tests
