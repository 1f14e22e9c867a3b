// Standard event names over the loaded design's own order.

#include "platform/ErrorCodes.h"
#include "tests/support/Creation.h"
#include "tests/support/ExternalDesign.h"

#include <algorithm>
#include <map>
#include <optional>

namespace error = kavo::error;
using kavo::test::Creation;

namespace {

constexpr const char* inputs = "Device1_Process2_Trigger_TriggerInput_InputEvents_InputEvents_";
constexpr const char* monitoring = "Device1_Process2_Trigger_Monitoring_MonitoringEvents_";
constexpr const char* frames = "Device1_Process2_Trigger_Monitoring_FVALEvents_";

std::map<std::string, std::string> documentedEvents() {
    std::map<std::string, std::string> events;
    for (const std::string camera : {"0", "1"}) {
        const std::string cam = "Cam" + camera;
        events["FG_OVERFLOW_CAM" + camera] = "Device1_Process" + camera + "_Overflow_Overflow";
        events["FG_START_OF_FRAME_CAM_PORT_" + camera] = frames + cam + "_FrameStart";
        events["FG_END_OF_FRAME_CAM_PORT_" + camera] = frames + cam + "_FrameEnd";
        events["FG_TRIGGER_EXCEEDED_PERIOD_LIMITS_CAM" + camera] = monitoring + cam + "Override";
        events["FG_MISSING_CAM" + camera + "_FRAME_RESPONSE"] = monitoring + cam + "MissingFrame";
        events["FG_TRIGGER_QUEUE_FILLLEVEL_THRESHOLD_CAM" + camera + "_ON"] =
            monitoring + cam + "HysteresisOn";
        events["FG_TRIGGER_QUEUE_FILLLEVEL_THRESHOLD_CAM" + camera + "_OFF"] =
            monitoring + cam + "HysteresisOff";
        events["FG_TRIGGER_OUTPUT_CAM" + camera] = monitoring + cam + "OutputEvent";
    }
    for (const std::string pin : {"0", "1", "2", "3", "4", "5", "6", "7"}) {
        events["FG_TRIGGER_INPUT" + pin + "_RISING"] = inputs + ("Pin" + pin);
        events["FG_TRIGGER_INPUT" + pin + "_FALLING"] = inputs + ("NotPin" + pin);
    }
    return events;
}

class Events : public kavo::test::OnFreshBoard {
  protected:
    /// Creates an applet whose design has these events.
    void createWith(const std::vector<std::string>& events) {
        simulator::DesignImage image = kavo::test::embeddedDesign();
        image.events = events;
        const kavo::test::ExternalDesign design(image);
        creation.emplace(1);
        ASSERT_TRUE(creation->hasSucceeded());
    }
    void expectMask(const std::string& name, std::uint64_t mask) {
        EXPECT_EQ(Fg_getEventMask(handle(), name.c_str()), mask) << name;
        EXPECT_EQ(lastError(), mask != 0 ? 0 : error::invalidParameter) << name;
        if (mask != 0) {
            EXPECT_STREQ(Fg_getEventName(handle(), mask), name.c_str());
            EXPECT_EQ(lastError(), 0);
        }
    }
    void expectNoName(std::uint64_t mask) {
        EXPECT_EQ(Fg_getEventName(handle(), mask), nullptr) << mask;
        EXPECT_EQ(lastError(), error::invalidParameter) << mask;
    }
    /// Every standard event stands where the design has it.
    void expectOrder(const std::vector<std::string>& events) {
        for (const auto& [name, designEvent] : documentedEvents()) {
            const auto place = std::find(events.begin(), events.end(), designEvent) - events.begin();
            const bool isThere =
                place < std::min<std::ptrdiff_t>(64, static_cast<std::ptrdiff_t>(events.size()));
            expectMask(name, isThere ? std::uint64_t{1} << place : 0);
        }
    }
    Fg_Struct* handle() { return creation->handle(); }
    int lastError() { return Fg_getLastErrorNumber(handle()); }
    static std::vector<std::string> fillers(int count) {
        std::vector<std::string> events;
        for (int index = 0; index < count; ++index) {
            events.push_back("Filler" + std::to_string(index));
        }
        return events;
    }

    std::optional<Creation> creation;
};

} // namespace

TEST_F(Events, TheEmbeddedDesignHasAllThirtyTwo) {
    EXPECT_EQ(documentedEvents().size(), 32U);
    creation.emplace(0);
    const std::vector<std::string> events = kavo::test::embeddedDesign().events;
    EXPECT_EQ(events.size(), 32U);
    expectOrder(events);
    for (unsigned bit = 0; bit < 64; ++bit) {
        const char* name = Fg_getEventName(handle(), std::uint64_t{1} << bit);
        EXPECT_EQ(name != nullptr, bit < 32) << bit;
    }
}

TEST_F(Events, AnyOrderOfTheDesignIsFollowed) {
    std::vector<std::string> events = kavo::test::embeddedDesign().events;
    std::sort(events.begin(), events.end());
    createWith(events);
    expectOrder(events);
    std::reverse(events.begin(), events.end());
    creation.reset();
    createWith(events);
    expectOrder(events);
}

TEST_F(Events, EventsWithoutStandardNameTakeTheirBits) {
    std::vector<std::string> events = fillers(32);
    const std::vector<std::string> own = kavo::test::embeddedDesign().events;
    events.insert(events.end(), own.begin(), own.end());
    createWith(events);
    expectOrder(events);
    expectNoName(1);
    expectNoName(std::uint64_t{1} << 31);
    EXPECT_NE(Fg_getEventName(handle(), std::uint64_t{1} << 63), nullptr);
}

TEST_F(Events, MissingEventsAreUnknownAndTheOthersAreNot) {
    for (const auto& [name, designEvent] : documentedEvents()) {
        std::vector<std::string> events = kavo::test::embeddedDesign().events;
        events.erase(std::find(events.begin(), events.end(), designEvent));
        creation.reset();
        createWith(events);
        expectMask(name, 0);
        expectOrder(events);
    }
}

TEST_F(Events, ADesignWithoutEventsHasNone) {
    createWith({});
    expectOrder({});
    expectNoName(1);
}

TEST_F(Events, TheFirstOfTwoEventsOfOneNameCounts) {
    const std::string overflow = "Device1_Process1_Overflow_Overflow";
    createWith({"Filler", overflow, "Filler", overflow});
    expectMask("FG_OVERFLOW_CAM1", 2);
    expectNoName(8);
    expectNoName(1);
}

TEST_F(Events, TheSixtyFourthEventIsTheLastWithABit) {
    std::vector<std::string> events = fillers(63);
    events.push_back("Device1_Process0_Overflow_Overflow");
    events.push_back("Device1_Process1_Overflow_Overflow");
    events.push_back(frames + std::string("Cam0_FrameEnd"));
    createWith(events);
    expectMask("FG_OVERFLOW_CAM0", std::uint64_t{1} << 63);
    EXPECT_EQ(Fg_getEventMask(handle(), "FG_OVERFLOW_CAM1"), 0U);
    expectMask("FG_END_OF_FRAME_CAM_PORT_0", 0);
    expectNoName(0);
}

TEST_F(Events, NamesAreComparedExactly) {
    creation.emplace(1);
    for (const char* name :
         {static_cast<const char*>(nullptr), "", "fg_overflow_cam0", "FG_OVERFLOW_CAM0 ", "FG_OVERFLOW_CAM",
          "FG_OVERFLOW_CAM2", "FG_TRIGGER_INPUT8_RISING", "Device1_Process0_Overflow_Overflow"}) {
        EXPECT_EQ(Fg_getEventMask(handle(), name), 0U);
        EXPECT_EQ(lastError(), error::invalidParameter);
    }
}

TEST_F(Events, AMaskOfNoOrSeveralBitsHasNoName) {
    creation.emplace(1);
    for (const std::uint64_t mask : {0ULL, 3ULL, 0x80000001ULL, ~0ULL, 1ULL << 32, 1ULL << 63}) {
        expectNoName(mask);
    }
}

TEST_F(Events, NamesOutliveTheHandle) {
    creation.emplace(1);
    const char* name = Fg_getEventName(handle(), Fg_getEventMask(handle(), "FG_TRIGGER_INPUT3_RISING"));
    creation.reset();
    EXPECT_STREQ(name, "FG_TRIGGER_INPUT3_RISING");
}
