#pragma once

#include <string>
#include <string_view>

/// The text with the five characters that XML reserves replaced by their entities; everything else is copied.
inline std::string xmlStringFilter(std::string_view text) {
    std::string filtered;
    filtered.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            filtered += "&amp;";
            break;
        case '<':
            filtered += "&lt;";
            break;
        case '>':
            filtered += "&gt;";
            break;
        case '"':
            filtered += "&quot;";
            break;
        case '\'':
            filtered += "&apos;";
            break;
        default:
            filtered += character;
        }
    }
    return filtered;
}

/// Only the ASCII letters, digits and underscores of the text, in their order.
inline std::string xmlNameFilter(std::string_view text) {
    std::string filtered;
    filtered.reserve(text.size());
    for (const char character : text) {
        const bool letter = (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
        if (letter || (character >= '0' && character <= '9') || character == '_') {
            filtered += character;
        }
    }
    return filtered;
}
