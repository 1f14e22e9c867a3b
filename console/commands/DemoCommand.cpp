#include "console/commands/Commands.h"

#include "console/AppletHandle.h"
#include "console/Arguments.h"
#include "console/Interruption.h"
#include "console/NumberText.h"
#include "console/PictureFolder.h"
#include "console/Session.h"
#include "console/Setting.h"

namespace orbctl {

namespace {

/// One step of the demonstration: what is set, what is acquired, and what the pictures show.
struct Step {
    const char* title;
    std::vector<std::string> settings; ///< for both ports, or for the port in front of a colon
    std::vector<unsigned> ports;
    unsigned count;
    const char* word; ///< begins the files' names
    const char* remark;
};

/// The region is made smallest first: it may then move anywhere.
const std::vector<Step>& steps() {
    static const std::vector<Step> all = {
        {"Camera input and whole pictures of both ports",
         {"FG_GBE_CAMTYPE=MONO8", "FG_MTU_SIZE=7204", "FG_SWAP_CHANNELS=FG_YES", "FG_CAMERA_WIDTH=1024",
          "FG_XOFFSET=0", "FG_YOFFSET=0", "FG_WIDTH=1024", "FG_HEIGHT=1024", "FG_FORMAT=FG_GRAY"},
         {0, 1},
         3,
         "1-whole",
         "the whole sensor of each camera, 8 bits a pixel"},
        {"Region of interest",
         {"0:FG_WIDTH=640", "0:FG_HEIGHT=480", "0:FG_XOFFSET=192", "0:FG_YOFFSET=272", "1:FG_WIDTH=512",
          "1:FG_HEIGHT=512", "1:FG_XOFFSET=512", "1:FG_YOFFSET=0"},
         {0, 1},
         3,
         "2-region",
         "port 0 from column 192 and row 272, port 1 its upper right corner"},
        {"16-bit output, left aligned",
         {"FG_FORMAT=FG_GRAY16", "FG_BITALIGNMENT=FG_LEFT_ALIGNED"},
         {0, 1},
         1,
         "3-left-aligned",
         "the same brightness as with 8 bits: the 12 bits stand at the top of the word"},
        {"16-bit output, right aligned",
         {"FG_BITALIGNMENT=FG_RIGHT_ALIGNED"},
         {0, 1},
         1,
         "4-right-aligned",
         "darkness at first sight: the same 12 bits stand at the bottom of the word"},
        {"Crossed cables",
         {"FG_FORMAT=FG_GRAY", "FG_BITALIGNMENT=FG_LEFT_ALIGNED", "FG_XOFFSET=0", "FG_YOFFSET=0",
          "FG_WIDTH=1024", "FG_HEIGHT=1024", "FG_SWAP_CHANNELS=FG_NO"},
         {0, 1},
         1,
         "5-crossed",
         "bands in the wrong order: the two cables of each camera are crossed and nothing puts them right"},
        {"Crossed cables, channels swapped",
         {"FG_SWAP_CHANNELS=FG_YES"},
         {0, 1},
         1,
         "6-swapped",
         "the cameras' pictures straight again, over the same crossed cables"},
    };
    return all;
}

class DemoCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("-o,--out", mFolder, "folder for the pictures, made where it is missing");
        arguments.choice("-f,--format", mFormat, {"png", "pgm"}, "kind of the files");
    }

    ExitStatus run(Session& session) override {
        const Interruption interruption;
        session.applet();
        const PictureFolder folder(mFolder, pictureFormatFrom(mFormat));
        session.output() << "Opened a board with " << session.appletName() << '\n';
        for (const Step& step : steps()) {
            perform(step, folder, session);
            if (Interruption::isAskedFor())
                return ExitStatus::interrupted;
        }
        session.output() << "\nPictures are in " << folder.path() << '\n';
        return ExitStatus::done;
    }

  private:
    static void perform(const Step& step, const PictureFolder& folder, Session& session) {
        session.output() << '\n' << session.outputTerminal().bold(step.title) << '\n';
        for (const std::string& text : step.settings) {
            const PortSetting setting = portSettingFrom(text);
            applySettings(session.applet(), setting.ports, {setting.setting});
            session.output() << "  set " << text << '\n';
        }
        const AcquisitionRequest request{step.ports, step.count, 10};
        for (const PortResult& result : acquireInto(folder, session, request, step.word))
            session.output() << "  " << resultText(result) << ": "
                             << folder.fileName(result.port, 1, step.word)
                             << (result.pictures > 1 ? ", ..." : "") << '\n';
        session.output() << "  The pictures show " << step.remark << ".\n" << std::flush;
    }

    std::string mFolder = "demo-pictures";
    std::string mFormat = "png";
};

} // namespace

std::unique_ptr<Command> makeDemoCommand() { return std::make_unique<DemoCommand>(); }

} // namespace orbctl
