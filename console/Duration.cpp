#include "console/Duration.h"

#include "console/NumberText.h"

#include <cmath>

namespace orbctl {

namespace {

struct Unit {
    const char* name;
    double seconds;
};

/// From long to short; the first that is not longer than a time suits it.
constexpr Unit units[] = {{"s", 1}, {"ms", 1e-3}, {"us", 1e-6}, {"ns", 1e-9}};

/// Longest time that is taken: a year.
constexpr double longestSeconds = 365.0 * 86400;

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() > end.size() && text.substr(text.size() - end.size()) == end;
}

std::string rounded(double number) {
    const int digitsBefore = number < 1 ? 1 : static_cast<int>(std::floor(std::log10(number))) + 1;
    std::string text = textWithDigits(number, digitsBefore < 4 ? 4 - digitsBefore : 0);
    if (text.find('.') != std::string::npos)
        text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text;
}

} // namespace

std::optional<std::uint64_t> ticksFrom(std::string_view text) {
    // "ms" ends in "s" too: the longer name is looked for first.
    for (const Unit& unit : {units[1], units[2], units[3], units[0]}) {
        if (!endsWith(text, unit.name))
            continue;
        text.remove_suffix(std::string_view(unit.name).size());
        const std::optional<double> number = doubleFrom(text);
        const double seconds = number.value_or(-1) * unit.seconds;
        if (!(seconds >= 0 && seconds <= longestSeconds))
            return std::nullopt;
        return static_cast<std::uint64_t>(std::llround(seconds * ticksPerSecond));
    }
    return text == "0" ? std::optional<std::uint64_t>(0) : std::nullopt;
}

std::string durationText(double ticks) {
    const double seconds = ticks / ticksPerSecond;
    if (seconds == 0)
        return "0 s";
    for (const Unit& unit : units)
        if (seconds >= unit.seconds * 0.9999)
            return rounded(seconds / unit.seconds) + " " + unit.name;
    return rounded(seconds / 1e-9) + " ns";
}

} // namespace orbctl
