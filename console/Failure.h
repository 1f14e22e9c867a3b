#pragma once

#include <stdexcept>
#include <string>

namespace orbctl {

/// How the program ends, for scripts.
enum class ExitStatus {
    done = 0,
    refused = 1,      ///< the applet, the runtime or the board said no
    different = 1,    ///< a comparison found differences
    usage = 2,        ///< the command line cannot be understood
    notFound = 3,     ///< a parameter, file, library or board does not exist or cannot be opened
    interrupted = 130 ///< stopped by Ctrl-C, cleanly
};

/// Ends a command with a message for standard error and a status.
class Failure : public std::runtime_error {
  public:
    Failure(ExitStatus status, const std::string& message) : std::runtime_error(message), mStatus(status) {}
    ExitStatus status() const { return mStatus; }

  private:
    ExitStatus mStatus;
};

} // namespace orbctl
