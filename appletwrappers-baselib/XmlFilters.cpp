#include "appletwrappers-baselib/XmlFilters.h"

#include "appletwrappers-baselib/XmlText.h"

#include <algorithm>

std::string xmlStringFilter(std::string_view text) {
    XmlText filtered(text.size());
    appendXmlFiltered(filtered, text);
    return filtered.str();
}

std::string xmlNameFilter(std::string_view text) {
    std::string filtered(text);
    const auto isDropped = [](char character) {
        const bool letter = (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
        return !letter && !(character >= '0' && character <= '9') && character != '_';
    };
    filtered.erase(std::remove_if(filtered.begin(), filtered.end(), isDropped), filtered.end());
    return filtered;
}
