#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/LiveApplet.h"
#include "tests/applet/ConfigurationText.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>

// An input is the number of the write that fails (0 for none), and the configuration file that is loaded into
// a live applet.

namespace {

using kavo::fuzz::require;
using simulator::CallKind;
using simulator::hostCalls;

constexpr int loadFailed = -5000;
constexpr int writeFailure = -4711;
/// A longer path may be cut where a line is cut.
constexpr std::size_t longestKeptPath = 200;
/// The applet ignores the type code but for 64-bit types.
constexpr int untyped = 0;
constexpr std::size_t textCapacity = 4096;
constexpr std::size_t wayBackInterval = 8;

/// A parameter, and the register that carries its value.
struct Carrier {
    int id;
    const char* register0;
    const char* register1;
    unsigned offset;
};

#define PROCESS(id, name)                                                                                    \
    { id, "Device1_Process0_" name, "Device1_Process1_" name, 0 }
#define TRIGGER(id, name, offset)                                                                            \
    { id, "Device1_Process2_Trigger_TriggerCam0_" name, "Device1_Process2_Trigger_TriggerCam1_" name, offset }
constexpr Carrier carriers[] = {
    PROCESS(FG_GBE_CAMTYPE, "Camera1_PixelFormat"),
    PROCESS(FG_SWAP_CHANNELS, "LAG_Swap_Swap_Value"),
    PROCESS(FG_CAMERA_WIDTH, "LAG_CameraWidth_LineLength"),
    PROCESS(FG_WIDTH, "Buffer_0_DRAM_A_1_XLength"),
    PROCESS(FG_HEIGHT, "Buffer_0_DRAM_A_1_YLength"),
    PROCESS(FG_XOFFSET, "Buffer_0_DRAM_A_1_XOffset"),
    PROCESS(FG_YOFFSET, "Buffer_0_DRAM_A_1_YOffset"),
    PROCESS(FG_BITALIGNMENT, "OutputFormat_FG_BITALIGNMENT_Value"),
    TRIGGER(FG_TRIGGERIN_SRC, "InputSelect_Select_Select", 0),
    TRIGGER(FG_TRIGGERIN_POLARITY, "InputSelect_Polarity_Invert", 0),
    TRIGGER(FG_TRIGGERIN_DOWNSCALE, "Downscale_Downscale_Downscale", 0),
    TRIGGER(FG_TRIGGERIN_DOWNSCALE_PHASE, "Downscale_Downscale_SelectedPulse", 1),
    TRIGGER(FG_TRIGGERIN_BYPASS_SRC, "InputSelect_BypassSelect_Select", 0),
    TRIGGER(FG_TRIGGEROUT_STATS_SOURCE, "OutputStatistics_Select_Select", 0),
    TRIGGER(FG_TRIGGER_OUTPUT_EVENT_SELECT, "OutputEvent_Select_Select", 0),
};
#undef PROCESS
#undef TRIGGER

class LoadedApplet {
  public:
    void reset() { mApplet.reset(); }

    int load(std::string_view text) {
        const int result = Fg_loadConfig(mApplet.handle(), kavo::fuzz::makeFile("load.mcf", text).c_str());
        require(Fg_getLastErrorNumber(mApplet.handle()) == result, "the result is the last error");
        return result;
    }

    std::string saved() {
        const std::string path = kavo::fuzz::makeFile("saved.mcf", "");
        require(Fg_saveConfig(mApplet.handle(), path.c_str()) == 0, "every state can be saved");
        return kavo::test::fileContent(path);
    }

    /// Whatever the state, good files bring the start state back.
    void requireWayBack() {
        // Every pulse fits the slowest rate, and then that of the start state.
        static const Section slow = with(freshSection(), "FG_TRIGGER_FRAMESPERSECOND", "0.0146");
        static const std::string slowFile = configurationText(slow, slow);
        static const std::string freshFile = freshConfiguration();
        require(load(slowFile) == 0 && load(freshFile) == 0, "a good file is loaded");
        require(saved() == freshFile, "the start state comes back");
    }

    void requireTruthfulGetters() {
        for (const Carrier& carrier : carriers) {
            for (const unsigned port : {0U, 1U}) {
                const auto onBoard = static_cast<std::uint32_t>(
                    mApplet.board().designValue(port == 0 ? carrier.register0 : carrier.register1));
                require(get(carrier.id, port) + carrier.offset == onBoard,
                        "a getter tells what the board has");
            }
        }
    }

    bool hasLongPath() {
        for (const unsigned port : {0U, 1U}) {
            char path[textCapacity] = {};
            require(Fg_getParameterWithType(mApplet.handle(), FG_LUT_CUSTOM_FILE, path, port, untyped) == 0,
                    "a path is told");
            if (std::string_view(path).size() > longestKeptPath) {
                return true;
            }
        }
        return false;
    }

  private:
    unsigned get(int id, unsigned port) {
        unsigned value = 0;
        require(Fg_getParameterWithType(mApplet.handle(), id, &value, port, untyped) == 0,
                "a parameter is told");
        return value;
    }

    kavo::fuzz::LiveApplet mApplet{0};
};

/// Loads what the applet saved itself, which is to change nothing.
void tryLoadingAgain(LoadedApplet& applet) {
    applet.requireTruthfulGetters();
    const std::string state = applet.saved();
    require(applet.load(state) == 0, "what was saved can be loaded");
    require(applet.saved() == state || applet.hasLongPath(), "loading what was saved changes nothing");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static LoadedApplet applet;
    kavo::fuzz::FuzzInput input(data, size);
    const long failingWrite = std::strtol(input.takeLine().c_str(), nullptr, 10);
    if (failingWrite > 0 && failingWrite < INT32_MAX) {
        hostCalls().failOnce(CallKind::write, static_cast<unsigned>(failingWrite), writeFailure);
    }
    const int result = applet.load(input.rest());
    hostCalls().stopFailing();
    require(result == 0 || result == loadFailed, "the result of a load");
    if (result == 0) {
        tryLoadingAgain(applet);
    }
    // The way back costs more than all the rest: not every input has to go it.
    if (size % wayBackInterval == 0) {
        applet.requireWayBack();
    }
    applet.reset();
    return 0;
}
