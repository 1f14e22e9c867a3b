#pragma once

#include <optional>
#include <string>

namespace orbctl {

/// What stands inside the first element of a kind with a name, without the element itself; empty where there
/// is none. Good for descriptions, whose elements of one kind never hold one another.
std::optional<std::string> elementNamed(const std::string& document, const std::string& kind,
                                        const std::string& name);
/// What stands inside the first element of a kind; empty where there is none.
std::optional<std::string> firstElement(const std::string& document, const std::string& kind);
/// A text as it stands in a document.
std::string escaped(const std::string& text);

} // namespace orbctl
