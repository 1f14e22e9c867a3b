#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavo::fuzz {

/// An element as it stands in a document, its texts without entities.
struct XmlElement {
    std::string tag;
    std::string parent; ///< tag of the element around it; empty for the root
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text; ///< the text inside; empty where elements stand inside

    /// The value of an attribute, or an empty text.
    std::string attribute(std::string_view name) const;
    bool operator<(const XmlElement& other) const;
    bool operator==(const XmlElement& other) const;
};

/// The text with the five entities replaced by their characters. Ends the program where an ampersand begins
/// none of them, or where a character stands that has to be an entity.
std::string withoutEntities(std::string_view text);

/// All elements in the order in which they begin. Ends the program when the document is not well-formed; which
/// characters its texts hold does not matter.
std::vector<XmlElement> scanXml(std::string_view document);

} // namespace kavo::fuzz
