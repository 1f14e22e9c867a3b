#pragma once

#include <string>
#include <vector>

namespace orbelline::tests {

/// Runs a command of the shell and returns the lines of its standard output.
/// \throws std::runtime_error  naming the command, when it cannot be run or fails
std::vector<std::string> outputLines(const std::string& command);

/// The words of a line, split at blanks and tabs.
std::vector<std::string> words(const std::string& line);

/// The lines that hold a text, in their order.
std::vector<std::string> linesWith(const std::vector<std::string>& lines, const std::string& text);

/// The lines of a file.
/// \throws std::runtime_error  when it cannot be read
std::vector<std::string> fileLines(const std::string& path);

/// The bytes of a file.
/// \throws std::runtime_error  when it cannot be read
std::string fileBytes(const std::string& path);

} // namespace orbelline::tests
