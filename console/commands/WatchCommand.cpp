#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/CommandLine.h"
#include "console/Interruption.h"
#include "console/Session.h"

#include <chrono>
#include <thread>

namespace orbctl {

namespace {

constexpr const char* clearScreen = "\033[H\033[2J";

class WatchCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.decimal("-i,--interval", mSeconds, "seconds between two views");
        arguments.number("-n,--count", mCount, 0, 1000000, "number of views; 0: until Ctrl-C");
        arguments.rest("COMMAND", mWords, "the command whose output is shown again and again");
    }

    ExitStatus run(Session& session) override {
        if (mWords.empty())
            throw Failure(ExitStatus::usage, "watch needs a command to repeat");
        if (mWords.front() == "watch" || mWords.front() == "run")
            throw Failure(ExitStatus::usage, mWords.front() + " cannot be watched");
        const Interruption interruption;
        for (unsigned view = 1; !Interruption::isAskedFor(); ++view) {
            const ExitStatus status = show(session, view);
            if (status != ExitStatus::done || view == mCount)
                return status;
            sleep();
        }
        return ExitStatus::done;
    }

  private:
    ExitStatus show(Session& session, unsigned view) const {
        if (session.outputTerminal().isInteractive())
            session.output() << clearScreen;
        else if (view > 1)
            session.output() << '\n';
        const ExitStatus status = runCommand(mWords, session);
        session.output().flush();
        return status;
    }

    void sleep() const {
        using Clock = std::chrono::steady_clock;
        const auto end = Clock::now() + std::chrono::duration<double>(mSeconds);
        while (!Interruption::isAskedFor() && Clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    double mSeconds = 1;
    unsigned mCount = 0;
    std::vector<std::string> mWords;
};

} // namespace

std::unique_ptr<Command> makeWatchCommand() { return std::make_unique<WatchCommand>(); }

} // namespace orbctl
