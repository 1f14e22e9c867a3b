#include "console/ProgressBar.h"

#include "console/NumberText.h"
#include "console/Utf8.h"

#include <algorithm>

namespace orbctl {

namespace {

constexpr std::chrono::milliseconds redrawInterval{50};
constexpr std::size_t largestBar = 40;

} // namespace

ProgressBar::ProgressBar(std::ostream& stream, const Terminal& terminal, std::string label, std::size_t total)
    : mStream(stream), mTerminal(terminal), mLabel(std::move(label)),
      mTotal(std::max<std::size_t>(1, total)) {}

ProgressBar::~ProgressBar() {
    if (mShown)
        mStream << "\r\033[K" << std::flush;
}

std::string ProgressBar::line(const std::string& label, std::size_t done, std::size_t total, int width) {
    const std::string count =
        " " + textOf(std::uint64_t{std::min(done, total)}) + "/" + textOf(std::uint64_t{total});
    const std::size_t used = displayWidth(label) + count.size() + 4;
    const auto columns = static_cast<std::size_t>(std::max(width, 0));
    if (columns < used + 5)
        return label + count;
    const std::size_t cells = std::min(columns - used, largestBar);
    const std::size_t filled = cells * std::min(done, total) / total;
    return label + " [" + std::string(filled, '#') + std::string(cells - filled, ' ') + "]" + count;
}

void ProgressBar::show(std::size_t done) {
    const Clock::time_point now = Clock::now();
    if (!mTerminal.isInteractive() || (mShown && done < mTotal && now - mLastDrawn < redrawInterval))
        return;
    mShown = true;
    mLastDrawn = now;
    mStream << '\r' << line(mLabel, done, mTotal, mTerminal.width()) << "\033[K" << std::flush;
}

} // namespace orbctl
