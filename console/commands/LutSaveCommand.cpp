#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/LookupTable.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"

namespace orbctl {

namespace {

class LutSaveCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.requiredText("FILE", mFile, "the file to write");
        mPort.declare(arguments);
    }

    ExitStatus run(Session& session) override {
        const unsigned port = mPort.onlyPort("a file holds the table of one port");
        if (mFile.empty())
            throw Failure(ExitStatus::usage, "the name of the file is empty");
        saveLookupTable(session.applet(), port, mFile);
        session.messages() << "The table of port " << textOf(std::uint64_t{port}) << " is in " << mFile
                           << '\n';
        return ExitStatus::done;
    }

  private:
    std::string mFile;
    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeLutSaveCommand() { return std::make_unique<LutSaveCommand>(); }

} // namespace orbctl
