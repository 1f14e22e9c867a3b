#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/DiagramSvg.h"
#include "console/DiagramText.h"
#include "console/Duration.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TriggerRecording.h"
#include "console/WholeFile.h"

namespace orbctl {

namespace {

class TriggerPlotCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.text("-t,--time", mTime, "span of board time, such as 500ms or 20us");
        arguments.texts("--at", mSettings, 0,
                        "TIME:NAME=VALUE set while the time passes; may be given again");
        arguments.texts("--pulses", mPulses, 0,
                        "INPUT:PERIOD[:COUNT], pulses on an input pin, such as 0:10ms:5; may be given again");
        arguments.text("--svg", mSvgFile, "write the diagram into this file too");
        arguments.number("-w,--width", mWidth, 0, 1000, "columns; 0: those of the terminal");
    }

    ExitStatus run(Session& session) override {
        const RecordingPlan plan = planOf(session);
        const TriggerDiagram diagram = recorded(session, plan);
        if (!mSvgFile.empty())
            writeWholeFile(mSvgFile, svgOf(diagram));
        const unsigned width = mWidth == 0 ? static_cast<unsigned>(session.outputTerminal().width()) : mWidth;
        session.output() << textOf(diagram, width);
        if (!mSvgFile.empty())
            session.messages() << "The diagram is in " << mSvgFile << '\n';
        return ExitStatus::done;
    }

  private:
    RecordingPlan planOf(Session& session) const {
        RecordingPlan plan;
        plan.ports = mPort.ports();
        const auto ticks = ticksFrom(mTime);
        if (!ticks || *ticks == 0)
            throw Failure(ExitStatus::usage, "\"" + mTime + "\" is no span of time; write 500ms or 20us");
        plan.ticks = *ticks;
        for (const std::string& text : mSettings)
            plan.settings.push_back(timedSettingFrom(text));
        for (const std::string& text : mPulses)
            plan.inputs.push_back(inputPulsesFrom(text));
        for (const unsigned port : plan.ports)
            plan.title += (plan.title.empty() ? "" : "; ") + triggerTitle(session, port);
        return plan;
    }

    PortChoice mPort{"0"};
    std::string mTime = "500ms";
    std::vector<std::string> mSettings;
    std::vector<std::string> mPulses;
    std::string mSvgFile;
    unsigned mWidth = 0;
};

} // namespace

std::unique_ptr<Command> makeTriggerPlotCommand() { return std::make_unique<TriggerPlotCommand>(); }

} // namespace orbctl
