#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ConfigurationComparison.h"
#include "console/NumberText.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

class DiffCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.requiredText("FILE", mFile, "the configuration file");
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        const AppletHandle& applet = session.applet();
        const ConfigurationFile file(mFile);
        const ConfigurationFile reference = savedConfiguration(applet);
        const ParameterSnapshot board(applet);
        const std::vector<ComparedKey> differences = differencesOf(compared(file, reference, board));
        const std::string obstacle = obstacleTo(file, reference);
        if (mJson)
            printJson(session, differences, obstacle);
        else
            print(session, differences);
        warn(session, obstacle, unknownKeys(file, reference));
        return differences.empty() && obstacle.empty() ? ExitStatus::done : ExitStatus::different;
    }

  private:
    static std::vector<ComparedKey> differencesOf(const std::vector<ComparedKey>& keys) {
        std::vector<ComparedKey> differences;
        for (const ComparedKey& key : keys)
            if (key.isDifferent())
                differences.push_back(key);
        return differences;
    }

    static std::string fileText(const ComparedKey& key) {
        return key.agreement == Agreement::missing
                   ? "missing in the file"
                   : readableText(key.state->parameter, key.value) + " in the file";
    }

    static void print(Session& session, const std::vector<ComparedKey>& differences) {
        for (const ComparedKey& key : differences) {
            const Parameter& parameter = key.state->parameter;
            session.output() << portPrefix(parameter.port) << parameter.name << ": " << fileText(key) << ", "
                             << textWithUnit(parameter, key.state->reading) << " on the board\n";
        }
    }

    void printJson(Session& session, const std::vector<ComparedKey>& differences,
                   const std::string& obstacle) const {
        JsonWriter json;
        json.beginObject().member("equal", differences.empty() && obstacle.empty());
        if (!obstacle.empty())
            json.member("obstacle", obstacle);
        json.name("differences").beginArray();
        for (const ComparedKey& key : differences)
            add(json, key);
        json.endArray().endObject();
        session.output() << json.text();
    }

    static void add(JsonWriter& json, const ComparedKey& key) {
        const Parameter& parameter = key.state->parameter;
        json.beginObject();
        writeIdentity(json, parameter);
        json.name("file");
        if (key.agreement == Agreement::missing)
            json.null();
        else
            json.beginObject(), writeReading(json, parameter, {0, key.value}), json.endObject();
        json.name("board").beginObject();
        writeReading(json, parameter, key.state->reading);
        json.endObject().endObject();
    }

    void warn(Session& session, const std::string& obstacle, const std::vector<UnknownKey>& unknown) const {
        if (!obstacle.empty())
            session.messages() << mFile << " cannot be loaded: " << obstacle << '\n';
        for (const UnknownKey& key : unknown)
            session.messages() << portPrefix(key.port) << "the applet has no " << key.key
                               << "; loading passes it over\n";
    }

    std::string mFile;
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeDiffCommand() { return std::make_unique<DiffCommand>(); }

} // namespace orbctl
