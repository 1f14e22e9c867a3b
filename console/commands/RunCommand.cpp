#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/CommandLine.h"
#include "console/NumberText.h"
#include "console/Session.h"
#include "console/WordSplitting.h"

#include <fstream>
#include <iostream>

namespace orbctl {

namespace {

class RunCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("FILE", mFile,
                       "commands, one a line, as behind the program's name; - is standard input");
        arguments.flag("-k,--keep-going", mKeepGoing, "go on behind a command that fails");
    }

    ExitStatus run(Session& session) override {
        if (!session.beginScript())
            throw Failure(ExitStatus::usage, "run cannot be used inside a file that is run");
        session.keepStartValues();
        if (mFile == "-")
            return runLines(std::cin, session);
        std::ifstream stream(mFile);
        if (!stream)
            throw Failure(ExitStatus::notFound, "the file " + mFile + " cannot be read");
        return runLines(stream, session);
    }

  private:
    ExitStatus runLines(std::istream& stream, Session& session) {
        ExitStatus status = ExitStatus::done;
        std::string line;
        for (unsigned number = 1; std::getline(stream, line); ++number) {
            const ExitStatus lineStatus = runLine(line, number, session);
            if (lineStatus == ExitStatus::done)
                continue;
            status = lineStatus;
            if (!mKeepGoing || lineStatus == ExitStatus::interrupted)
                break;
        }
        return status;
    }

    ExitStatus runLine(const std::string& line, unsigned number, Session& session) const {
        const ExitStatus status = runWords(line, session);
        session.output().flush();
        if (status != ExitStatus::done)
            session.messages() << (mFile == "-" ? "standard input" : mFile) << ", line "
                               << textOf(std::uint64_t{number}) << ": " << line << '\n';
        return status;
    }

    static ExitStatus runWords(const std::string& line, Session& session) {
        try {
            const std::vector<std::string> words = wordsOf(line);
            return words.empty() ? ExitStatus::done : runCommand(words, session);
        } catch (const Failure& failure) {
            session.messages() << "orbctl: " << failure.what() << '\n';
            return failure.status();
        }
    }

    std::string mFile = "-";
    bool mKeepGoing = false;
};

} // namespace

std::unique_ptr<Command> makeRunCommand() { return std::make_unique<RunCommand>(); }

} // namespace orbctl
