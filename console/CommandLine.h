#pragma once

#include "console/Failure.h"

#include <string>
#include <vector>

namespace orbctl {

class Session;
struct Streams;

/// Runs the program: options, one command and what follows it.
/// \param words  the command line behind the program's name
ExitStatus runProgram(const std::vector<std::string>& words, Streams streams);

/// Runs one command in a session that is under way; options of the program itself are not taken.
ExitStatus runCommand(const std::vector<std::string>& words, Session& session);

} // namespace orbctl
