#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/WholeFile.h"

namespace orbctl {

namespace {

void require(int code, unsigned port) {
    if (code != 0)
        throw Failure(ExitStatus::refused, "the applet does not describe port " +
                                               textOf(std::uint64_t{port}) + ": " + withCode(code));
}

std::string descriptionOf(const AppletHandle& applet, unsigned port) {
    const auto& describe = applet.functions().parameterXml;
    const int place = static_cast<int>(port);
    unsigned bytes = 0;
    require(describe(applet.handle(), place, nullptr, &bytes), port);
    std::string text(bytes, '\0');
    require(describe(applet.handle(), place, text.data(), &bytes), port);
    return text.substr(0, text.find('\0'));
}

class XmlCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.text("-o,--out", mFile, "write into this file instead of standard output");
    }

    ExitStatus run(Session& session) override {
        const unsigned port = mPort.onlyPort("an XML document describes one port");
        const std::string text = descriptionOf(session.applet(), port);
        if (mFile.empty())
            session.output() << text;
        else
            writeWholeFile(mFile, text);
        return ExitStatus::done;
    }

  private:
    PortChoice mPort{"0"};
    std::string mFile;
};

} // namespace

std::unique_ptr<Command> makeXmlCommand() { return std::make_unique<XmlCommand>(); }

} // namespace orbctl
