#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ConfigurationFile.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/Session.h"

namespace orbctl {

namespace {

class SaveCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.requiredText("FILE", mFile, "the file to write; its name holds .mcf");
    }

    ExitStatus run(Session& session) override {
        const AppletHandle& applet = session.applet();
        requireConfigurationName(mFile);
        const int code = applet.functions().saveConfiguration(applet.handle(), mFile.c_str());
        if (code != 0)
            throw Failure(statusOfFileError(code), mFile + " cannot be saved: " + withCode(code));
        const ConfigurationFile saved(mFile);
        const std::size_t keys = saved.keys(0).size() + saved.keys(1).size();
        session.messages() << textOf(std::uint64_t{keys}) << " values of both ports are in " << mFile << '\n';
        return ExitStatus::done;
    }

  private:
    std::string mFile;
};

} // namespace

std::unique_ptr<Command> makeSaveCommand() { return std::make_unique<SaveCommand>(); }

} // namespace orbctl
