#include "console/Interruption.h"

namespace orbctl {

namespace {

volatile std::sig_atomic_t asked = 0;

void ask(int) { asked = 1; }

} // namespace

Interruption::Interruption() {
    asked = 0;
    struct sigaction action {};
    action.sa_handler = ask;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &mFormerInterrupt);
    sigaction(SIGTERM, &action, &mFormerTerminate);
}

Interruption::~Interruption() {
    sigaction(SIGINT, &mFormerInterrupt, nullptr);
    sigaction(SIGTERM, &mFormerTerminate, nullptr);
}

bool Interruption::isAskedFor() { return asked != 0; }

} // namespace orbctl
