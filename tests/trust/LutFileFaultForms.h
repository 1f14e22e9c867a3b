#pragma once

#include "appletwrappers-baselib/Fg_LutFileParser.h"

#include <functional>
#include <ostream>
#include <vector>

/// What was read: all values of all tables. Tables without values add none.
using LutFileContent = std::vector<double>;

/// One of the forms that a lookup-table file has: small tables that are written and read back.
struct LutFileForm {
    const char* name;
    std::function<int(Fg_LutFileParser&, const char* path)> save;
    std::function<int(Fg_LutFileParser&, const char* path, LutFileContent&)> load; ///< empty: never read
};
std::ostream& operator<<(std::ostream& out, const LutFileForm& form);

std::vector<LutFileForm> lutFileForms();
