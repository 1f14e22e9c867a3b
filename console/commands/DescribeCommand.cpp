#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/NumberText.h"
#include "console/ParameterCatalogue.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

class DescribeCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts("NAME", mNames, 1, "names or ids");
        mPort.declare(arguments);
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        std::vector<Parameter> parameters;
        for (const unsigned port : mPort.ports()) {
            const ParameterCatalogue catalogue(session.applet(), port);
            for (const std::string& name : mNames)
                parameters.push_back(catalogue.find(name));
        }
        if (mJson)
            printJson(session, parameters);
        else
            printText(session, parameters);
        return ExitStatus::done;
    }

  private:
    static void printJson(Session& session, const std::vector<Parameter>& parameters) {
        JsonWriter json;
        json.beginArray();
        for (const Parameter& parameter : parameters) {
            json.beginObject();
            writeDescription(json, parameter);
            json.member("description", session.applet().description(parameter.name, parameter.port));
            if (!parameter.isField())
                writeReading(json, parameter, readParameter(session.applet(), parameter));
            json.endObject();
        }
        session.output() << json.endArray().text();
    }

    static void printText(Session& session, const std::vector<Parameter>& parameters) {
        bool isFirst = true;
        for (const Parameter& parameter : parameters) {
            session.output() << (isFirst ? "" : "\n");
            isFirst = false;
            print(session, parameter);
        }
    }

    static void print(Session& session, const Parameter& parameter) {
        session.output() << session.outputTerminal().bold(parameter.name) << '\n';
        const std::string description = session.applet().description(parameter.name, parameter.port);
        if (!description.empty())
            session.output() << "  " << description << "\n\n";
        TextTable facts(2);
        addIdentity(facts, parameter);
        addValue(facts, session, parameter);
        facts.print(session.output());
        printEntries(session, parameter);
    }

    static void addIdentity(TextTable& facts, const Parameter& parameter) {
        facts.addRow({"Id", textOf(std::int64_t{parameter.id})});
        facts.addRow({"Port", textOf(std::uint64_t{parameter.port})});
        if (!parameter.displayName.empty())
            facts.addRow({"Display name", parameter.displayName});
        facts.addRow({"Category", categoryText(parameter)});
        if (parameter.isDescribed)
            facts.addRow({"Kind", kindText(parameter.kind)});
        facts.addRow({"Access", accessText(parameter)});
    }

    static void addValue(TextTable& facts, Session& session, const Parameter& parameter) {
        if (!parameter.unit.empty())
            facts.addRow({"Unit", parameter.unit});
        const std::string range = rangeText(parameter);
        if (!range.empty() && parameter.entries.empty())
            facts.addRow({parameter.fileFilter.empty() ? "Range" : "File filter", range});
        if (!parameter.isField())
            facts.addRow({"Value", readableText(parameter, readParameter(session.applet(), parameter))});
    }

    static void printEntries(Session& session, const Parameter& parameter) {
        if (parameter.entries.empty())
            return;
        session.output() << "  Entries\n";
        TextTable entries(4);
        for (const EnumerationEntry& entry : parameter.entries)
            entries.addRow({entry.symbol, textOf(entry.value), entry.displayName});
        entries.print(session.output());
    }

    std::vector<std::string> mNames;
    PortChoice mPort{"0"};
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeDescribeCommand() { return std::make_unique<DescribeCommand>(); }

} // namespace orbctl
