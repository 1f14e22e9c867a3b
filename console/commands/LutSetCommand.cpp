#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/LookupTable.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/Setting.h"

#include <algorithm>
#include <array>

namespace orbctl {

namespace {

struct ShortName {
    const char* name;
    const char* parameter;
    bool isOfProcessor;
};

constexpr std::array<ShortName, 5> shortNames = {{{"offset", "FG_PROCESSING_OFFSET", true},
                                                  {"gain", "FG_PROCESSING_GAIN", true},
                                                  {"gamma", "FG_PROCESSING_GAMMA", true},
                                                  {"invert", "FG_PROCESSING_INVERT", true},
                                                  {"type", "FG_LUT_TYPE", false}}};

const ShortName* shortNameOf(const std::string& text) {
    const auto* const found = std::find_if(shortNames.begin(), shortNames.end(),
                                           [&](const ShortName& each) { return text == each.name; });
    return found == shortNames.end() ? nullptr : found;
}

[[noreturn]] void refuse(const std::string& target) {
    throw Failure(ExitStatus::usage, "\"" + target +
                                         "\" is none of offset, gain, gamma, invert, type, an input such as "
                                         "5, or inputs such as 0..99; inputs go up to 4095");
}

/// Words that people use for the symbols.
std::string symbolOf(const std::string& target, const std::string& value) {
    if (target == "invert" && (value == "on" || value == "off"))
        return value == "on" ? "FG_ON" : "FG_OFF";
    if (target == "type" && (value == "processor" || value == "file"))
        return value == "processor" ? "LUT_TYPE_PROCESSING" : "LUT_TYPE_CUSTOM";
    return value;
}

/// A setting for each entry that "5" or "0..99" names.
std::vector<Setting> entrySettings(const Setting& setting) {
    const std::size_t dots = setting.target.find("..");
    const auto first = unsignedFrom(setting.target.substr(0, dots));
    const auto last = dots == std::string::npos ? first : unsignedFrom(setting.target.substr(dots + 2));
    if (!first || !last || *last < *first || *last > LookupTable::largestInput)
        refuse(setting.target);
    std::vector<Setting> settings;
    for (std::uint64_t input = *first; input <= *last; ++input)
        settings.push_back({"FG_LUT_VALUE[" + textOf(input) + "]", setting.value});
    return settings;
}

class LutSetCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts(
            "NAME=VALUE", mWords, 1,
            "offset=, gain=, gamma=, invert=on|off, type=processor|file, or an output for an input "
            "(5=100) or inputs (0..99=0)");
        mPort.declare(arguments);
    }

    ExitStatus run(Session& session) override {
        std::vector<Setting> settings;
        bool isForProcessor = false;
        for (const std::string& word : mWords) {
            const Setting setting = settingFrom(word);
            const ShortName* const known = shortNameOf(setting.target);
            isForProcessor = isForProcessor || (known != nullptr && known->isOfProcessor);
            const std::vector<Setting> meant =
                known == nullptr
                    ? entrySettings(setting)
                    : std::vector<Setting>{{known->parameter, symbolOf(setting.target, setting.value)}};
            settings.insert(settings.end(), meant.begin(), meant.end());
        }
        applySettings(session.applet(), mPort.ports(), settings);
        if (isForProcessor)
            tellWhereIdle(session);
        return ExitStatus::done;
    }

  private:
    void tellWhereIdle(Session& session) const {
        for (const unsigned port : mPort.ports())
            if (!lookupTableOf(session.applet(), port).isProcessed)
                session.messages() << portPrefix(port)
                                   << "the table comes from a file; the processor's values take effect with "
                                      "type=processor\n";
    }

    std::vector<std::string> mWords;
    PortChoice mPort{"0"};
};

} // namespace

std::unique_ptr<Command> makeLutSetCommand() { return std::make_unique<LutSetCommand>(); }

} // namespace orbctl
