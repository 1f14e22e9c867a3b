#include "tests/support/CommaLocale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace kavo::test {
namespace {

constexpr char definition[] = "LC_NUMERIC\n"
                              "decimal_point \",\"\n"
                              "thousands_sep \".\"\n"
                              "grouping 3;3\n"
                              "END LC_NUMERIC\n";

void compileLocale(const TemporaryFolder& folder) {
    const std::string source = folder.makeFile("comma.source", definition);
    // It warns of the categories that are left out and then ends with a status other than 0.
    const std::string command = "localedef -c -i '" + source + "' '" + folder.path("comma") + "' 2>/dev/null";
    if (std::system(command.c_str()) == -1) {
        throw std::runtime_error("localedef cannot be started");
    }
}

} // namespace

CommaLocale::CommaLocale() {
    compileLocale(mFolder);
    setenv("LOCPATH", mFolder.path("").c_str(), 1);
    if (std::setlocale(LC_ALL, "comma") == nullptr || *std::localeconv()->decimal_point != ',') {
        throw std::runtime_error("the locale with a decimal comma does not take effect");
    }
}

CommaLocale::~CommaLocale() {
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
}

} // namespace kavo::test
