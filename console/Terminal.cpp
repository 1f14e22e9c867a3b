#include "console/Terminal.h"

#include <cstdlib>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

namespace orbctl {

namespace {

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool isDumb() {
    const char* const terminal = std::getenv("TERM");
    return terminal == nullptr || *terminal == '\0' || std::strcmp(terminal, "dumb") == 0;
}

} // namespace

Terminal Terminal::of(int descriptor) {
    Terminal terminal;
    terminal.mInteractive = isatty(descriptor) == 1 && !isDumb();
    terminal.mColour = terminal.mInteractive && !isSet("NO_COLOR");
    winsize size{};
    if (terminal.mInteractive && ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        terminal.mWidth = size.ws_col;
    return terminal;
}

std::string Terminal::styled(const std::string& text, const char* code) const {
    return mColour && !text.empty() ? "\033[" + std::string(code) + "m" + text + "\033[0m" : text;
}

} // namespace orbctl
