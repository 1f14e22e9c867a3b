#pragma once

#include "console/Failure.h"

#include <memory>
#include <string>
#include <vector>

namespace orbctl {

class Arguments;
class Session;

/// One subcommand of the program.
class Command {
  public:
    virtual ~Command() = default;

    virtual void declareArguments(Arguments& arguments) = 0;
    /// Does the work. Values go to session.output(), everything else to session.messages().
    /// \throws Failure where it cannot be done
    virtual ExitStatus run(Session& session) = 0;
};

/// A row of the table of commands.
struct CommandEntry {
    std::string name; ///< "list"; a word more for a command below another ("registers read")
    std::string summary;
    std::unique_ptr<Command> (*make)();
};

/// All commands, in the order of the help page; a command stands before those below it.
const std::vector<CommandEntry>& allCommands();

} // namespace orbctl
