#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/Json.h"
#include "console/LookupTable.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"

namespace orbctl {

namespace {

/// Entries between those that are shown unless all are asked for.
constexpr std::size_t sampleDistance = 256;

class LutShowCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.flag("--all", mAll, "every entry, not one in 256");
        arguments.flag("--json", mJson, "write JSON, with every entry");
    }

    ExitStatus run(Session& session) override {
        JsonWriter json;
        json.beginArray();
        for (const unsigned port : mPort.ports()) {
            const LookupTable table = lookupTableOf(session.applet(), port);
            if (mJson)
                add(json, table);
            else
                print(session, table);
        }
        if (mJson)
            session.output() << json.endArray().text();
        return ExitStatus::done;
    }

  private:
    void print(Session& session, const LookupTable& table) const {
        const std::string title = "Lookup table of port " + textOf(std::uint64_t{table.port});
        session.output() << (table.port == mPort.ports().front() ? "" : "\n")
                         << session.outputTerminal().bold(title) << '\n';
        TextTable facts(2);
        facts.addRow({"Type", table.type});
        facts.addRow({"Processor", processingText(table) + (table.isProcessed ? "" : " (not in use)")});
        const std::string file = table.file.empty() ? "none" : table.file;
        facts.addRow({"File", table.isProcessed && !table.file.empty() ? file + " (not in use)" : file});
        facts.addRow({"Outputs", outputsText(table)});
        if (table.isProcessed && !table.followsProcessor())
            facts.addRow({"", "entries set by hand"});
        facts.print(session.output());
        printEntries(session, table);
    }

    static std::string outputsText(const LookupTable& table) {
        return textOf(std::uint64_t{table.smallest()}) + " .. " + textOf(std::uint64_t{table.largest()}) +
               (table.isIdentity() ? ", each as its input" : "");
    }

    void printEntries(Session& session, const LookupTable& table) const {
        TextTable entries(2);
        entries.addRow({"Input", "Output"});
        const std::size_t distance = mAll ? 1 : sampleDistance;
        for (std::size_t input = 0; input < table.values.size(); input += distance)
            addEntry(entries, table, input);
        if (!mAll && !table.values.empty())
            addEntry(entries, table, table.values.size() - 1);
        entries.print(session.output());
    }

    static void addEntry(TextTable& entries, const LookupTable& table, std::size_t input) {
        entries.addRow({textOf(std::uint64_t{input}), textOf(std::uint64_t{table.values[input]})});
    }

    static void add(JsonWriter& json, const LookupTable& table) {
        json.beginObject().member("port", table.port).member("type", table.type);
        json.member("file", table.file).member("offset", table.offset).member("gain", table.gain);
        json.member("gamma", table.gamma).member("invert", table.isInverted);
        json.name("values").beginArray();
        for (const std::uint32_t value : table.values)
            json.value(std::uint64_t{value});
        json.endArray().endObject();
    }

    PortChoice mPort{"0"};
    bool mAll = false;
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeLutShowCommand() { return std::make_unique<LutShowCommand>(); }

} // namespace orbctl
