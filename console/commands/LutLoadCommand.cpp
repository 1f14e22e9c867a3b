#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/LookupTable.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"

namespace orbctl {

namespace {

std::size_t changedEntries(const LookupTable& before, const LookupTable& after) {
    std::size_t changed = 0;
    for (std::size_t input = 0; input < after.values.size() && input < before.values.size(); ++input)
        changed += before.values[input] == after.values[input] ? 0 : 1;
    return changed;
}

class LutLoadCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.requiredText("FILE", mFile, "a lookup-table file");
        mPort.declare(arguments);
    }

    ExitStatus run(Session& session) override {
        if (mFile.empty())
            throw Failure(ExitStatus::usage, "the name of the file is empty");
        for (const unsigned port : mPort.ports()) {
            const LookupTable before = lookupTableOf(session.applet(), port);
            loadLookupTable(session.applet(), port, mFile);
            const LookupTable after = lookupTableOf(session.applet(), port);
            session.messages() << portPrefix(port) << mFile << " is loaded, "
                               << textOf(std::uint64_t{changedEntries(before, after)}) << " of "
                               << textOf(std::uint64_t{after.values.size()}) << " entries changed\n";
        }
        return ExitStatus::done;
    }

  private:
    std::string mFile;
    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeLutLoadCommand() { return std::make_unique<LutLoadCommand>(); }

} // namespace orbctl
