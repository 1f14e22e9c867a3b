#pragma once

#include <string>
#include <utility>
#include <vector>

/// A port's section of a configuration file, in the order of the file.
using Section = std::vector<std::pair<std::string, std::string>>;

/// What a fresh applet saves for either port.
const Section& freshSection();
/// A legal section in which no value is that of a fresh applet. It can be loaded over a fresh one, and a
/// fresh one over it, without any value being refused.
/// \param customFile  path of a lookup-table file that exists
Section otherSection(const std::string& customFile);

/// The text of a whole file.
std::string configurationText(const Section& portA, const Section& portB);
std::string freshConfiguration();

/// A section with one value replaced, or one key left out.
Section with(Section section, const std::string& key, const std::string& value);
Section without(Section section, const std::string& key);
/// The value of a key; throws std::out_of_range when there is none.
const std::string& valueIn(const Section& section, const std::string& key);
/// A text with the first occurrence of a part replaced; throws std::out_of_range when there is none.
std::string replaced(std::string text, const std::string& part, const std::string& by);
