#include "console/Utf8.h"

namespace orbctl {

namespace {

unsigned byteAt(std::string_view text, std::size_t index) { return static_cast<unsigned char>(text[index]); }

std::size_t announcedLength(unsigned first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return 2;
    if (first >= 0xE0 && first <= 0xEF)
        return 3;
    return first >= 0xF0 && first <= 0xF4 ? 4 : 0;
}

/// Overlong forms, surrogates and what lies beyond U+10FFFF show in the second byte.
bool isSecondByteAllowed(unsigned first, unsigned second) {
    switch (first) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second <= 0x9F;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second <= 0x8F;
    default:
        return true;
    }
}

} // namespace

std::size_t utf8SequenceLength(std::string_view text) {
    const std::size_t length = announcedLength(byteAt(text, 0));
    if (length == 0 || length > text.size())
        return 0;
    for (std::size_t index = 1; index < length; ++index)
        if ((byteAt(text, index) & 0xC0) != 0x80)
            return 0;
    return length == 1 || isSecondByteAllowed(byteAt(text, 0), byteAt(text, 1)) ? length : 0;
}

std::size_t displayWidth(std::string_view text) {
    std::size_t width = 0;
    for (; !text.empty(); ++width) {
        const std::size_t length = utf8SequenceLength(text);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return width;
}

} // namespace orbctl
