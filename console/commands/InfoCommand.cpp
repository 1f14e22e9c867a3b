#include "console/commands/Commands.h"

#include "console/AppletIdentity.h"
#include "console/Arguments.h"
#include "console/Json.h"
#include "console/NumberText.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/WholeFile.h"

namespace orbctl {

namespace {

constexpr int iconSelector = 1041;
constexpr int designSelector = 1042;
/// What a reader wants to know first, in this order: the texts name, version, build, description, category,
/// properties and GUID, and the design's type.
constexpr int identitySelectors[] = {4176, 4192, 4208, 4096, 4112, 4128, 1043, 2176};

std::string identityText(const InfoAnswer& answer) {
    const bool isResult = answer.selector.output == InfoOutput::none;
    return isResult ? textOf(std::int64_t{answer.result}) : outputText(answer);
}

void saveBlock(const HostFunctions& functions, int selector, const std::string& file) {
    if (file.empty())
        return;
    const InfoAnswer answer = ask(functions, selector);
    writeWholeFile(file, std::string(static_cast<const char*>(answer.data), answer.number));
}

class InfoCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.flag("--json", mJson, "write JSON");
        arguments.text("--icon", mIconFile, "write the applet's icon (PNG) into this file");
        arguments.text("--design", mDesignFile, "write the applet's design image into this file");
    }

    ExitStatus run(Session& session) override {
        const HostLibrary library = session.openAppletLibrary();
        HostFunctions functions;
        functions.bind(library);
        saveBlock(functions, iconSelector, mIconFile);
        saveBlock(functions, designSelector, mDesignFile);
        if (mJson)
            printJson(session, functions);
        else
            printText(session, functions);
        return ExitStatus::done;
    }

  private:
    static void printText(Session& session, const HostFunctions& functions) {
        TextTable identity(2);
        for (const int selector : identitySelectors) {
            const InfoAnswer answer = ask(functions, selector);
            identity.addRow({answer.selector.name, identityText(answer)});
        }
        TextTable selectors(2);
        for (const InfoAnswer& answer : askEverything(functions))
            selectors.addRow({textOf(std::int64_t{answer.selector.number}),
                              answer.selector.isPerPort ? "port " + textOf(std::uint64_t{answer.port}) : "",
                              textOf(std::int64_t{answer.result}), outputText(answer)});
        TextTable constants(2);
        for (const NamedConstant& constant : namedConstants(functions))
            constants.addRow(
                {constant.name, constant.value ? textOf(std::int64_t{*constant.value}) : "unknown"});
        print(session, "Applet", identity);
        print(session, "\nSelectors: number, port, result, output", selectors);
        print(session, "\nNamed constants", constants);
    }

    static void print(Session& session, const std::string& heading, const TextTable& table) {
        session.output() << session.outputTerminal().bold(heading) << '\n';
        table.print(session.output());
    }

    static void printJson(Session& session, const HostFunctions& functions) {
        JsonWriter json;
        json.beginObject();
        for (const int selector : identitySelectors) {
            const InfoAnswer answer = ask(functions, selector);
            json.member(answer.selector.name, identityText(answer));
        }
        addSelectors(json, functions);
        addConstants(json, functions);
        session.output() << json.endObject().text();
    }

    static void addSelectors(JsonWriter& json, const HostFunctions& functions) {
        json.name("selectors").beginArray();
        for (const InfoAnswer& answer : askEverything(functions)) {
            json.beginObject().member("selector", answer.selector.number);
            if (answer.selector.isPerPort)
                json.member("port", answer.port);
            json.member("result", answer.result);
            if (answer.selector.output == InfoOutput::text)
                json.member("text", answer.text);
            else if (answer.selector.output == InfoOutput::block)
                json.member("bytes", std::uint64_t{answer.number});
            else if (answer.selector.output != InfoOutput::none)
                json.member("value", std::uint64_t{answer.number});
            json.endObject();
        }
        json.endArray();
    }

    static void addConstants(JsonWriter& json, const HostFunctions& functions) {
        json.name("constants").beginObject();
        for (const NamedConstant& constant : namedConstants(functions))
            if (constant.value)
                json.member(constant.name, *constant.value);
        json.endObject();
    }

    bool mJson = false;
    std::string mIconFile;
    std::string mDesignFile;
};

} // namespace

std::unique_ptr<Command> makeInfoCommand() { return std::make_unique<InfoCommand>(); }

} // namespace orbctl
