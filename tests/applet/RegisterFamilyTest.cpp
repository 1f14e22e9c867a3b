// The registers of the design as parameters ("DRA_"), switched on by the environment.

#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ExternalDesign.h"
#include "tests/support/ScopedEnvironment.h"

#include <optional>

namespace error = kavo::error;
using kavo::test::ScopedEnvironment;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr const char* familySwitch = "KAVO_ENABLE_DRA";
constexpr int firstRegisterId = 1000001;

/// The applet over a design whose first registers are of every kind of width.
class RegisterFamily : public kavo::test::OnFreshBoard {
  protected:
    RegisterFamily() {
        simulator::DesignImage image = kavo::test::embeddedDesign();
        embedded = static_cast<int>(image.registers.size());
        image.registers.push_back({"One", 1, false});
        image.registers.push_back({"ThirtyTwo", 32, false});
        image.registers.push_back({"ThirtyThree", 33, false});
        image.registers.push_back({"SixtyFour", 64, false});
        image.registers.push_back({"Status", 8, true});
        image.registers.push_back({"One", 7, false});
        design.emplace(image);
        applet.emplace();
    }

    [[nodiscard]] int idOf(const std::string& name) {
        return Fg_getParameterIdByName(applet->handle(), ("DRA_" + name).c_str());
    }
    int set(int id, std::uint64_t value, unsigned dmaIndex = 0) {
        return Fg_setParameterWithType(applet->handle(), id, &value, dmaIndex, 2);
    }

    ScopedEnvironment on{familySwitch, "true"};
    int embedded = 0;
    std::optional<kavo::test::ExternalDesign> design;
    std::optional<AppletOnBoard> applet;
};

class RegisterSwitch : public kavo::test::OnFreshBoard {
  protected:
    static bool isOn(const char* value) {
        const ScopedEnvironment setting(familySwitch, value);
        kavo::test::Creation creation(1);
        return Fg_getNrOfParameter(creation.handle()) > 93;
    }
};

} // namespace

TEST_F(RegisterSwitch, FourWordsInAnyCaseSwitchTheFamilyOn) {
    for (const char* value : {"yes", "true", "on", "1", "YES", "TRUE", "On", "tRuE"}) {
        EXPECT_TRUE(isOn(value)) << value;
    }
    for (const char* value : {static_cast<const char*>(nullptr), "", "enabled", "2", "0", "no", "false",
                              "off", "yes ", " 1", "11", "y", "t", "\xC3\xB6n"}) {
        EXPECT_FALSE(isOn(value)) << (value != nullptr ? value : "(unset)");
    }
}

TEST_F(RegisterSwitch, TheSwitchIsReadAtCreation) {
    const ScopedEnvironment off(familySwitch, nullptr);
    kavo::test::Creation creation(1);
    const ScopedEnvironment on(familySwitch, "1");
    EXPECT_EQ(Fg_getNrOfParameter(creation.handle()), 93);
    unsigned word = 0;
    EXPECT_EQ(Fg_getParameterWithType(creation.handle(), firstRegisterId, &word, 0, 2),
              error::invalidParameter);
}

TEST_F(RegisterFamily, RegistersFollowTheStandardParameters) {
    Fg_Struct* handle = applet->handle();
    EXPECT_EQ(Fg_getNrOfParameter(handle), 93 + embedded + 6);
    const auto registers = kavo::test::embeddedDesign().registers;
    for (int number = 1; number <= embedded; ++number) {
        const std::string name = "DRA_" + registers[static_cast<std::size_t>(number) - 1].name;
        ASSERT_STREQ(Fg_getParameterName(handle, 92 + number), name.c_str());
        ASSERT_EQ(Fg_getParameterIdByName(handle, name.c_str()), 1000000 + number);
        ASSERT_EQ(Fg_getParameterId(handle, 92 + number), 1000000 + number);
    }
    EXPECT_EQ(Fg_getParameterName(handle, 93 + embedded + 6), nullptr);
}

TEST_F(RegisterFamily, ASecondRegisterOfANameSharesTheIndexOfTheFirst) {
    EXPECT_STREQ(Fg_getParameterName(applet->handle(), 92 + embedded + 6), "DRA_One");
    EXPECT_EQ(Fg_getParameterId(applet->handle(), 92 + embedded + 6), 1000000 + embedded + 1);
}

TEST_F(RegisterFamily, RecordsTellTheLargestValueOfEveryWidth) {
    for (const int port : {0, 1}) {
        const RegisterInfo* one = applet->record(idOf("One"), port);
        ASSERT_NE(one, nullptr);
        EXPECT_EQ(one->format, REG_FORMAT_UINT);
        EXPECT_EQ(one->u.uiReg.from, 0U);
        EXPECT_EQ(one->u.uiReg.to, 1U);
        EXPECT_EQ(one->u.uiReg.steps, 1U);
        EXPECT_STREQ(one->name, "One");
        EXPECT_STREQ(one->parameterName, "DRA_One");
        EXPECT_EQ(one->accessFlags, 7);
        EXPECT_EQ(one->rangeFlags, 1);
        EXPECT_EQ(one->visibilityFlags, 1);
        EXPECT_EQ(one->unit, nullptr);
        const RegisterInfo* word = applet->record(idOf("ThirtyTwo"), port);
        EXPECT_EQ(word->format, REG_FORMAT_UINT);
        EXPECT_EQ(word->u.uiReg.to, 4294967295U);
        const RegisterInfo* wide = applet->record(idOf("ThirtyThree"), port);
        EXPECT_EQ(wide->format, REG_FORMAT_UINT64);
        EXPECT_EQ(static_cast<std::uint64_t>(wide->u.iReg64.to), 0x1FFFFFFFFU);
        EXPECT_EQ(wide->u.iReg64.steps, 1);
        const RegisterInfo* widest = applet->record(idOf("SixtyFour"), port);
        EXPECT_EQ(static_cast<std::uint64_t>(widest->u.iReg64.to), ~0ULL);
    }
}

TEST_F(RegisterFamily, TheirGroupWasAddedLast) {
    for (const int port : {0, 1}) {
        const RegisterInfo* group = Fg_getParameterInfo(applet->handle(), port);
        EXPECT_STREQ(group->name, "Direct Register Access");
        EXPECT_EQ(group->u.gReg.nrOfElements, embedded + 6);
        EXPECT_STREQ(group->next->name, "Applet Properties");
    }
}

TEST_F(RegisterFamily, ANarrowWriteHasAZeroUpperWord) {
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(set(idOf("ThirtyTwo"), 0x1122334455667788U), 0);
    EXPECT_EQ(set(idOf("ThirtyThree"), 0x0000000155667788U), 0);
    const auto writes = hostCalls().calls(CallKind::registerWrite);
    ASSERT_EQ(writes.size(), 2U);
    EXPECT_EQ(writes[0].id, embedded + 2);
    EXPECT_EQ(writes[0].values, (std::vector<std::uint32_t>{0x55667788, 0}));
    EXPECT_EQ(writes[1].id, embedded + 3);
    EXPECT_EQ(writes[1].values, (std::vector<std::uint32_t>{0x55667788, 1}));
    EXPECT_TRUE(hostCalls().calls(CallKind::write).empty());
}

TEST_F(RegisterFamily, ANarrowReadLeavesTheUpperWordOfTheBuffer) {
    EXPECT_EQ(set(idOf("ThirtyTwo"), 4711), 0);
    std::uint64_t value = ~0ULL;
    EXPECT_EQ(Fg_getParameterWithType(applet->handle(), idOf("ThirtyTwo"), &value, 0, 2), 0);
    EXPECT_EQ(value, 0xFFFFFFFF00000000U + 4711);
    for (const int type : {3, 4}) {
        value = ~0ULL;
        EXPECT_EQ(Fg_getParameterWithType(applet->handle(), idOf("ThirtyTwo"), &value, 0, type), 0);
        EXPECT_EQ(value, 4711U);
    }
}

TEST_F(RegisterFamily, AWideReadFillsBothWordsLowerFirst) {
    EXPECT_EQ(set(idOf("SixtyFour"), 0x1122334455667788U), 0);
    std::uint32_t words[2] = {1, 2};
    EXPECT_EQ(Fg_getParameterWithType(applet->handle(), idOf("SixtyFour"), words, 0, 2), 0);
    EXPECT_EQ(words[0], 0x55667788U);
    EXPECT_EQ(words[1], 0x11223344U);
}

TEST_F(RegisterFamily, TheDmaIndexPlaysNoPart) {
    for (const unsigned dmaIndex : {0U, 1U, 2U, 4294967295U}) {
        EXPECT_EQ(set(idOf("ThirtyTwo"), 100 + dmaIndex, dmaIndex), 0);
        std::uint32_t value = 0;
        EXPECT_EQ(Fg_getParameterWithType(applet->handle(), idOf("ThirtyTwo"), &value, dmaIndex, 2), 0);
        EXPECT_EQ(value, 100 + dmaIndex);
    }
}

TEST_F(RegisterFamily, CodesOfTheRegisterAccessPassUnchanged) {
    hostCalls().failOnce(CallKind::registerWrite, 1, -4711);
    EXPECT_EQ(set(idOf("One"), 1), -4711);
    EXPECT_EQ(applet->lastError(), -4711);
    hostCalls().failOnce(CallKind::registerRead, 1, -4712);
    std::uint64_t value = ~0ULL;
    EXPECT_EQ(Fg_getParameterWithType(applet->handle(), idOf("One"), &value, 0, 2), -4712);
    EXPECT_EQ(applet->lastError(), -4712);
    EXPECT_EQ(value, ~0ULL) << "a failed read leaves the buffer alone";
}

TEST_F(RegisterFamily, TheRegisterAccessDecidesAboutUnknownNumbers) {
    AppletOnBoard::forgetCalls();
    for (const int id : {1000001 + embedded + 6, 2000000}) {
        EXPECT_LT(set(id, 1), 0) << id;
        EXPECT_EQ(applet->lastError(), hostCalls().calls(CallKind::registerWrite).back().result);
    }
    EXPECT_EQ(hostCalls().calls(CallKind::registerWrite).size(), 2U);
    EXPECT_EQ(set(1000000, 1), error::invalidParameter) << "still a standard id";
    EXPECT_EQ(hostCalls().calls(CallKind::registerWrite).size(), 2U);
}

TEST_F(RegisterFamily, RegistersHaveNoDescription) {
    char name[64] = "DRA_One";
    EXPECT_EQ(Fg_getParameterWithType(applet->handle(), parameterDescriptionQuery, name, 0, 2),
              error::invalidParameter);
}
