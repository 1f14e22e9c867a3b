#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/Setting.h"

namespace orbctl {

namespace {

class TriggerSendCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("COUNT", mCount, "number of pulses, 1 unless given");
        mPort.declare(arguments);
    }

    ExitStatus run(Session& session) override {
        applySettings(session.applet(), mPort.ports(), {{"FG_SENDSOFTWARETRIGGER", mCount}});
        return ExitStatus::done;
    }

  private:
    std::string mCount = "1";
    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeTriggerSendCommand() { return std::make_unique<TriggerSendCommand>(); }

} // namespace orbctl
