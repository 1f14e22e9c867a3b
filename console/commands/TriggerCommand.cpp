#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/Duration.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

/// The trigger parameters of one port as texts.
class TriggerValues {
  public:
    TriggerValues(Session& session, unsigned port) : mApplet(session.applet()), mCatalogue(mApplet, port) {}

    std::string text(const std::string& name) const {
        const Parameter* const parameter = mCatalogue.findName(name);
        if (parameter == nullptr)
            return "none";
        const Reading reading = readParameter(mApplet, *parameter);
        if (!reading.isGood())
            return readableText(*parameter, reading);
        return plainText(*parameter, reading.value) + (parameter->unit.empty() ? "" : " " + parameter->unit);
    }
    bool isYes(const std::string& name) const {
        const Parameter* const parameter = mCatalogue.findName(name);
        const Reading reading = parameter == nullptr ? Reading{} : readParameter(mApplet, *parameter);
        return reading.isGood() && numberOf(reading.value) == 1;
    }
    double number(const std::string& name) const {
        const Parameter* const parameter = mCatalogue.findName(name);
        return parameter == nullptr ? 0 : numberOf(readParameter(mApplet, *parameter).value);
    }

  private:
    const AppletHandle& mApplet;
    ParameterCatalogue mCatalogue;
};

std::string rateText(const TriggerValues& values) {
    const double rate = values.number("FG_TRIGGER_FRAMESPERSECOND");
    const std::string period = rate > 0 ? ", one frame in " + durationText(ticksPerSecond / rate) : "";
    return values.text("FG_TRIGGER_FRAMESPERSECOND") + " Hz" + period;
}

std::string inputText(const TriggerValues& values) {
    return values.text("FG_TRIGGERIN_SRC") + ", " + values.text("FG_TRIGGERIN_POLARITY") + ", debounce " +
           values.text("FG_TRIGGERIN_DEBOUNCE") + ", pulse " +
           textOf(values.number("FG_TRIGGERIN_DOWNSCALE_PHASE") + 1) + " of " +
           values.text("FG_TRIGGERIN_DOWNSCALE");
}

std::string inputStatisticsText(const TriggerValues& values) {
    return values.text("FG_TRIGGERIN_STATS_PULSECOUNT") + " pulses, " +
           values.text("FG_TRIGGERIN_STATS_FREQUENCY") + " (" +
           values.text("FG_TRIGGERIN_STATS_MINFREQUENCY") + " .. " +
           values.text("FG_TRIGGERIN_STATS_MAXFREQUENCY") + ")";
}

std::string queueText(const TriggerValues& values) {
    return values.text("FG_TRIGGERQUEUE_MODE") + ", " + values.text("FG_TRIGGERQUEUE_FILLLEVEL") +
           " waiting, events at " + values.text("FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD") + " and " +
           values.text("FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD") + ", each pulse " +
           values.text("FG_TRIGGER_MULTIPLY_PULSES") + " times";
}

std::string levelsText(const TriggerValues& values) {
    const auto levels = static_cast<unsigned>(values.number("FG_DIGIO_INPUT"));
    std::string text;
    for (unsigned pin = 0; pin < 8; ++pin)
        text += (pin == 0 ? "" : " ") + textOf(std::uint64_t{pin}) + ((levels >> pin & 1) != 0 ? "+" : "-");
    return text;
}

std::string countText(const TriggerValues& values) {
    return values.text("FG_TRIGGEROUT_STATS_PULSECOUNT") + " pulses of " +
           values.text("FG_TRIGGEROUT_STATS_SOURCE");
}

class TriggerCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override { mPort.declare(arguments); }

    ExitStatus run(Session& session) override {
        bool isFirst = true;
        for (const unsigned port : mPort.ports()) {
            session.output() << (isFirst ? "" : "\n");
            isFirst = false;
            print(session, port);
        }
        return ExitStatus::done;
    }

  private:
    static void print(Session& session, unsigned port) {
        const TriggerValues values(session, port);
        session.output() << session.outputTerminal().bold("Trigger system of port " +
                                                          textOf(std::uint64_t{port}))
                         << '\n';
        TextTable facts(2);
        facts.addRow({"Mode", values.text("FG_AREATRIGGERMODE")});
        facts.addRow({"State", stateText(session, values)});
        facts.addRow({"Rate", rateText(values)});
        facts.addRow({"Pins", levelsText(values)});
        facts.addRow({"Input", inputText(values)});
        facts.addRow({"", inputStatisticsText(values)});
        facts.addRow({"Queue", queueText(values)});
        facts.addRow({"Software", values.text("FG_SOFTWARETRIGGER_IS_BUSY") + ", " +
                                      values.text("FG_SOFTWARETRIGGER_QUEUE_FILLLEVEL") + " waiting"});
        facts.addRow({"Camera", values.text("FG_CAMERA_ACTION_COMMAND_SOURCE") + ", " +
                                    values.text("FG_CAMERA_ACTION_COMMAND_PENDING_COUNT") + " unanswered"});
        facts.addRow({"Bypass", values.text("FG_TRIGGERIN_BYPASS_SRC")});
        facts.addRow({"Counter", countText(values)});
        facts.addRow({"Flags", flagsText(session, values)});
        facts.print(session.output());
        printGenerators(session, values);
    }

    static std::string stateText(Session& session, const TriggerValues& values) {
        const std::string state = values.text("FG_TRIGGERSTATE");
        const Terminal& terminal = session.outputTerminal();
        return state == "TS_ACTIVE" ? terminal.good(state) : terminal.warning(state);
    }

    static std::string flagsText(Session& session, const TriggerValues& values) {
        std::string raised;
        if (values.isYes("FG_TRIGGER_EXCEEDED_PERIOD_LIMITS"))
            raised += "period limits exceeded";
        if (values.isYes("FG_MISSING_CAMERA_FRAME_RESPONSE"))
            raised += (raised.empty() ? "" : ", ") + std::string("camera frame missing");
        return raised.empty() ? "none" : session.outputTerminal().error(raised);
    }

    /// One line for each pulse form generator and the output of the same number.
    static void printGenerators(Session& session, const TriggerValues& values) {
        TextTable table(2);
        table.addRow({"Generator", "pulse", "delay (us)", "width (us)", "Output"});
        for (const char number : {'0', '1', '2', '3'}) {
            const std::string generator = std::string("FG_TRIGGER_PULSEFORMGEN") + number;
            const std::string pulse = textOf(values.number(generator + "_DOWNSCALE_PHASE") + 1) + " of " +
                                      values.text(generator + "_DOWNSCALE");
            table.addRow(
                {std::string(1, number), pulse, values.text(generator + "_DELAY"),
                 values.text(generator + "_WIDTH"),
                 number + std::string(": ") + values.text(std::string("FG_TRIGGEROUT_SELECT") + number)});
        }
        session.output() << '\n';
        table.print(session.output());
    }

    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeTriggerCommand() { return std::make_unique<TriggerCommand>(); }

} // namespace orbctl
