#include "console/AppletIdentity.h"

#include "console/AppletHandle.h"
#include "console/NumberText.h"
#include "platform/ErrorCodes.h"

#include <algorithm>
#include <iterator>

namespace orbctl {

namespace {

constexpr int constantSelector = 4352;

constexpr InfoSelector selectors[] = {
    {848, "selector 848", InfoOutput::none, false},
    {1040, "selector 1040", InfoOutput::none, false},
    {1041, "icon", InfoOutput::block, false},
    {1042, "design image", InfoOutput::block, false},
    {1043, "GUID", InfoOutput::text, false},
    {1044, "selector 1044", InfoOutput::text, false},
    {1045, "selector 1045", InfoOutput::none, false},
    {1792, "selector 1792", InfoOutput::none, false},
    {1872, "selector 1872", InfoOutput::none, false},
    {1888, "selector 1888", InfoOutput::none, false},
    {2048, "selector 2048", InfoOutput::none, false},
    {2160, "selector 2160", InfoOutput::none, false},
    {2176, "design type", InfoOutput::none, false},
    {2192, "selector 2192", InfoOutput::none, false},
    {2304, "selector 2304", InfoOutput::number, false},
    {2560, "selector 2560", InfoOutput::none, false},
    {2816, "selector 2816", InfoOutput::none, false},
    {3072, "selector 3072", InfoOutput::none, false},
    {3328, "selector 3328", InfoOutput::none, false},
    {4096, "description", InfoOutput::text, false},
    {4112, "category", InfoOutput::text, false},
    {4128, "properties", InfoOutput::text, false},
    {4144, "device handle", InfoOutput::address, false},
    {4160, "design handle", InfoOutput::address, false},
    {4176, "name", InfoOutput::text, false},
    {4192, "version", InfoOutput::text, false},
    {4208, "build", InfoOutput::text, false},
    {4608, "number of ports", InfoOutput::none, false},
    {4624, "selector 4624", InfoOutput::none, true},
    {4640, "selector 4640", InfoOutput::none, true},
    {4656, "selector 4656", InfoOutput::none, true},
    {4672, "selector 4672", InfoOutput::none, true},
    {4688, "selector 4688", InfoOutput::none, true},
    {4704, "selector 4704", InfoOutput::none, true},
};

constexpr const char* constants[] = {
    "MONO8",
    "MONO8_SIGNED",
    "MONO10",
    "MONO12",
    "MONO16",
    "FG_YES",
    "FG_NO",
    "FG_GRAY",
    "FG_GRAY16",
    "FG_LEFT_ALIGNED",
    "FG_RIGHT_ALIGNED",
    "LUT_TYPE_PROCESSING",
    "LUT_TYPE_CUSTOM",
    "LUT_IMPLEMENTATION_FULL_LUT",
    "LUT_IMPLEMENTATION_KNEELUT",
    "FG_ON",
    "FG_OFF",
    "FG_APPLY",
    "TRGINSRC_0",
    "TRGINSRC_1",
    "TRGINSRC_2",
    "TRGINSRC_3",
    "TRGINSRC_4",
    "TRGINSRC_5",
    "TRGINSRC_6",
    "TRGINSRC_7",
    "LOW_ACTIVE",
    "HIGH_ACTIVE",
    "IS_BUSY",
    "IS_NOT_BUSY",
    "PULSEGEN0",
    "PULSEGEN1",
    "PULSEGEN2",
    "PULSEGEN3",
    "GND",
    "VCC",
    "NOT_PULSEGEN0",
    "NOT_PULSEGEN1",
    "NOT_PULSEGEN2",
    "NOT_PULSEGEN3",
    "INPUT_BYPASS",
    "NOT_INPUT_BYPASS",
    "ATM_GENERATOR",
    "ATM_EXTERNAL",
    "ATM_SOFTWARE",
    "ATM_SYNCHRONIZED",
    "TS_ACTIVE",
    "TS_ASYNC_STOP",
    "TS_SYNC_STOP",
};

} // namespace

InfoAnswer ask(const HostFunctions& functions, const InfoSelector& selector, unsigned port) {
    unsigned number = 0;
    void* data = nullptr;
    InfoAnswer answer{selector, port, 0, 0, "", nullptr};
    answer.result = functions.info(selector.number, port, 0, &number, &data);
    answer.number = number;
    answer.data = data;
    if (selector.output == InfoOutput::text && data != nullptr)
        answer.text = static_cast<const char*>(data);
    return answer;
}

InfoAnswer ask(const HostFunctions& functions, int number) {
    const auto* const found = std::find_if(std::begin(selectors), std::end(selectors),
                                           [&](const InfoSelector& row) { return row.number == number; });
    return ask(functions, *found);
}

std::vector<InfoAnswer> askEverything(const HostFunctions& functions) {
    std::vector<InfoAnswer> answers;
    for (const InfoSelector& selector : selectors) {
        const unsigned times = selector.isPerPort ? AppletHandle::numberOfPorts : 1;
        for (unsigned port = 0; port < times; ++port)
            answers.push_back(ask(functions, selector, port));
    }
    return answers;
}

int constantOf(const HostFunctions& functions, const std::string& name) {
    std::string text(name);
    // The name travels through the pointer that receives a value elsewhere.
    return functions.info(constantSelector, 0, 0, reinterpret_cast<unsigned*>(text.data()), nullptr);
}

std::vector<NamedConstant> namedConstants(const HostFunctions& functions) {
    std::vector<NamedConstant> known;
    for (const char* const name : constants) {
        const int value = constantOf(functions, name);
        const bool isKnown = value != kavo::error::invalidParameter && value != kavo::error::notSupported;
        known.push_back({name, isKnown ? std::optional<int>(value) : std::nullopt});
    }
    return known;
}

std::string outputText(const InfoAnswer& answer) {
    switch (answer.selector.output) {
    case InfoOutput::number:
        return textOf(std::uint64_t{answer.number});
    case InfoOutput::text:
        return answer.text;
    case InfoOutput::block:
        return textOf(std::uint64_t{answer.number}) + " bytes";
    case InfoOutput::address:
        return answer.number == 0 ? "none" : hexadecimalText(answer.number, 8);
    case InfoOutput::none:
        break;
    }
    return "";
}

} // namespace orbctl
