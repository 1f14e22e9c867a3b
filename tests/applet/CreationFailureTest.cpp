// Creation when a call to the host fails: the code, what is released again, and that what need not succeed
// need not. The address sanitizer's build finds whatever is left behind.

#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ExternalDesign.h"
#include "tests/support/LeakExemption.h"
#include "tests/support/LibraryCalls.h"

#include <algorithm>
#include <optional>

namespace error = kavo::error;
using kavo::test::Creation;
using kavo::test::ExternalDesign;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

class CreationFails : public kavo::test::OnFreshBoard {
  protected:
    CreationFails() {
        kavo::test::libraryCalls().clear();
        hostCalls().record(true);
    }
    ~CreationFails() override { kavo::test::librariesAreMissing() = false; }

    static std::size_t count(CallKind kind) { return hostCalls().calls(kind).size(); }
    static long closings() {
        const auto& calls = kavo::test::libraryCalls();
        return std::count_if(calls.begin(), calls.end(),
                             [](const std::string& call) { return call.rfind("close", 0) == 0; });
    }
    /// No design: the wrapper stays, and the library with it.
    static void expectNoDesign() {
        const kavo::test::LeakExemption keptWrapper;
        const Creation creation;
        EXPECT_FALSE(creation.hasSucceeded());
        EXPECT_EQ(creation.error(), error::initialisationFailed);
        EXPECT_EQ(count(CallKind::initialisation), 0U);
        EXPECT_EQ(closings(), 0);
    }
};

struct HarmlessFailure {
    const char* title;
    CallKind kind;
};

std::ostream& operator<<(std::ostream& out, const HarmlessFailure& failure) { return out << failure.title; }

class CreationGoesOn : public kavo::test::OnFreshBoard, public testing::WithParamInterface<HarmlessFailure> {
  protected:
    static std::size_t callsOfCreation() {
        hostCalls().clear();
        hostCalls().record(true);
        { const Creation creation; }
        hostCalls().record(false);
        return hostCalls().calls(GetParam().kind).size();
    }
};

INSTANTIATE_TEST_SUITE_P(EveryKind, CreationGoesOn,
                         testing::Values(HarmlessFailure{"IdLookup", CallKind::idLookup},
                                         HarmlessFailure{"Write", CallKind::write},
                                         HarmlessFailure{"Read", CallKind::read}),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.title); });

} // namespace

TEST_F(CreationFails, WithoutTheRuntimeLibrary) {
    kavo::test::librariesAreMissing() = true;
    const Creation creation;
    EXPECT_FALSE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), error::runtimeMissing);
    EXPECT_TRUE(hostCalls().calls().empty()) << "no design was loaded";
}

TEST_F(CreationFails, WithoutInitialisationFunction) {
    hostCalls().lackSymbol("Fg_InitHandleSlaveAware");
    hostCalls().lackSymbol("Fg_InitHandle");
    const Creation creation;
    EXPECT_FALSE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), error::runtimeMissing);
    EXPECT_EQ(count(CallKind::designUnload), 1U);
    EXPECT_EQ(closings(), 1);
}

TEST_F(CreationFails, WhenTheInnerHandleCannotBeOpened) {
    hostCalls().failOnce(CallKind::initialisation, 1, -4711);
    const Creation creation;
    EXPECT_FALSE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), -4711);
    EXPECT_EQ(count(CallKind::designUnload), 1U);
    EXPECT_EQ(count(CallKind::release), 0U);
    EXPECT_EQ(closings(), 1);
}

TEST_F(CreationFails, WithTheGeneralCodeWhenTheRuntimeCannotTellWhy) {
    hostCalls().lackSymbol("Fg_getLastErrorNumber");
    hostCalls().failOnce(CallKind::initialisation, 1, -4711);
    const Creation creation;
    EXPECT_FALSE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), error::initialisationFailed);
    EXPECT_EQ(count(CallKind::designUnload), 1U);
}

TEST_F(CreationFails, OnADeviceThatIsNone) {
    int code = 0;
    EXPECT_EQ(Std_entry(nullptr, &code, 0), nullptr);
    EXPECT_EQ(code, error::invalidParameter);
    EXPECT_EQ(count(CallKind::designUnload), 1U);
}

TEST_F(CreationFails, WhenTheEmbeddedDesignIsRefused) {
    hostCalls().failOnce(CallKind::designLoad, 1, 0);
    expectNoDesign();
}

TEST_F(CreationFails, WhenTheForcedDesignIsMissing) {
    const ExternalDesign design(std::nullopt);
    expectNoDesign();
    EXPECT_EQ(hostCalls().calls().front().function, "QelLoadQelFileWithType");
}

TEST_F(CreationFails, WhenTheForcedDesignIsDamaged) {
    const std::string whole = kavo::test::embeddedDesign().encode();
    std::string changed = whole;
    changed[changed.size() / 2] ^= 1;
    for (const std::string& content :
         {std::string(), std::string("\0\xFF\n", 3), whole.substr(0, whole.size() / 2), changed,
          std::string(100000, 'x')}) {
        kavo::test::libraryCalls().clear();
        const ExternalDesign design(content);
        expectNoDesign();
    }
}

TEST_F(CreationFails, WhenTheForcedDesignIsOfAnotherType) {
    simulator::DesignImage image = kavo::test::embeddedDesign();
    image.type = 3651;
    const ExternalDesign design(image);
    expectNoDesign();
}

TEST_F(CreationFails, WhenTheForcedDesignIsAFolder) {
    const ExternalDesign design(std::nullopt);
    std::filesystem::create_directory("Orbelline.qel");
    expectNoDesign();
}

TEST_F(CreationFails, WithoutWantedErrorToo) {
    hostCalls().failOnce(CallKind::designLoad, 1, 0);
    const kavo::test::LeakExemption keptWrapper;
    EXPECT_EQ(Std_entry(board().device(), nullptr, 0), nullptr);
}

TEST_F(CreationFails, AndTheNextCreationSucceeds) {
    hostCalls().failOnce(CallKind::initialisation, 1, -1);
    { const Creation failed; }
    Creation creation;
    EXPECT_TRUE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), 0);
    EXPECT_EQ(Fg_getLastErrorNumber(creation.handle()), 0);
}

TEST_P(CreationGoesOn, WhicheverCallFailsOnce) {
    const std::size_t calls = callsOfCreation();
    ASSERT_GT(calls, 0U);
    for (unsigned nth = 1; nth <= calls; ++nth) {
        hostCalls().failOnce(GetParam().kind, nth, -4711);
        const Creation creation;
        EXPECT_TRUE(creation.hasSucceeded()) << nth;
        EXPECT_EQ(creation.error(), 0) << nth;
        EXPECT_EQ(hostCalls().pendingFailures(), 0U) << nth;
        hostCalls().stopFailing();
    }
}

TEST_P(CreationGoesOn, WhenAllFail) {
    hostCalls().failFrom(GetParam().kind, 1, -4711);
    Creation creation;
    EXPECT_TRUE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), 0);
    hostCalls().stopFailing();
    EXPECT_EQ(Fg_getNrOfParameter(creation.handle()), 93);
}

TEST_F(CreationFails, NotWhenEveryFunctionBesideTheOpeningIsMissing) {
    for (const char* name :
         {"Fg_setParameter", "Fg_setParameterWithType", "Fg_getParameter", "Fg_getParameterWithType",
          "Fg_getParameterIdByName", "Fg_getParameterInfo", "Fg_AcquireEx", "Fg_getLastErrorNumber"}) {
        hostCalls().lackSymbol(name);
    }
    Creation creation;
    ASSERT_TRUE(creation.hasSucceeded());
    EXPECT_EQ(creation.error(), 0);
    Fg_Struct* handle = creation.handle();
    unsigned value = 512;
    EXPECT_EQ(Fg_setParameterWithType(handle, FG_WIDTH, &value, 0, 2), error::notAvailable);
    EXPECT_EQ(Fg_getParameterWithType(handle, FG_OVERFLOW, &value, 0, 2), error::notAvailable);
    EXPECT_EQ(Fg_getParameterWithType(handle, FG_NR_OF_DMAS, &value, 0, 2), error::notAvailable);
    EXPECT_EQ(Fg_setParameterWithType(handle, FG_TIMEOUT, &value, 0, 2), error::notAvailable);
    EXPECT_EQ(Fg_getParameterInfo(handle, 0), nullptr);
}
