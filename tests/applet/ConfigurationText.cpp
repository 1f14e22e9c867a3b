#include "tests/applet/ConfigurationText.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr char header[] = "[Kamerasektion]\n"
                          "\n"
                          "ConfigFileVersion=2.0;\n"
                          "Hersteller='Kavotronic GmbH';\n"
                          "Typ='Orbelline';\n"
                          "Version='2.2';\n"
                          "LoadAppletId=0;\n"
                          "AktivePort=0;\n";

std::string sectionText(char letter, const Section& section) {
    std::string text = std::string("\n[Port ") + letter + "]\n";
    for (const auto& [key, value] : section) {
        text += key + "=" + value + ";\n";
    }
    return text;
}

Section::iterator find(Section& section, const std::string& key) {
    const auto found =
        std::find_if(section.begin(), section.end(), [&](const auto& entry) { return entry.first == key; });
    if (found == section.end()) {
        throw std::out_of_range(key);
    }
    return found;
}

} // namespace

const Section& freshSection() {
    static const Section section{
        {"FG_TIMEOUT", "1000000"},
        {"FG_GBE_CAMTYPE", "0"},
        {"FG_MTU_SIZE", "7204"},
        {"FG_SWAP_CHANNELS", "1"},
        {"FG_CAMERA_WIDTH", "1024"},
        {"FG_WIDTH", "1024"},
        {"FG_HEIGHT", "1024"},
        {"FG_XOFFSET", "0"},
        {"FG_YOFFSET", "0"},
        {"FG_FORMAT", "3"},
        {"FG_BITALIGNMENT", "1"},
        {"FG_LUT_TYPE", "3"},
        {"FG_LUT_CUSTOM_FILE", "''"},
        {"FG_PROCESSING_OFFSET", "0"},
        {"FG_PROCESSING_GAIN", "1"},
        {"FG_PROCESSING_GAMMA", "1"},
        {"FG_PROCESSING_INVERT", "0"},
        {"FG_AREATRIGGERMODE", "1"},
        {"FG_TRIGGERSTATE", "2"},
        {"FG_TRIGGER_FRAMESPERSECOND", "8"},
        {"FG_TRIGGERIN_DEBOUNCE", "1.008"}, // 21 steps of 48 ns
        {"FG_TRIGGERIN_SRC", "0"},
        {"FG_TRIGGERIN_POLARITY", "0"},
        {"FG_TRIGGERIN_DOWNSCALE", "1"},
        {"FG_TRIGGERIN_DOWNSCALE_PHASE", "0"},
        {"FG_TRIGGERIN_BYPASS_SRC", "0"},
        {"FG_TRIGGER_MULTIPLY_PULSES", "1"},
        {"FG_TRIGGERQUEUE_MODE", "0"},
        {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD", "2047"},
        {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD", "2"},
        {"FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE", "1"},
        {"FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE_PHASE", "0"},
        {"FG_TRIGGER_PULSEFORMGEN0_DELAY", "0"},
        {"FG_TRIGGER_PULSEFORMGEN0_WIDTH", "4000"},
        {"FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE", "1"},
        {"FG_TRIGGER_PULSEFORMGEN1_DOWNSCALE_PHASE", "0"},
        {"FG_TRIGGER_PULSEFORMGEN1_DELAY", "0"},
        {"FG_TRIGGER_PULSEFORMGEN1_WIDTH", "4"},
        {"FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE", "1"},
        {"FG_TRIGGER_PULSEFORMGEN2_DOWNSCALE_PHASE", "0"},
        {"FG_TRIGGER_PULSEFORMGEN2_DELAY", "0"},
        {"FG_TRIGGER_PULSEFORMGEN2_WIDTH", "4"},
        {"FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE", "1"},
        {"FG_TRIGGER_PULSEFORMGEN3_DOWNSCALE_PHASE", "0"},
        {"FG_TRIGGER_PULSEFORMGEN3_DELAY", "0"},
        {"FG_TRIGGER_PULSEFORMGEN3_WIDTH", "4"},
        {"FG_CAMERA_ACTION_COMMAND_SOURCE", "0"},
        {"FG_TRIGGEROUT_SELECT0", "6"},
        {"FG_TRIGGEROUT_SELECT1", "7"},
        {"FG_TRIGGEROUT_SELECT2", "5"},
        {"FG_TRIGGEROUT_SELECT3", "5"},
        {"FG_TRIGGEROUT_STATS_SOURCE", "0"},
        {"FG_TRIGGER_OUTPUT_EVENT_SELECT", "0"},
    };
    return section;
}

Section otherSection(const std::string& customFile) {
    Section section{
        {"FG_TIMEOUT", "2"},
        {"FG_GBE_CAMTYPE", "4"},
        {"FG_MTU_SIZE", "1500"},
        {"FG_SWAP_CHANNELS", "0"},
        {"FG_CAMERA_WIDTH", "4096"},
        {"FG_WIDTH", "3072"},
        {"FG_HEIGHT", "2049"},
        {"FG_XOFFSET", "1008"},
        {"FG_YOFFSET", "1047"},
        {"FG_FORMAT", "1"},
        {"FG_BITALIGNMENT", "0"},
        {"FG_LUT_TYPE", "0"},
        {"FG_LUT_CUSTOM_FILE", "'" + customFile + "'"},
        {"FG_PROCESSING_OFFSET", "-0.125"},
        {"FG_PROCESSING_GAIN", "2.5"},
        {"FG_PROCESSING_GAMMA", "0.45"},
        {"FG_PROCESSING_INVERT", "1"},
        {"FG_AREATRIGGERMODE", "2"},
        {"FG_TRIGGERSTATE", "0"},
        {"FG_TRIGGER_FRAMESPERSECOND", "100"},
        {"FG_TRIGGERIN_DEBOUNCE", "0.096"},
        {"FG_TRIGGERIN_SRC", "7"},
        {"FG_TRIGGERIN_POLARITY", "1"},
        {"FG_TRIGGERIN_DOWNSCALE", "-1"}, // the largest, 2^32 - 1
        {"FG_TRIGGERIN_DOWNSCALE_PHASE", "-2"},
        {"FG_TRIGGERIN_BYPASS_SRC", "3"},
        {"FG_TRIGGER_MULTIPLY_PULSES", "65535"},
        {"FG_TRIGGERQUEUE_MODE", "1"},
        {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD", "1000"},
        {"FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD", "1500"},
    };
    for (int generator = 0; generator < 4; ++generator) {
        const std::string name = "FG_TRIGGER_PULSEFORMGEN" + std::to_string(generator);
        section.emplace_back(name + "_DOWNSCALE", std::to_string(generator + 3));
        section.emplace_back(name + "_DOWNSCALE_PHASE", std::to_string(generator + 2));
        section.emplace_back(name + "_DELAY", std::to_string(100 * generator + 100) + ".016");
        section.emplace_back(name + "_WIDTH", std::to_string(200 * generator + 200) + ".48");
    }
    const Section rest{
        {"FG_CAMERA_ACTION_COMMAND_SOURCE", "9"}, {"FG_TRIGGEROUT_SELECT0", "10"},
        {"FG_TRIGGEROUT_SELECT1", "11"},          {"FG_TRIGGEROUT_SELECT2", "4"},
        {"FG_TRIGGEROUT_SELECT3", "0"},           {"FG_TRIGGEROUT_STATS_SOURCE", "3"},
        {"FG_TRIGGER_OUTPUT_EVENT_SELECT", "2"},
    };
    section.insert(section.end(), rest.begin(), rest.end());
    return section;
}

std::string configurationText(const Section& portA, const Section& portB) {
    return header + sectionText('A', portA) + sectionText('B', portB);
}

std::string freshConfiguration() { return configurationText(freshSection(), freshSection()); }

Section with(Section section, const std::string& key, const std::string& value) {
    find(section, key)->second = value;
    return section;
}

Section without(Section section, const std::string& key) {
    section.erase(find(section, key));
    return section;
}

const std::string& valueIn(const Section& section, const std::string& key) {
    return find(const_cast<Section&>(section), key)->second;
}

std::string replaced(std::string text, const std::string& part, const std::string& by) {
    const std::size_t at = text.find(part);
    if (at == std::string::npos) {
        throw std::out_of_range(part);
    }
    return text.replace(at, part.size(), by);
}
