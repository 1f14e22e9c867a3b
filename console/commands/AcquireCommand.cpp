#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/Interruption.h"
#include "console/PictureFolder.h"
#include "console/PortChoice.h"
#include "console/Session.h"

namespace orbctl {

namespace {

class AcquireCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.number("-n,--count", mRequest.count, 1, 1000000, "pictures of each port");
        arguments.text("-o,--out", mFolder, "folder for the pictures, made where it is missing");
        arguments.choice("-f,--format", mFormat, {"png", "pgm"}, "kind of the files");
        arguments.decimal("--timeout", mRequest.timeout, "longest wait for a picture, in seconds");
    }

    ExitStatus run(Session& session) override {
        const Interruption interruption;
        mRequest.ports = mPort.ports();
        session.applet();
        const PictureFolder folder(mFolder, pictureFormatFrom(mFormat));
        bool isComplete = true;
        for (const PortResult& result : acquireInto(folder, session, mRequest)) {
            session.output() << resultText(result) << '\n';
            isComplete = isComplete && result.pictures == mRequest.count;
        }
        session.messages() << "Pictures are in " << folder.path() << '\n';
        if (isComplete)
            return ExitStatus::done;
        session.messages() << "Stopped before all pictures had come\n";
        return ExitStatus::interrupted;
    }

  private:
    PortChoice mPort{"both"};
    AcquisitionRequest mRequest;
    std::string mFolder = "pictures";
    std::string mFormat = "png";
};

} // namespace

std::unique_ptr<Command> makeAcquireCommand() { return std::make_unique<AcquireCommand>(); }

} // namespace orbctl
