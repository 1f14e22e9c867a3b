#include "grabber_basis/NumberText.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

namespace kavo::text {
namespace {

constexpr int precision = 12;
/// Sign, the longest integral part, point, decimals.
constexpr std::size_t longestFixed = std::numeric_limits<double>::max_exponent10 + 16;

std::string convert(double value, std::chars_format format) {
    char text[longestFixed];
    const auto result = std::to_chars(text, text + sizeof text, value, format, precision);
    return std::string(text, result.ptr);
}

locale_t plainLocale() {
    // The system's own "C" locale is a static object: it takes no memory and is never freed.
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

const char* textOrEmpty(const char* text) { return text == nullptr ? "" : text; }

bool spellsWord(const char* text) {
    const char* const sign = text + std::strspn(text, " \t\n\v\f\r");
    const char* const first = sign + (*sign == '+' || *sign == '-' ? 1 : 0);
    return std::string_view("nNiI").find(*first) != std::string_view::npos;
}

} // namespace

std::string shortDouble(double value) { return convert(value, std::chars_format::general); }

std::string fixedDouble(double value) { return convert(value, std::chars_format::fixed); }

std::int32_t toInt32(const char* text) {
    constexpr long long least = std::numeric_limits<std::int32_t>::min();
    constexpr long long most = std::numeric_limits<std::int32_t>::max();
    const long long value = strtoll_l(textOrEmpty(text), nullptr, 10, plainLocale());
    return static_cast<std::int32_t>(std::clamp(value, least, most));
}

std::uint64_t toUInt64(const char* text) { return strtoull_l(textOrEmpty(text), nullptr, 10, plainLocale()); }

double toDouble(const char* text) {
    // Written again, an infinite number would be a word.
    constexpr double most = std::numeric_limits<double>::max();
    const char* const start = textOrEmpty(text);
    return spellsWord(start) ? 0.0 : std::clamp(strtod_l(start, nullptr, plainLocale()), -most, most);
}

} // namespace kavo::text
