#include "console/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace orbctl {

namespace {

template <typename... Arguments>
std::string written(Arguments... arguments) {
    std::array<char, 512> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), arguments...);
    return {text.data(), end.ptr};
}

bool isHexadecimal(std::string_view text) {
    return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

template <typename Number, typename... Format>
std::optional<Number> read(std::string_view text, Format... format) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number, format...);
    if (result.ec != std::errc{} || result.ptr != end)
        return std::nullopt;
    return number;
}

std::string_view withoutPlus(std::string_view text) {
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return hasPlus ? text.substr(1) : text;
}

} // namespace

std::string textOf(double number) {
    const double size = std::fabs(number);
    const bool readable = size == 0 || (size >= 1e-6 && size < 1e15);
    return readable ? written(number, std::chars_format::fixed) : written(number);
}

std::string textOf(std::uint64_t number) { return written(number); }

std::string textOf(std::int64_t number) { return written(number); }

std::string textWithDigits(double number, int digits) {
    return written(number, std::chars_format::fixed, digits);
}

std::string hexadecimalText(std::uint64_t number, int digits) {
    const std::string text = written(number, 16);
    const auto width = static_cast<std::size_t>(digits);
    return "0x" + std::string(text.size() < width ? width - text.size() : 0, '0') + text;
}

std::optional<std::uint64_t> unsignedFrom(std::string_view text) {
    text = withoutPlus(text);
    return isHexadecimal(text) ? read<std::uint64_t>(text.substr(2), 16) : read<std::uint64_t>(text, 10);
}

std::optional<std::int64_t> signedFrom(std::string_view text) {
    text = withoutPlus(text);
    if (!isHexadecimal(text))
        return read<std::int64_t>(text, 10);
    const std::optional<std::uint64_t> number = unsignedFrom(text);
    if (!number || *number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return std::nullopt;
    return static_cast<std::int64_t>(*number);
}

std::optional<double> doubleFrom(std::string_view text) {
    text = withoutPlus(text);
    if (isHexadecimal(text)) {
        const std::optional<std::uint64_t> number = unsignedFrom(text);
        return number ? std::optional<double>(static_cast<double>(*number)) : std::nullopt;
    }
    return read<double>(text);
}

} // namespace orbctl
