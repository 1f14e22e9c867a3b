#pragma once

#include <string>
#include <vector>

namespace kavo::test {

/// Holds an XML description to the rules in DescriptionRules.xsd.
/// \return one line for every place that breaks a rule, in the order of the document: the name of the node and
///         the rule in words. Empty when the document keeps them all. A text that is no XML gives the line
///         "not well-formed".
std::vector<std::string> brokenRules(const std::string& xml);

} // namespace kavo::test
