// The runtime's own parameters offered unchanged ("DQXA_"), switched on by the environment.

#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ExternalDesign.h"
#include "tests/support/ScopedEnvironment.h"

#include <algorithm>
#include <map>
#include <optional>

namespace error = kavo::error;
using kavo::test::ScopedEnvironment;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr const char* familySwitch = "KAVO_ENABLE_DQXA";

/// Every record of a tree that is no group, by name.
void collect(const RegisterInfo& record, std::map<std::string, const RegisterInfo*>& found) {
    if (record.format != REG_FORMAT_GROUP) {
        found[record.name] = &record;
        return;
    }
    for (int index = 0; index < record.u.gReg.nrOfElements; ++index) {
        collect(*record.u.gReg.elements[index], found);
    }
}

class InspectedFamily : public kavo::test::OnFreshBoard {
  protected:
    InspectedFamily() {
        simulator::DesignImage image = kavo::test::embeddedDesign();
        image.registers.push_back({"Wide_Register", 40, false});
        image.parameters.push_back({"Wide_Parameter", static_cast<unsigned>(image.registers.size())});
        design.emplace(image);
        applet.emplace();
        for (const RegisterInfo* root = applet->wrapper().getUnwrappedParameterInfo(); root != nullptr;
             root = root->next) {
            collect(*root, own);
        }
        AppletOnBoard::forgetCalls();
    }

    /// Those of the runtime's parameters that can be inspected: fields cannot.
    [[nodiscard]] std::vector<std::string> expectedNames() const {
        std::vector<std::string> names;
        for (const auto& [name, record] : own) {
            if (record->format != REG_FORMAT_UINTFIELD) {
                names.push_back("DQXA_" + name);
            }
        }
        return names;
    }
    [[nodiscard]] int runtimeId(const std::string& name) {
        return applet->wrapper().getParameterIdByName(name.c_str());
    }

    ScopedEnvironment on{familySwitch, "yes"};
    std::optional<kavo::test::ExternalDesign> design;
    std::optional<AppletOnBoard> applet;
    std::map<std::string, const RegisterInfo*> own;
};

class InspectedSwitch : public kavo::test::OnFreshBoard {
  protected:
    static bool isOn(const char* value) {
        const ScopedEnvironment setting(familySwitch, value);
        kavo::test::Creation creation(1);
        return Fg_getNrOfParameter(creation.handle()) > 93;
    }
};

} // namespace

TEST_F(InspectedSwitch, FourWordsInAnyCaseSwitchTheFamilyOn) {
    for (const char* value : {"yes", "true", "on", "1", "YES", "TRUE", "On", "oN"}) {
        EXPECT_TRUE(isOn(value)) << value;
    }
    for (const char* value :
         {static_cast<const char*>(nullptr), "", "enabled", "2", "0", "no", "off", "on "}) {
        EXPECT_FALSE(isOn(value)) << (value != nullptr ? value : "(unset)");
    }
}

TEST_F(InspectedSwitch, WithoutTheRuntimesTreeThereIsNothingToInspect) {
    const ScopedEnvironment setting(familySwitch, "1");
    hostCalls().failFrom(CallKind::parameterTree, 1, 0);
    {
        kavo::test::Creation creation(1);
        ASSERT_TRUE(creation.hasSucceeded());
        EXPECT_EQ(Fg_getNrOfParameter(creation.handle()), 93);
    }
    hostCalls().reset();
    hostCalls().lackSymbol("Fg_getParameterInfo");
    kavo::test::Creation creation(1);
    ASSERT_TRUE(creation.hasSucceeded());
    EXPECT_EQ(Fg_getNrOfParameter(creation.handle()), 93);
}

TEST_F(InspectedSwitch, ANameWhoseIdIsZeroIsLeftOut) {
    const ScopedEnvironment setting(familySwitch, "1");
    kavo::test::Creation whole(1);
    const int all = Fg_getNrOfParameter(whole.handle());
    hostCalls().failOnce(CallKind::idLookup, 1, 0, "FG_TIMEOUT");
    kavo::test::Creation creation(1);
    EXPECT_EQ(Fg_getNrOfParameter(creation.handle()), all - 1);
}

TEST_F(InspectedFamily, NamesFollowTheStandardParametersInTheOrderOfTheirKeys) {
    const std::vector<std::string> names = expectedNames();
    EXPECT_GT(names.size(), 180U);
    EXPECT_EQ(
        std::count(names.begin(), names.end(), "DQXA_Device1_Process0_LookupTable_LookupTable_LUTcontent"),
        0);
    ASSERT_EQ(Fg_getNrOfParameter(applet->handle()), 93 + static_cast<int>(names.size()));
    for (std::size_t index = 0; index < names.size(); ++index) {
        EXPECT_STREQ(Fg_getParameterName(applet->handle(), 93 + static_cast<int>(index)),
                     names[index].c_str());
    }
}

TEST_F(InspectedFamily, TheirIndicesAndNamesHaveNoId) {
    EXPECT_NE(Fg_getParameterName(applet->handle(), 93), nullptr);
    EXPECT_EQ(Fg_getParameterId(applet->handle(), 93), error::invalidParameter);
    EXPECT_EQ(applet->lastError(), error::invalidParameter);
    EXPECT_EQ(Fg_getParameterIdByName(applet->handle(), "DQXA_FG_TIMEOUT"), error::invalidParameter);
}

TEST_F(InspectedFamily, RecordsRepeatTheRuntimesOwn) {
    for (const int port : {0, 1}) {
        const RegisterInfo* group = Fg_getParameterInfo(applet->handle(), port);
        ASSERT_STREQ(group->name, "Direct QX Access");
        ASSERT_EQ(group->u.gReg.nrOfElements, static_cast<int>(expectedNames().size()));
        for (int index = 0; index < group->u.gReg.nrOfElements; ++index) {
            const RegisterInfo& record = *group->u.gReg.elements[index];
            SCOPED_TRACE(record.name);
            const RegisterInfo& original = *own.at(record.name);
            EXPECT_EQ(record.parameterName, "DQXA_" + std::string(original.name));
            EXPECT_EQ(record.format, original.format);
            EXPECT_EQ(record.id, 2000000 + original.id);
            EXPECT_EQ(record.accessFlags, original.accessFlags);
            EXPECT_EQ(record.rangeFlags, original.rangeFlags);
            EXPECT_EQ(record.visibilityFlags, original.visibilityFlags);
            EXPECT_EQ(record.port, port);
            if (record.format == REG_FORMAT_UINT64) {
                EXPECT_EQ(record.u.iReg64.from, original.u.iReg64.from);
                EXPECT_EQ(record.u.iReg64.to, original.u.iReg64.to);
                EXPECT_EQ(record.u.iReg64.steps, original.u.iReg64.steps);
            } else {
                EXPECT_EQ(record.u.uiReg.from, original.u.uiReg.from);
                EXPECT_EQ(record.u.uiReg.to, original.u.uiReg.to);
                EXPECT_EQ(record.u.uiReg.steps, original.u.uiReg.steps);
            }
        }
    }
}

TEST_F(InspectedFamily, AccessGoesToTheRuntimeWithTheCallersDmaIndex) {
    const std::string name = "Device1_Process0_LAG_CameraWidth_LineLength";
    const int id = 2000000 + runtimeId(name);
    unsigned value = 512;
    for (const unsigned dmaIndex : {0U, 1U, 2U, 4294967295U}) {
        AppletOnBoard::forgetCalls();
        const int written = Fg_setParameterWithType(applet->handle(), id, &value, dmaIndex, 2);
        EXPECT_EQ(applet->lastError(), written);
        const int read = Fg_getParameterWithType(applet->handle(), id, &value, dmaIndex, 2);
        EXPECT_EQ(applet->lastError(), read);
        const auto calls = hostCalls().calls();
        ASSERT_EQ(calls.size(), 2U);
        EXPECT_EQ(calls[0].function, "Fg_setParameter");
        EXPECT_EQ(calls[0].name, name);
        EXPECT_EQ(calls[0].dmaIndex, dmaIndex);
        EXPECT_EQ(calls[0].result, written);
        EXPECT_EQ(calls[1].function, "Fg_getParameter");
        EXPECT_EQ(calls[1].name, name);
        EXPECT_EQ(calls[1].dmaIndex, dmaIndex);
        EXPECT_EQ(calls[1].result, read);
        EXPECT_EQ(written == 0, dmaIndex < 2);
        EXPECT_EQ(value, 512U);
    }
}

TEST_F(InspectedFamily, TheRuntimesCodesPassUnchanged) {
    const int id = 2000000 + runtimeId("FG_TIMEOUT");
    unsigned value = 1;
    AppletOnBoard::failWrite(1, -4711);
    EXPECT_EQ(applet->set(id, value, 0), -4711);
    AppletOnBoard::failRead(1, -4712);
    EXPECT_EQ(applet->readCode(id, 0), -4712);
    EXPECT_LT(applet->set(2147483647, value, 0), 0) << "an id that the runtime does not know";
}

TEST_F(InspectedFamily, IdsAboveTheFamiliesStartAreNeverStandard) {
    AppletOnBoard::forgetCalls();
    applet->readCode(2000000 + FG_NR_OF_DMAS, 0);
    ASSERT_EQ(hostCalls().calls(CallKind::read).size(), 1U);
    EXPECT_EQ(hostCalls().calls(CallKind::read).front().id, FG_NR_OF_DMAS);
}

TEST_F(InspectedSwitch, BothFamiliesStandBehindEachOther) {
    const ScopedEnvironment registers("KAVO_ENABLE_DRA", "1");
    kavo::test::Creation some(1);
    const int withRegisters = Fg_getNrOfParameter(some.handle());
    const ScopedEnvironment inspected(familySwitch, "1");
    kavo::test::Creation creation(1);
    const auto nameAt = [&](int index) { return std::string(Fg_getParameterName(creation.handle(), index)); };
    EXPECT_EQ(nameAt(withRegisters - 1).rfind("DRA_", 0), 0U);
    EXPECT_EQ(nameAt(withRegisters).rfind("DQXA_", 0), 0U);
    const RegisterInfo* group = Fg_getParameterInfo(creation.handle(), 0);
    EXPECT_STREQ(group->name, "Direct QX Access");
    EXPECT_STREQ(group->next->name, "Direct Register Access");
}
