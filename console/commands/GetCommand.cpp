#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/ParameterCatalogue.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/Setting.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

class GetCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts("NAME", mNames, 1, "names or ids; FIELD[INDEX] for an element of a field");
        mPort.declare(arguments);
        arguments.flag("-n,--value", mValueOnly, "print values without names");
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        std::vector<Target> targets;
        for (const unsigned port : mPort.ports()) {
            const ParameterCatalogue catalogue(session.applet(), port);
            for (const std::string& name : mNames)
                targets.push_back(targetFrom(catalogue, name));
        }
        mJsonText.beginArray();
        for (const Target& target : targets)
            show(session, target);
        if (mJson)
            session.output() << mJsonText.endArray().text();
        return mStatus;
    }

  private:
    void show(Session& session, const Target& target) {
        const Parameter& parameter = target.parameter;
        const Reading reading = readParameter(session.applet(), parameter, target.element);
        if (mJson)
            addJson(target, reading);
        else if (reading.isGood())
            session.output() << line(target, reading) << '\n';
        if (reading.isGood())
            return;
        mStatus = ExitStatus::refused;
        session.messages() << "orbctl: " << portPrefix(mPort.ports(), parameter.port)
                           << refusedRead(parameter, reading.code) << '\n';
    }

    void addJson(const Target& target, const Reading& reading) {
        mJsonText.beginObject();
        writeIdentity(mJsonText, target.parameter);
        if (target.parameter.isField())
            mJsonText.member("element", target.element);
        writeReading(mJsonText, target.parameter, reading);
        if (!target.parameter.unit.empty())
            mJsonText.member("unit", target.parameter.unit);
        mJsonText.endObject();
    }

    std::string line(const Target& target, const Reading& reading) const {
        if (mValueOnly)
            return plainText(target.parameter, reading.value);
        const std::string unit = target.parameter.unit.empty() ? "" : " " + target.parameter.unit;
        return portPrefix(mPort.ports(), target.parameter.port) + target.name + " = " +
               readableText(target.parameter, reading.value) + unit;
    }

    std::vector<std::string> mNames;
    PortChoice mPort{"0"};
    bool mValueOnly = false;
    bool mJson = false;
    JsonWriter mJsonText;
    ExitStatus mStatus = ExitStatus::done;
};

} // namespace

std::unique_ptr<Command> makeGetCommand() { return std::make_unique<GetCommand>(); }

} // namespace orbctl
