// Parameters of the runtime of every format ("DQXA_"), from a tree that the board does not have.

#include "grabber_basis/parameterInfo.h"
#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/LibraryCalls.h"
#include "tests/support/ScopedEnvironment.h"

#include <memory>

namespace {

/// The tree that the runtime gives in these tests.
Fg_ParameterInfo* runtimesTree = nullptr;

RegisterInfo* giveTree(Fg_Struct*, int) { return runtimesTree->getRegisterInfo(0); }

/// The id of a name of one letter is its place in the alphabet.
int giveId(Fg_Struct*, const char* name) {
    return name[0] >= 'a' && name[0] <= 'z' && name[1] == 0 ? name[0] - 'a' + 1 : -1;
}

class InspectedFormats : public kavo::test::OnFreshBoard {
  protected:
    InspectedFormats() {
        runtimesTree = &tree;
        kavo::test::replacedSymbols()["Fg_getParameterInfo"] = reinterpret_cast<void*>(&giveTree);
        kavo::test::replacedSymbols()["Fg_getParameterIdByName"] = reinterpret_cast<void*>(&giveId);
    }
    ~InspectedFormats() override {
        kavo::test::replacedSymbols().clear();
        runtimesTree = nullptr;
    }

    void create() { creation = std::make_unique<kavo::test::Creation>(1); }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        for (int index = 93; index < Fg_getNrOfParameter(creation->handle()); ++index) {
            found.emplace_back(Fg_getParameterName(creation->handle(), index));
        }
        return found;
    }
    /// The record of an inspected parameter in a port's tree, or null.
    [[nodiscard]] const RegisterInfo* record(const std::string& name, int port = 0) const {
        const GroupReg& elements = Fg_getParameterInfo(creation->handle(), port)->u.gReg;
        for (int index = 0; index < elements.nrOfElements; ++index) {
            if (elements.elements[index]->parameterName == "DQXA_" + name) {
                return elements.elements[index];
            }
        }
        return nullptr;
    }
    template <class Limits, class Value>
    static void expectLimits(const Limits& limits, Value from, Value to, Value steps) {
        EXPECT_EQ(limits.from, from);
        EXPECT_EQ(limits.to, to);
        EXPECT_EQ(limits.steps, steps);
    }

    const kavo::test::ScopedEnvironment on{"KAVO_ENABLE_DQXA", "1"};
    Fg_ParameterInfo tree;
    RegisterInfo* group = tree.addGroupInfo(0, nullptr, "Runtime");
    std::unique_ptr<kavo::test::Creation> creation;
};

} // namespace

TEST_F(InspectedFormats, NumbersOfEveryWidthRepeatTheirLimits) {
    tree.addInfoInt(group, "a", "", -5, 7, 2, 1, 2, 3, "mm", 1, 0);
    tree.addInfoInt64(group, "b", "", -(1LL << 40), 1LL << 41, 3, 1, 1, 1, nullptr, 2, 0);
    tree.addInfoUInt64(group, "c", "", 1, 1ULL << 62, 5, 1, 1, 1, nullptr, 3, 0);
    tree.addInfoDouble(group, "d", "", -0.5, 2.5, 0.25, 1, 1, 1, nullptr, 4, 0);
    tree.addInfoUInt(group, "e", "", 1, 4294967295U, 7, 1, 1, 1, nullptr, 5, 0);
    create();
    ASSERT_EQ(names(), (std::vector<std::string>{"DQXA_a", "DQXA_b", "DQXA_c", "DQXA_d", "DQXA_e"}));
    for (const int port : {0, 1}) {
        const RegisterInfo* signed32 = record("a", port);
        EXPECT_EQ(signed32->format, REG_FORMAT_INT);
        EXPECT_EQ(signed32->id, 2000001);
        EXPECT_EQ(signed32->accessFlags, 1);
        EXPECT_EQ(signed32->rangeFlags, 2);
        EXPECT_EQ(signed32->visibilityFlags, 3);
        EXPECT_STREQ(signed32->unit, "mm");
        expectLimits(signed32->u.iReg, -5, 7, 2);
        EXPECT_EQ(record("b", port)->format, REG_FORMAT_INT64);
        expectLimits(record("b", port)->u.iReg64, -(1LL << 40), 1LL << 41, 3LL);
        EXPECT_EQ(record("c", port)->format, REG_FORMAT_UINT64);
        expectLimits(record("c", port)->u.iReg64, 1LL, 1LL << 62, 5LL);
        EXPECT_EQ(record("d", port)->format, REG_FORMAT_DOUBLE);
        EXPECT_EQ(record("d", port)->u.dReg.from, -0.5);
        EXPECT_EQ(record("d", port)->u.dReg.to, 2.5);
        EXPECT_EQ(record("e", port)->format, REG_FORMAT_UINT);
        expectLimits(record("e", port)->u.uiReg, 1U, 4294967295U, 7U);
    }
}

TEST_F(InspectedFormats, TextsAndEnumerationsRepeatWhatTheyHold) {
    tree.addInfoString(group, "t", "", "lut", 1, 1, 1, nullptr, 1, 0);
    RegisterInfo* choice = tree.addInfoEnum(group, "u", "", 3, 1, 1, 1, nullptr, 2, 0);
    tree.addEnumNameValue(choice, 0, "Off State", 4, "OFF");
    tree.addEnumNameValue(choice, 1, "On State", -5, nullptr);
    tree.addEnumNameValue(choice, 2, nullptr, 6, "SILENT");
    create();
    ASSERT_NE(record("t"), nullptr);
    EXPECT_EQ(record("t")->format, REG_FORMAT_STRING);
    EXPECT_STREQ(record("t")->u.sReg.FileExtension, "lut");
    const RegisterInfo* repeated = record("u");
    ASSERT_NE(repeated, nullptr);
    EXPECT_EQ(repeated->format, REG_FORMAT_ENUM);
    const EnumReg& entries = repeated->u.eReg;
    ASSERT_EQ(entries.nrOfElements, 3);
    EXPECT_STREQ(entries.enumNames[0], "Off State");
    EXPECT_STREQ(entries.enumDefName[0], "OFF");
    EXPECT_EQ(entries.enumValues[0], 4);
    EXPECT_STREQ(entries.enumNames[1], "On State");
    EXPECT_EQ(entries.enumDefName[1], nullptr);
    EXPECT_EQ(entries.enumValues[1], -5);
    EXPECT_EQ(entries.enumNames[2], nullptr);
    EXPECT_STREQ(entries.enumDefName[2], "SILENT");
    EXPECT_EQ(entries.enumValues[2], 6);
}

TEST_F(InspectedFormats, TheWholeTreeIsWalkedOverItsGaps) {
    RegisterInfo* inner = tree.addGroupInfo(0, group, "Inner");
    RegisterInfo* gap = tree.addInfoUInt(group, "g", "", 0, 1, 1, 1, 1, 1, nullptr, 1, 0);
    tree.addInfoUInt(group, nullptr, "", 0, 1, 1, 1, 1, 1, nullptr, 2, 0);
    RegisterInfo ungrouped = *tree.addInfoUInt(inner, "i", "", 0, 1, 1, 1, 1, 1, nullptr, 3, 0);
    char name[] = "r";
    ungrouped.name = name;
    ungrouped.next = nullptr;
    group->next = &ungrouped;
    ASSERT_EQ(group->u.gReg.elements[1], gap);
    group->u.gReg.elements[1] = nullptr;
    create();
    group->u.gReg.elements[1] = gap;
    group->next = nullptr;
    EXPECT_EQ(names(), (std::vector<std::string>{"DQXA_i", "DQXA_r"}));
    EXPECT_NE(record("i"), nullptr);
    EXPECT_NE(record("r"), nullptr);
}

TEST_F(InspectedFormats, ANameThatAFieldHadFirstHasAnIdButNoDescription) {
    tree.addInfoUIntField(group, "f", "", 4, 0, 1, 1, 1, 1, 1, nullptr, 1, 0);
    tree.addInfoUInt(group, "f", "", 0, 1, 1, 1, 1, 1, nullptr, 1, 0);
    create();
    EXPECT_EQ(names(), std::vector<std::string>{"DQXA_f"});
    EXPECT_EQ(record("f"), nullptr);
}
