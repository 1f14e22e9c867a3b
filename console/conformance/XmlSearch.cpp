#include "console/conformance/XmlSearch.h"

namespace orbctl {

namespace {

std::optional<std::string> contentBehind(const std::string& document, const std::string& kind,
                                         std::size_t start) {
    const std::size_t open = start == std::string::npos ? start : document.find('>', start);
    const std::size_t close = open == std::string::npos ? open : document.find("</" + kind + ">", open);
    if (close == std::string::npos)
        return std::nullopt;
    return document.substr(open + 1, close - open - 1);
}

} // namespace

std::optional<std::string> elementNamed(const std::string& document, const std::string& kind,
                                        const std::string& name) {
    for (const char quote : {'"', '\''}) {
        std::string start = "<" + kind + " Name=";
        start.append(1, quote).append(name).append(1, quote);
        const std::size_t found = document.find(start);
        if (found != std::string::npos)
            return contentBehind(document, kind, found);
    }
    return std::nullopt;
}

std::optional<std::string> firstElement(const std::string& document, const std::string& kind) {
    return contentBehind(document, kind, document.find("<" + kind + ">"));
}

std::string escaped(const std::string& text) {
    std::string result;
    for (const char letter : text) {
        switch (letter) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        case '\'':
            result += "&apos;";
            break;
        default:
            result += letter;
        }
    }
    return result;
}

} // namespace orbctl
