#pragma once

#include <csignal>

namespace orbctl {

/// While one lives, Ctrl-C asks for a clean stop instead of ending the program; a second Ctrl-C ends it.
class Interruption {
  public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// True once Ctrl-C was pressed, or the program was asked to end.
    static bool isAskedFor();

  private:
    struct sigaction mFormerInterrupt {};
    struct sigaction mFormerTerminate {};
};

} // namespace orbctl
