#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/BoardControl.h"
#include "console/DemoSteps.h"
#include "console/DiagramSvg.h"
#include "console/DiagramText.h"
#include "console/Duration.h"
#include "console/Interruption.h"
#include "console/PictureFolder.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/Setting.h"
#include "console/TriggerRecording.h"
#include "console/WholeFile.h"

namespace orbctl {

namespace {

class DemoCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("-o,--out", mFolder, "folder for the pictures, made where it is missing");
        arguments.choice("-f,--format", mFormat, {"png", "pgm"}, "kind of the files");
    }

    ExitStatus run(Session& session) override {
        const Interruption interruption;
        const PictureFolder folder(mFolder, pictureFormatFrom(mFormat));
        setScene(session, folder);
        session.applet();
        session.output() << "Opened a board with " << session.appletName() << '\n';
        for (const PictureStep& step : pictureSteps()) {
            acquire(step, folder, session);
            if (Interruption::isAskedFor())
                return ExitStatus::interrupted;
        }
        if (BoardControl::isOfferedBy(session.runtime()))
            for (const DiagramStep& step : diagramSteps())
                draw(step, folder, session);
        session.output() << "\nPictures and diagrams are in " << folder.path() << '\n';
        return ExitStatus::done;
    }

  private:
    /// Only a board in software has a scene; a real one does not know it.
    static void setScene(Session& session, const PictureFolder& folder) {
        if (!session.scene().empty())
            return;
        const std::string file = folder.path() + "/scene.txt";
        writeWholeFile(file, demoScene);
        session.useScene(file);
    }

    static void begin(const char* title, const std::vector<std::string>& settings, Session& session) {
        session.output() << '\n' << session.outputTerminal().bold(title) << '\n';
        for (const std::string& text : settings) {
            const PortSetting setting = portSettingFrom(text);
            applySettings(session.applet(), setting.ports, {setting.setting});
            session.output() << "  set " << text << '\n';
        }
    }

    static void acquire(const PictureStep& step, const PictureFolder& folder, Session& session) {
        begin(step.title, step.settings, session);
        const AcquisitionRequest request{PortChoice("both").ports(), step.count, 10};
        for (const PortResult& result : acquireInto(folder, session, request, step.word))
            session.output() << "  " << resultText(result) << ": "
                             << folder.fileName(result.port, 1, step.word)
                             << (result.pictures > 1 ? ", ..." : "") << '\n';
        session.output() << "  The pictures show " << step.remark << ".\n" << std::flush;
    }

    static void draw(const DiagramStep& step, const PictureFolder& folder, Session& session) {
        begin(step.title, step.settings, session);
        RecordingPlan plan{step.title, step.ports, ticksFrom(step.time).value_or(0), {}, {}};
        for (const std::string& text : step.timedSettings) {
            session.output() << "  later " << text << '\n';
            plan.settings.push_back(timedSettingFrom(text));
        }
        for (const std::string& text : step.pulses) {
            session.output() << "  pulses " << text << '\n';
            plan.inputs.push_back(inputPulsesFrom(text));
        }
        const TriggerDiagram diagram = recorded(session, plan);
        writeWholeFile(folder.path() + "/" + step.file, svgOf(diagram));
        session.output() << textOf(diagram, static_cast<unsigned>(session.outputTerminal().width()))
                         << "  In " << step.file << ": " << step.remark << ".\n"
                         << std::flush;
    }

    std::string mFolder = "demo-pictures";
    std::string mFormat = "png";
};

} // namespace

std::unique_ptr<Command> makeDemoCommand() { return std::make_unique<DemoCommand>(); }

} // namespace orbctl
