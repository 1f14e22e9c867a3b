#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/conformance/Conformance.h"
#include "console/Interruption.h"
#include "console/Json.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"

namespace orbctl {

namespace {

std::string lineOf(const CheckResult& result) {
    const std::string port = result.subject.port ? portPrefix(*result.subject.port) : "";
    return port + result.subject.name + ' ' + result.what +
           (result.detail.empty() ? "" : ": " + result.detail);
}

const char* wordOf(CheckOutcome outcome) {
    switch (outcome) {
    case CheckOutcome::held:
        return "ok";
    case CheckOutcome::failed:
        return "FAIL";
    case CheckOutcome::skipped:
        break;
    }
    return "skip";
}

void print(Session& session, const CheckResult& result) {
    const Terminal& terminal = session.outputTerminal();
    switch (result.outcome) {
    case CheckOutcome::held:
        session.output() << terminal.good("ok") << "   " << lineOf(result) << '\n';
        break;
    case CheckOutcome::failed:
        session.output() << terminal.error("FAIL") << ' ' << lineOf(result) << ": expected "
                         << result.expected << ", got " << result.got << '\n';
        break;
    case CheckOutcome::skipped:
        session.output() << terminal.warning("skip") << ' ' << lineOf(result) << ": " << result.expected
                         << '\n';
        break;
    }
}

void add(JsonWriter& json, const CheckResult& result) {
    json.beginObject();
    json.name("port");
    if (result.subject.port)
        json.value(*result.subject.port);
    else
        json.null();
    json.member("name", result.subject.name).member("check", result.what);
    json.member("detail", result.detail).member("result", wordOf(result.outcome));
    if (result.outcome == CheckOutcome::failed)
        json.member("expected", result.expected).member("got", result.got);
    if (result.outcome == CheckOutcome::skipped)
        json.member("reason", result.expected);
    json.endObject();
}

std::string groupsText() {
    std::string text;
    for (const std::string& group : checkGroups())
        text += (text.empty() ? "" : ", ") + group;
    return text;
}

class CheckCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts(
            "NAME", mPatterns, 0,
            "only these parameters or groups; * and ? stand for any letters (groups: " + groupsText() + ")");
        mPort.declare(arguments);
        arguments.flag("-b,--brief", mBrief, "only what fails or is skipped, and the total");
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        const Interruption interruption;
        JsonWriter json;
        json.beginObject().name("checks").beginArray();
        CheckReport report([&](const CheckResult& result) {
            if (mBrief && result.outcome == CheckOutcome::held)
                return;
            mJson ? add(json, result) : print(session, result);
        });
        const AppletHandle& applet = session.applet();
        Conformance(applet, session.openAppletLibrary(), report, {mPort.ports(), mPatterns}).run();
        if (mJson)
            session.output() << totalled(json.endArray(), report);
        else
            printTotal(session, report);
        if (Interruption::isAskedFor())
            return ExitStatus::interrupted;
        return report.failed() == 0 ? ExitStatus::done : ExitStatus::different;
    }

  private:
    static std::string totalled(JsonWriter& json, const CheckReport& report) {
        json.member("made", report.made()).member("failed", report.failed());
        return json.member("skipped", report.skipped()).endObject().text();
    }

    static void printTotal(Session& session, const CheckReport& report) {
        const auto count = [](unsigned number) { return textOf(std::uint64_t{number}); };
        session.output() << count(report.made()) << " checks, "
                         << (report.failed() == 0 ? "all hold" : count(report.failed()) + " failed")
                         << (report.skipped() == 0 ? "" : ", " + count(report.skipped()) + " skipped")
                         << (Interruption::isAskedFor() ? "; stopped before the end" : "") << '\n';
    }

    PortChoice mPort{"both"};
    std::vector<std::string> mPatterns;
    bool mBrief = false;
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeCheckCommand() { return std::make_unique<CheckCommand>(); }

} // namespace orbctl
