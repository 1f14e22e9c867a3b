#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/LutPlotPicture.h"
#include "console/LutPlotSvg.h"
#include "console/LutPlotText.h"
#include "console/PictureFile.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/WholeFile.h"

namespace orbctl {

namespace {

class LutPlotCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.text("--svg", mSvgFile, "write the plot into this file too");
        arguments.text("--png", mPngFile, "write the plot as a gray picture into this file too");
        arguments.number("-w,--width", mWidth, 0, 1000, "columns; 0: those of the terminal");
        arguments.number("--height", mHeight, 2, 200, "lines of the curves");
    }

    ExitStatus run(Session& session) override {
        std::vector<LookupTable> tables;
        for (const unsigned port : mPort.ports())
            tables.push_back(lookupTableOf(session.applet(), port));
        const Terminal& terminal = session.outputTerminal();
        const unsigned width = mWidth == 0 ? static_cast<unsigned>(terminal.width()) : mWidth;
        session.output() << textOf(tables, width, mHeight, terminal);
        if (!mSvgFile.empty())
            writeWholeFile(mSvgFile, svgOf(tables));
        if (!mPngFile.empty())
            writePicture(pictureOf(tables).picture(), PictureFormat::png, mPngFile);
        for (const std::string& file : {mSvgFile, mPngFile})
            if (!file.empty())
                session.messages() << "The plot is in " << file << '\n';
        return ExitStatus::done;
    }

  private:
    PortChoice mPort{"both"};
    std::string mSvgFile;
    std::string mPngFile;
    unsigned mWidth = 0;
    unsigned mHeight = 20;
};

} // namespace

std::unique_ptr<Command> makeLutPlotCommand() { return std::make_unique<LutPlotCommand>(); }

} // namespace orbctl
