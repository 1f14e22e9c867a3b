#pragma once

#include <string>
#include <string_view>

/// Appends a text to `out` with the five characters that XML reserves replaced by their entities.
template <class Text>
void appendXmlFiltered(Text& out, std::string_view text) {
    const auto entity = [](char character) -> std::string_view {
        switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&apos;";
        default:
            return {};
        }
    };
    std::size_t copied = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (const std::string_view replacement = entity(text[index]); !replacement.empty()) {
            out << text.substr(copied, index - copied) << replacement;
            copied = index + 1;
        }
    }
    out << text.substr(copied);
}

/// The text with the five characters that XML reserves replaced by their entities; everything else is copied.
std::string xmlStringFilter(std::string_view text);

/// Only the ASCII letters, digits and underscores of the text, in their order.
std::string xmlNameFilter(std::string_view text);
