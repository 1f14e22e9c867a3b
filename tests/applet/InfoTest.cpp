// The applet's fixed properties, which need no handle.

#include "applet/AppletIcon.h"
#include "applet/AppletQel.h"
#include "appletwrappers-baselib/FgQxWrapper.h"
#include "platform/ErrorCodes.h"
#include "tests/applet/CatalogueData.h"
#include "tests/support/Creation.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <map>
#include <regex>
#include <string>

namespace error = kavo::error;

namespace {

constexpr unsigned untouchedValue = 0xDEADBEEF;
void* const untouchedData = const_cast<char*>("untouched");

/// One question with both outputs.
struct Answer {
    explicit Answer(int selector, unsigned index = 0, int subIndex = 0)
        : result(Info(selector, index, subIndex, &value, &data)) {}

    [[nodiscard]] const char* text() const { return static_cast<const char*>(data); }

    unsigned value = untouchedValue;
    void* data = untouchedData;
    int result;
};

int constant(const char* name) {
    // The value travels as a pointer to the name.
    return Info(4352, 0, 0, reinterpret_cast<unsigned*>(const_cast<char*>(name)), nullptr);
}

const std::map<std::string, int> documentedConstants = {
    {"MONO8", 0},
    {"MONO8_SIGNED", 1},
    {"MONO10", 2},
    {"MONO12", 4},
    {"MONO16", 6},
    {"FG_YES", 1},
    {"FG_NO", 0},
    {"FG_GRAY", 3},
    {"FG_GRAY16", 1},
    {"FG_LEFT_ALIGNED", 1},
    {"FG_RIGHT_ALIGNED", 0},
    {"LUT_TYPE_PROCESSING", 3},
    {"LUT_TYPE_CUSTOM", 0},
    {"LUT_IMPLEMENTATION_FULL_LUT", 0},
    {"LUT_IMPLEMENTATION_KNEELUT", 1},
    {"FG_ON", 1},
    {"FG_OFF", 0},
    {"FG_APPLY", 1},
    {"TRGINSRC_0", 0},
    {"TRGINSRC_1", 1},
    {"TRGINSRC_2", 2},
    {"TRGINSRC_3", 3},
    {"TRGINSRC_4", 4},
    {"TRGINSRC_5", 5},
    {"TRGINSRC_6", 6},
    {"TRGINSRC_7", 7},
    {"LOW_ACTIVE", 1},
    {"HIGH_ACTIVE", 0},
    {"IS_BUSY", 1},
    {"IS_NOT_BUSY", 0},
    {"PULSEGEN0", 0},
    {"PULSEGEN1", 1},
    {"PULSEGEN2", 2},
    {"PULSEGEN3", 3},
    {"GND", 4},
    {"VCC", 5},
    {"NOT_PULSEGEN0", 6},
    {"NOT_PULSEGEN1", 7},
    {"NOT_PULSEGEN2", 8},
    {"NOT_PULSEGEN3", 9},
    {"INPUT_BYPASS", 10},
    {"NOT_INPUT_BYPASS", 11},
    {"ATM_GENERATOR", 1},
    {"ATM_EXTERNAL", 2},
    {"ATM_SOFTWARE", 4},
    {"ATM_SYNCHRONIZED", 3},
    {"TS_ACTIVE", 0},
    {"TS_ASYNC_STOP", 1},
    {"TS_SYNC_STOP", 2},
};

const std::map<int, int> plainResults = {
    {848, 0},     {1040, 0}, {1045, 1}, {1792, 2}, {1872, 2}, {1888, 2}, {2048, 0x20004}, {2160, 0},
    {2176, 3652}, {2192, 0}, {2560, 0}, {2816, 1}, {3072, 0}, {3328, 0}, {4608, 2},
};

const std::map<int, const char*> texts = {
    {1044, ""},
    {4096,
     "Halvora Advanced LAG for compatible link aggregation cameras with 12Bit image processing and lookup "
     "table for two Gigabit Ethernet grayscale area scan cameras."},
    {4112, "Halvora Advanced:LAG:Area"},
    {4128, "class=standard,family=acquisition,type=dual,sensortype=area,color=gray,interface=gige,lag=2"},
    {4176, "Orbelline"},
    {4192, "2.4.2.2"},
    {4208, "2.4.2.2.20170406.045837"},
};

class InfoWithHandles : public kavo::test::OnFreshBoard {};

} // namespace

TEST(Info, PlainSelectorsAnswerANumberAndNoOutput) {
    for (const auto& [selector, expected] : plainResults) {
        const Answer answer(selector, 7, 8);
        EXPECT_EQ(answer.result, expected) << selector;
        EXPECT_EQ(answer.value, untouchedValue) << selector;
        EXPECT_EQ(answer.data, untouchedData) << selector;
    }
}

TEST(Info, TextSelectorsAnswerThroughTheData) {
    for (const auto& [selector, expected] : texts) {
        const Answer answer(selector);
        EXPECT_EQ(answer.result, 0) << selector;
        EXPECT_STREQ(answer.text(), expected) << selector;
        EXPECT_EQ(answer.value, untouchedValue) << selector;
    }
}

TEST(Info, TheGuidIsAFixedHexadecimalText) {
    const Answer answer(1043);
    EXPECT_EQ(answer.result, 0);
    EXPECT_TRUE(
        std::regex_match(answer.text(), std::regex("[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}")));
    EXPECT_STREQ(Answer(1043).text(), answer.text());
}

TEST(Info, TheIconIsGivenWhateverTheIndices) {
    for (const auto& [index, subIndex] : {std::pair(0U, 0), std::pair(1U, 0), std::pair(0U, -1)}) {
        const Answer answer(1041, index, subIndex);
        EXPECT_EQ(answer.result, 0);
        EXPECT_EQ(answer.value, 3164U);
        EXPECT_EQ(answer.data, appletIconData);
    }
}

TEST(Info, TheDesignImageIsGivenWithItsSize) {
    const Answer answer(1042);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.value, rawQelDataSize);
    EXPECT_EQ(answer.data, rawQelData);
}

TEST(Info, Selector2304ClearsTheValue) {
    const Answer answer(2304);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.value, 0U);
    EXPECT_EQ(answer.data, untouchedData);
}

TEST(Info, MissingOutputsAreSkipped) {
    for (const int selector :
         {1041, 1042, 1043, 1044, 2304, 4096, 4112, 4128, 4144, 4160, 4176, 4192, 4208}) {
        EXPECT_EQ(Info(selector, 1, 1, nullptr, nullptr), 0) << selector;
    }
    unsigned size = 0;
    EXPECT_EQ(Info(1041, 0, 0, &size, nullptr), 0);
    EXPECT_EQ(size, 3164U);
    void* icon = nullptr;
    EXPECT_EQ(Info(1041, 0, 0, nullptr, &icon), 0);
    EXPECT_EQ(icon, appletIconData);
}

TEST(Info, PortPropertiesAnswerForTwoPorts) {
    for (const int selector : {4624, 4640, 4688}) {
        EXPECT_EQ(Answer(selector, 0, 5).result, 1) << selector;
        EXPECT_EQ(Answer(selector, 1, -5).result, 1) << selector;
    }
    for (const int selector : {4656, 4672}) {
        EXPECT_EQ(Answer(selector, 0).result, 0) << selector;
        EXPECT_EQ(Answer(selector, 1).result, 1) << selector;
        EXPECT_EQ(Answer(selector, 0, 1).result, error::invalidParameter) << selector;
        EXPECT_EQ(Answer(selector, 1, -1).result, error::invalidParameter) << selector;
    }
    EXPECT_EQ(Answer(4704, 0, 1).result, 9);
    EXPECT_EQ(Answer(4704, 1, 1).result, 8);
    for (const int selector : {4624, 4640, 4656, 4672, 4688, 4704}) {
        for (const unsigned index : {2U, 0x80000000U, UINT_MAX}) {
            EXPECT_EQ(Answer(selector, index).result, error::invalidParameter) << selector << ' ' << index;
        }
        EXPECT_EQ(Answer(selector, 0).value, untouchedValue) << selector;
        EXPECT_EQ(Answer(selector, 0).data, untouchedData) << selector;
    }
}

TEST(Info, NamedConstantsAreLookedUpExactly) {
    EXPECT_EQ(documentedConstants.size(), 49U);
    for (const auto& [name, value] : documentedConstants) {
        EXPECT_EQ(constant(name.c_str()), value) << name;
    }
    for (const char* name : {static_cast<const char*>(nullptr), "", "fg_gray", "FG_GRAY ", "FG_GRA",
                             "FG_WIDTH", "TRGINSRC_8", "TRGINSRC_", "PULSEGEN4", "Gray 8bit"}) {
        EXPECT_EQ(constant(name), error::invalidParameter);
    }
}

TEST(Info, EveryRegisteredEnumerationEntryIsANamedConstant) {
    for (const auto& row : kavo::test::documentedCatalogue()) {
        for (const int port : {0, 1}) {
            for (const auto& entry : kavo::test::documentedEntries(row.name, port)) {
                EXPECT_EQ(constant(entry.symbol.c_str()), entry.value) << row.name << ' ' << entry.symbol;
            }
        }
    }
}

TEST(Info, EveryOtherSelectorIsNotSupported) {
    std::map<int, bool> known{{1041, true}, {1042, true}, {1043, true}, {2304, true}, {4144, true},
                              {4160, true}, {4352, true}, {4624, true}, {4640, true}, {4656, true},
                              {4672, true}, {4688, true}, {4704, true}};
    for (const auto& [selector, result] : plainResults) {
        known[selector] = result >= 0;
    }
    for (const auto& [selector, text] : texts) {
        known[selector] = text != nullptr;
    }
    EXPECT_EQ(known.size(), 35U);
    for (int selector = -1; selector < 10000; ++selector) {
        if (known.count(selector) == 0) {
            const Answer answer(selector);
            ASSERT_EQ(answer.result, error::notSupported) << selector;
            ASSERT_EQ(answer.value, untouchedValue) << selector;
            ASSERT_EQ(answer.data, untouchedData) << selector;
        }
    }
    EXPECT_EQ(Answer(INT_MAX).result, error::notSupported);
    EXPECT_EQ(Answer(INT_MIN).result, error::notSupported);
}

TEST_F(InfoWithHandles, TheLatestDeviceAndDesignAreTold) {
    const auto word = [](const void* handle) {
        return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(handle));
    };
    kavo::test::Creation creation;
    ASSERT_TRUE(creation.hasSucceeded());
    const auto& wrapper = *static_cast<FgQxWrapper*>(creation.handle()->Master);
    EXPECT_EQ(Answer(4144).result, 0);
    EXPECT_EQ(Answer(4144).value, word(board().device()));
    EXPECT_EQ(Answer(4160).result, 0);
    EXPECT_EQ(Answer(4160).value, word(wrapper.designHandle()));
    EXPECT_EQ(Answer(4144).data, untouchedData);

    // They outlive the handle: they are the process's.
    const unsigned design = Answer(4160).value;
    Fg_FreeGrabber(creation.handle());
    EXPECT_EQ(Answer(4144).value, word(board().device()));
    EXPECT_EQ(Answer(4160).value, design);
}
