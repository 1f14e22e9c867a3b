// The runtime's side may call an operation by its slot number: each has to stay where it is.

#include "tests/appletwrappers-baselib/BareWrapper.h"

#include <cstring>
#include <gtest/gtest.h>
#include <new>

using kavo::test::callText;
using kavo::test::RecordingWrapper;

namespace {

using AnyFunction = void (*)();

AnyFunction slotOf(const FgQxWrapper& wrapper, unsigned number) {
    const AnyFunction* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&wrapper), sizeof table);
    return table[number];
}

template <class Result, class... Arguments>
Result callSlot(FgQxWrapper& wrapper, unsigned number, Arguments... arguments) {
    using Operation = Result (*)(FgQxWrapper*, Arguments...);
    return reinterpret_cast<Operation>(slotOf(wrapper, number))(&wrapper, arguments...);
}

class VirtualSlots : public testing::Test {
  protected:
    /// Calls a slot that answers an int.
    template <class... Arguments>
    void expectInt(unsigned number, const char* operation, Arguments... arguments) {
        wrapper.answer = static_cast<int>(1000 + number);
        expectCall(number, callText(operation, arguments...), [&] {
            EXPECT_EQ((callSlot<int, Arguments...>(wrapper, number, arguments...)), wrapper.answer);
        });
    }
    template <class Call>
    void expectCall(unsigned number, const std::string& expected, Call call) {
        wrapper.calls.clear();
        call();
        EXPECT_EQ(wrapper.calls, std::vector<std::string>{expected}) << "slot " << number;
    }

    RecordingWrapper wrapper;
    std::uint32_t word = 0;
    char text[8] = "text";
    Fg_Struct handle{nullptr};
    ShadingMaster* shading = reinterpret_cast<ShadingMaster*>(&word);
};

} // namespace

TEST_F(VirtualSlots, ConfigurationAndDmaOperationsComeFirst) {
    Fg_ConfigFileParser parser(nullptr, nullptr, true);
    expectCall(0, "loadConfig()",
               [&] { EXPECT_TRUE((callSlot<bool, Fg_ConfigFileParser&>(wrapper, 0, parser))); });
    expectCall(1, "saveConfig()", [&] { callSlot<void, Fg_ConfigFileParser&>(wrapper, 1, parser); });
    expectInt(2, "processChannelToDma", 3, 4);
    expectInt(3, "mapDmaToFormat", 5);
    expectInt(4, "setDmaAlignment", 6, 7);
    expectInt(5, "getDmaAlignment", 8);
}

TEST_F(VirtualSlots, SixDestroysAndSevenDestroysAndReleases) {
    bool destroyed = false;
    alignas(RecordingWrapper) unsigned char storage[sizeof(RecordingWrapper)];
    auto* inPlace = new (storage) RecordingWrapper(&destroyed);
    callSlot<void>(*inPlace, 6);
    EXPECT_TRUE(destroyed);

    destroyed = false;
    callSlot<void>(*new RecordingWrapper(&destroyed), 7);
    EXPECT_TRUE(destroyed);
}

TEST_F(VirtualSlots, ParameterOperationsAreEightToFourteen) {
    expectCall(8, "createUserParameters()", [&] { callSlot<void>(wrapper, 8); });
    expectInt(9, "Fg_setParameter", 100, static_cast<const void*>(&word), 1);
    expectInt(10, "Fg_getParameter", 200, static_cast<void*>(&word), 0);
    expectInt(11, "Fg_getParameterIdByName", static_cast<const char*>(text));
    expectCall(12, "Fg_getParameterName(9)",
               [&] { EXPECT_STREQ((callSlot<const char*, int>(wrapper, 12, 9)), "a name"); });
    expectInt(13, "Fg_getParameterId", 10);
    expectInt(14, "Fg_getParameterCount");
}

TEST_F(VirtualSlots, FileAndDescriptionFramesAreFifteenToSeventeen) {
    const char* file = text;
    unsigned size = 0;
    expectInt(15, "Fg_saveConfig", &handle, file);
    expectInt(16, "Fg_loadConfig", &handle, file);
    wrapper.answer = 17;
    expectCall(17, callText("Fg_getParameterInfoXML", &handle, 1, static_cast<void*>(text), &size), [&] {
        EXPECT_EQ((callSlot<int, Fg_Struct*, int, char*, unsigned*>(wrapper, 17, &handle, 1, text, &size)),
                  17);
    });
}

TEST_F(VirtualSlots, ShadingIsEighteenToTwentySix) {
    wrapper.shading = shading;
    expectCall(18, "Fg_AllocShading(1, 2)",
               [&] { EXPECT_EQ((callSlot<ShadingMaster*, int, int>(wrapper, 18, 1, 2)), shading); });
    expectInt(19, "Fg_FreeShading", shading);
    expectInt(20, "Shad_SetSubValueLine", shading, 1, 2, 1.5F);
    expectInt(21, "Shad_SetMultValueLine", shading, 3, 4, 2.5F);
    expectInt(22, "Shad_SetFixedPatternNoiseLine", shading, 5, 6, 7);
    expectInt(23, "Shad_GetMaxLine", shading);
    expectInt(24, "Shad_GetAccess", shading);
    expectInt(25, "Shad_FreeAccess", shading);
    expectInt(26, "Shad_WriteActLine", shading, 8);
}

TEST_F(VirtualSlots, EventsAndIdentityAreTwentySevenToThirtyTwo) {
    const char* name = text;
    const std::uint64_t mask = 1ULL << 63;
    expectCall(27, "Fg_getEventMask(text)",
               [&] { EXPECT_EQ((callSlot<std::uint64_t, const char*>(wrapper, 27, name)), 1ULL << 40); });
    expectCall(28, callText("Fg_getEventName", mask),
               [&] { EXPECT_STREQ((callSlot<const char*, std::uint64_t>(wrapper, 28, mask)), "an event"); });
    expectCall(29, "getManufacturer()",
               [&] { EXPECT_STREQ(callSlot<const char*>(wrapper, 29), "A Manufacturer"); });
    expectCall(30, "getCameraType()", [&] { EXPECT_STREQ(callSlot<const char*>(wrapper, 30), "A Type"); });
    expectCall(31, "getCameraVersion()", [&] { EXPECT_STREQ(callSlot<const char*>(wrapper, 31), "7.8"); });
    expectCall(32, "getAppletID()", [&] { EXPECT_EQ(callSlot<int>(wrapper, 32), 42); });
}
