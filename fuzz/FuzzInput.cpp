#include "fuzz/FuzzInput.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kavo::fuzz {

std::string FuzzInput::takeLine() {
    const std::string_view line = mRest.substr(0, mRest.find('\n'));
    mRest.remove_prefix(std::min(line.size() + 1, mRest.size()));
    return std::string(line);
}

std::string makeFile(const char* name, std::string_view content) {
    static const kavo::test::TemporaryFolder folder;
    return folder.makeFile(name, content);
}

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "Does not hold: %s\n", what);
        std::abort();
    }
}

} // namespace kavo::fuzz
