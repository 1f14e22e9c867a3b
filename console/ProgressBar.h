#pragma once

#include "console/Terminal.h"

#include <chrono>
#include <ostream>
#include <string>

namespace orbctl {

/// One line that is drawn over again while something goes on; nothing at all where the stream is no terminal.
class ProgressBar {
  public:
    /// \param total  steps until the end; 0 is taken as 1
    ProgressBar(std::ostream& stream, const Terminal& terminal, std::string label, std::size_t total);
    /// Removes the line.
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void show(std::size_t done);

    /// The line for a width in columns: label, bar, "12/40".
    static std::string line(const std::string& label, std::size_t done, std::size_t total, int width);

  private:
    using Clock = std::chrono::steady_clock;

    std::ostream& mStream;
    Terminal mTerminal;
    std::string mLabel;
    std::size_t mTotal;
    bool mShown = false;
    Clock::time_point mLastDrawn;
};

} // namespace orbctl
