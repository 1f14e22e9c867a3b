#include "tests/applet/ConfigurationOnBoard.h"

#include <cstdio>

namespace {

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool isReal(const std::string& key) {
    const bool isPulseTime =
        key.find("PULSEFORMGEN") != std::string::npos && (endsWith(key, "_DELAY") || endsWith(key, "_WIDTH"));
    const bool isProcessing = key.find("FG_PROCESSING_") == 0 && !endsWith(key, "_INVERT");
    return isPulseTime || isProcessing || key == "FG_TRIGGER_FRAMESPERSECOND" ||
           key == "FG_TRIGGERIN_DEBOUNCE";
}

std::string toldValue(AppletOnBoard& applet, const std::string& key, int port) {
    const int id = Fg_getParameterIdByName(applet.handle(), key.c_str());
    if (key == "FG_LUT_CUSTOM_FILE") {
        return "'" + applet.getText(id, port) + "'";
    }
    if (!isReal(key)) {
        return std::to_string(static_cast<int>(applet.get(id, port)));
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.12g", applet.getReal(id, port));
    return text;
}

/// A parameter whose value stands in one register, the last that its setter writes.
struct Carrier {
    const char* key;
    const char* name; ///< behind the port's prefix
    int offset;       ///< register minus parameter
};

constexpr Carrier imageCarriers[] = {
    {"FG_GBE_CAMTYPE", "Camera1_PixelFormat", 0},
    {"FG_SWAP_CHANNELS", "LAG_Swap_Swap_Value", 0},
    {"FG_CAMERA_WIDTH", "LAG_CameraWidth_LineLength", 0},
    {"FG_WIDTH", "Buffer_0_DRAM_A_1_XLength", 0},
    {"FG_HEIGHT", "Buffer_0_DRAM_A_1_YLength", 0},
    {"FG_XOFFSET", "Buffer_0_DRAM_A_1_XOffset", 0},
    {"FG_YOFFSET", "Buffer_0_DRAM_A_1_YOffset", 0},
    {"FG_BITALIGNMENT", "OutputFormat_FG_BITALIGNMENT_Value", 0},
};

constexpr Carrier triggerCarriers[] = {
    {"FG_TRIGGERIN_SRC", "InputSelect_Select_Select", 0},
    {"FG_TRIGGERIN_POLARITY", "InputSelect_Polarity_Invert", 0},
    {"FG_TRIGGERIN_DOWNSCALE", "Downscale_Downscale_Downscale", 0},
    {"FG_TRIGGERIN_DOWNSCALE_PHASE", "Downscale_Downscale_SelectedPulse", 1},
    {"FG_TRIGGERIN_BYPASS_SRC", "InputSelect_BypassSelect_Select", 0},
    {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD", "Hysteresis_OnLevel_Number", 0},
    {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD", "Hysteresis_OffLevel_Number", 0},
    {"FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE", "PulseFormGenerators_PulseFormGenerator0_Downscale_Downscale", 0},
    {"FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE", "PulseFormGenerators_PulseFormGenerator3_Downscale_Downscale", 0},
    {"FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE_PHASE",
     "PulseFormGenerators_PulseFormGenerator1_Downscale_SelectedPulse", 1},
    {"FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE_PHASE",
     "PulseFormGenerators_PulseFormGenerator2_Downscale_SelectedPulse", 1},
    {"FG_TRIGGEROUT_STATS_SOURCE", "OutputStatistics_Select_Select", 0},
    {"FG_TRIGGER_OUTPUT_EVENT_SELECT", "OutputEvent_Select_Select", 0},
};

using NamedWrites = std::vector<std::pair<const char*, std::uint32_t>>;

const NamedWrites freshImage{
    {"LAG_MTUSizeCam0_LineLength", 7168},
    {"LAG_MTUSizeCam1_LineLength", 7168},
    {"Camera0_PixelFormat", 0},
    {"Camera1_PixelFormat", 0},
    // The packet size writes the same once more.
    {"LAG_MTUSizeCam0_LineLength", 7168},
    {"LAG_MTUSizeCam1_LineLength", 7168},
    {"Camera0_PixelFormat", 0},
    {"Camera1_PixelFormat", 0},
    {"LAG_Swap_Swap_Value", 1},
    {"LAG_CameraWidth_LineLength", 1024},
    {"Buffer_0_DRAM_A_0_XLength", 1024},
    {"Buffer_0_DRAM_A_1_XLength", 1024},
    {"Buffer_0_DRAM_A_0_YLength", 1024},
    {"Buffer_0_DRAM_A_1_YLength", 1024},
    {"Buffer_0_DRAM_A_0_XOffset", 0},
    {"Buffer_0_DRAM_A_1_XOffset", 0},
    {"Buffer_0_DRAM_A_0_YOffset", 0},
    {"Buffer_0_DRAM_A_1_YOffset", 0},
    {"OutputFormat_FG_FORMAT_SelectSource", 1},
    {"OutputFormat_FG_BITALIGNMENT_Value", 1},
};

const NamedWrites freshInput{
    {"InputSelect_Select_Select", 0},       {"InputSelect_Polarity_Invert", 0},
    {"Downscale_Downscale_Downscale", 1},   {"Downscale_Downscale_SelectedPulse", 1},
    {"InputSelect_BypassSelect_Select", 0},
};

const NamedWrites freshQueue{
    {"Generators_Sequence_SelectedPulse", 1}, {"Generators_Sequence_Downscale", 1},
    {"Generators_ClearDownscale_Mode", 2},    {"Hysteresis_OnLevel_Number", 2047},
    {"Hysteresis_OffLevel_Number", 2},
};

const NamedWrites freshOutputs{
    {"TriggerCamera_SelectTriggerCamera_Select_Select", 0},
    {"TriggerCamera_SelectTriggerCamera_Polarity_Invert", 0},
    {"TriggerOutput_Select0_Select_Select", 0},
    {"TriggerOutput_Select0_Polarity_Invert", 1},
    {"TriggerOutput_Select1_Select_Select", 1},
    {"TriggerOutput_Select1_Polarity_Invert", 1},
    {"TriggerOutput_Select2_Select_Select", 5},
    {"TriggerOutput_Select2_Polarity_Invert", 1},
    {"TriggerOutput_Select3_Select_Select", 5},
    {"TriggerOutput_Select3_Polarity_Invert", 1},
    {"OutputStatistics_Select_Select", 0},
    {"OutputEvent_Select_Select", 0},
};

/// The writes of one port, as they are put together.
class PortWrites {
  public:
    explicit PortWrites(int port) : mPort(port) {}

    void add(const RecordedWrite& write) { mWrites.push_back(write); }
    void addTrigger(const std::string& name, std::uint32_t value) { add(triggerWrite(mPort, name, value)); }
    void addTrigger(const NamedWrites& writes) {
        for (const auto& [name, value] : writes) {
            addTrigger(name, value);
        }
    }
    void addImage(const NamedWrites& writes) {
        for (const auto& [name, value] : writes) {
            add(processWrite(mPort, name, value));
        }
    }
    void addGenerators() {
        for (const char generator : {'0', '1', '2', '3'}) {
            const std::string name = std::string("PulseFormGenerators_PulseFormGenerator") + generator + "_";
            addTrigger(name + "Downscale_Downscale", 1);
            addTrigger(name + "Downscale_SelectedPulse", 1);
            addTrigger(name + "Delay_Delay", 0);
            // 4000 and 4 microseconds
            addTrigger(name + "Width_Width", generator == '0' ? 250000 : 250);
        }
    }
    const std::vector<RecordedWrite>& all() const { return mWrites; }

  private:
    int mPort;
    std::vector<RecordedWrite> mWrites;
};

} // namespace

std::string ConfigurationOnBoard::saved() {
    const std::string path = folder.path("saved.mcf");
    EXPECT_EQ(saveTo(path), 0);
    return kavo::test::fileContent(path);
}

Section ConfigurationOnBoard::told(AppletOnBoard& applet, int port) {
    Section section = freshSection();
    for (auto& [key, value] : section) {
        value = toldValue(applet, key, port);
    }
    return section;
}

Section ConfigurationOnBoard::other() {
    return otherSection(folder.makeFile("curve.lut", "[gray]\nnrOfElements=2;\n0,5;\n1,6;\n"));
}

void ConfigurationOnBoard::expectTold(const Section& expected, int port) {
    for (const auto& [key, value] : told(port)) {
        EXPECT_EQ(value, valueIn(expected, key)) << key << " of port " << port;
    }
}

void ConfigurationOnBoard::expectEachValueFrom(const Section& before, const Section& after, int port) {
    for (const auto& [key, value] : told(port)) {
        EXPECT_TRUE(value == valueIn(before, key) || value == valueIn(after, key)) << key << " is " << value;
    }
}

void ConfigurationOnBoard::expectGettersToTellTheHardware(int port) {
    const auto check = [&](const Carrier& carrier, const std::string& name) {
        const int id = Fg_getParameterIdByName(applet.handle(), carrier.key);
        EXPECT_EQ(static_cast<std::uint32_t>(applet.board().designValue(name)),
                  applet.get(id, port) + static_cast<unsigned>(carrier.offset))
            << carrier.key;
    };
    for (const Carrier& carrier : imageCarriers) {
        check(carrier, AppletOnBoard::process(port, carrier.name));
    }
    for (const Carrier& carrier : triggerCarriers) {
        check(carrier, AppletOnBoard::trigger(port, carrier.name));
    }
    EXPECT_EQ(applet.board().designValue(AppletOnBoard::process(port, "OutputFormat_FG_FORMAT_SelectSource")),
              applet.get(FG_FORMAT, port) == 3 ? 1U : 0U);
}

std::vector<RecordedWrite> writesOfFreshValues(int port, bool countersAreCleared) {
    const auto dma = static_cast<unsigned>(port);
    PortWrites writes(port);
    writes.add({"FG_TIMEOUT", 1000000, dma, 0});
    writes.addImage(freshImage);
    // The whole table: its record begins with the elements' type.
    writes.add({AppletOnBoard::process(port, "LookupTable_LookupTable_LUTcontent"), 2, dma, 4096});
    // Mode and state stay as they are. 8 Hz are a hair less than 7812500 ticks; the register counts from 9.
    writes.addTrigger("Generators_Generator_MinimumPeriod_Number", 7812490);
    writes.add({"Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period", 21, dma, 2});
    writes.addTrigger(freshInput);
    if (countersAreCleared) {
        writes.addTrigger("InputStatistics_ClearPulses_Mode", 2);
    }
    writes.addTrigger(freshQueue);
    writes.addGenerators();
    writes.addTrigger(freshOutputs);
    return writes.all();
}
