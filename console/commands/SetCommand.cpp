#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/Setting.h"

namespace orbctl {

namespace {

/// "NAME VALUE" is taken where it cannot be meant otherwise.
std::vector<Setting> settingsFrom(const std::vector<std::string>& words) {
    const bool isPair = words.size() == 2 && words[0].find('=') == std::string::npos;
    if (isPair)
        return {{words[0], words[1]}};
    std::vector<Setting> settings;
    for (const std::string& word : words)
        settings.push_back(settingFrom(word));
    return settings;
}

class SetCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts("NAME=VALUE", mWords, 1,
                        "one or more settings, or one name and one value; enumeration entries by symbol, "
                        "display name or number");
        mPort.declare(arguments);
    }

    ExitStatus run(Session& session) override {
        const std::vector<Setting> settings = settingsFrom(mWords);
        applySettings(session.applet(), mPort.ports(), settings);
        return ExitStatus::done;
    }

  private:
    std::vector<std::string> mWords;
    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeSetCommand() { return std::make_unique<SetCommand>(); }

} // namespace orbctl
