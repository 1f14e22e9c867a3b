#pragma once

#include "console/AppletHandle.h"
#include "console/HostLibrary.h"
#include "console/ParameterSnapshot.h"
#include "console/Terminal.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace orbctl {

/// The environment variable by which a board in software finds its scene.
extern const char* const sceneVariable;

/// What the options before the command say.
struct GlobalOptions {
    std::string runtime; ///< file; empty: the default
    std::string applet;  ///< file; empty: the default
    std::string scene;   ///< file that sets up a board in software; empty: the board as it is
    unsigned board = 0;
    bool slave = false;
    std::vector<std::string> settings; ///< "NAME=VALUE", applied when the board is opened
};

/// Where a command's text goes, and what it may look like there.
struct Streams {
    std::ostream& output;   ///< values
    std::ostream& messages; ///< everything else
    Terminal outputTerminal;
    Terminal messageTerminal;
};

/// One run of the program: its options, its streams, and the board, opened when it is first needed.
class Session {
  public:
    Session(GlobalOptions options, Streams streams) : mOptions(std::move(options)), mStreams(streams) {}

    std::ostream& output() { return mStreams.output; }
    std::ostream& messages() { return mStreams.messages; }
    const Terminal& outputTerminal() const { return mStreams.outputTerminal; }
    const Terminal& messageTerminal() const { return mStreams.messageTerminal; }

    /// The open board.
    /// \throws Failure where it cannot be opened or refuses a setting of the options
    AppletHandle& applet();
    /// Opens the applet's library alone, without a board.
    HostLibrary openAppletLibrary();
    /// The runtime's library, for functions that only some runtimes have.
    const HostLibrary& runtime();
    std::string appletName() const;
    unsigned board() const { return mOptions.board; }
    const std::string& scene() const { return mOptions.scene; }
    /// Sets the scene of a board in software; without effect once the board is open.
    void useScene(const std::string& file) { mOptions.scene = file; }

    /// Tells that commands are read from a file from now on.
    /// \return false where they already are
    bool beginScript();

    /// Has the values with which a board starts recorded when it is opened; without effect on one that is
    /// open.
    void keepStartValues() { mKeepsStartValues = true; }
    /// What the parameters had right after the board was opened as master, before any setting.
    /// \throws Failure (refused) where they were not recorded, or the board is shared as it is
    const ParameterSnapshot& startValues();

    /// Makes the board's registers parameters too; without effect once the board is open.
    static void offerRegisters();

  private:
    GlobalOptions mOptions;
    Streams mStreams;
    HostLibrary mRuntime;
    std::vector<HostLibrary> mCompanions;
    std::unique_ptr<AppletHandle> mApplet;
    bool mIsScripted = false;
    bool mKeepsStartValues = false;
    std::optional<ParameterSnapshot> mStartValues;
};

} // namespace orbctl
