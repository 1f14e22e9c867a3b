#include "grabber_basis/parameterInfo.h"

#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr int port = 2;
constexpr int access = 7;
constexpr int range = 2;
constexpr int visibility = 1;
constexpr int id = 300202;

class FgParameterInfoTest : public testing::Test {
  protected:
    RegisterInfo* addWidth(RegisterInfo* parent, int toPort = port) {
        return mRegistry.addInfoUInt(parent, "Width", "FG_WIDTH", 16, 8192, 16, access, range, visibility,
                                     "pixel", id, toPort);
    }

    std::vector<std::string> topLevelNames() const {
        std::vector<std::string> names;
        for (const RegisterInfo* group = mRegistry.getNextRegisterInfo(nullptr, port); group != nullptr;
             group = mRegistry.getNextRegisterInfo(group, port)) {
            names.emplace_back(group->name);
        }
        return names;
    }

    Fg_ParameterInfo mRegistry;
    RegisterInfo* const mGroup = mRegistry.addGroupInfo(port, nullptr, "ROI");
};

TEST_F(FgParameterInfoTest, FormatsHaveTheNumbersSharedWithTheRuntime) {
    EXPECT_EQ(REG_FORMAT_GROUP, 0);
    EXPECT_EQ(REG_FORMAT_UINT, 1);
    EXPECT_EQ(REG_FORMAT_FLOAT, 2);
    EXPECT_EQ(REG_FORMAT_ENUM, 3);
    EXPECT_EQ(REG_FORMAT_LUT, 4);
    EXPECT_EQ(REG_FORMAT_STRING, 5);
    EXPECT_EQ(REG_FORMAT_DOUBLE, 6);
    EXPECT_EQ(REG_FORMAT_UINTFIELD, 7);
    EXPECT_EQ(REG_FORMAT_DOUBLEFIELD, 8);
    EXPECT_EQ(REG_FORMAT_UINT64, 9);
    EXPECT_EQ(REG_FORMAT_UINTFIELD64, 10);
    EXPECT_EQ(REG_FORMAT_INT, 11);
    EXPECT_EQ(REG_FORMAT_INT64, 12);
    EXPECT_EQ(REG_FORMAT_INTFIELD, 13);
    EXPECT_EQ(REG_FORMAT_INTFIELD64, 14);
    EXPECT_EQ(REG_FORMAT_STRINGFIELD, 15);
    EXPECT_EQ(REG_FORMAT_ENUMFIELD, 16);
}

TEST_F(FgParameterInfoTest, PayloadFieldsStandInTheirSharedOrder) {
    EXPECT_EQ(offsetof(IntReg, value), 12U);
    EXPECT_EQ(offsetof(UIntReg, steps), 8U);
    EXPECT_EQ(offsetof(IntReg64, value), 24U);
    EXPECT_EQ(offsetof(FloatReg, value), 12U);
    EXPECT_EQ(offsetof(DoubleReg, value), 24U);
    EXPECT_EQ(offsetof(GroupReg, elements), sizeof(void*));
    EXPECT_EQ(offsetof(GroupReg, autoIndex), 2 * sizeof(void*));
    EXPECT_EQ(offsetof(EnumReg, enumValues), 2 * sizeof(void*));
    EXPECT_EQ(offsetof(EnumReg, absValue), 3 * sizeof(void*));
    EXPECT_EQ(offsetof(EnumReg, enumDefName), 3 * sizeof(void*) + 8);
    EXPECT_EQ(offsetof(LutReg, number), 12U);
    EXPECT_EQ(offsetof(StringReg, FileExtension), sizeof(void*));
    EXPECT_EQ(offsetof(StringReg, strLen), 2 * sizeof(void*));
    EXPECT_EQ(offsetof(DoubleFieldReg, value), 24U);
    EXPECT_EQ(offsetof(IntFieldReg, value), 16U);
    EXPECT_EQ(offsetof(UIntFieldReg, nrOfElements), 8U);
    EXPECT_EQ(offsetof(Int64FieldReg, value), 24U);
}

TEST_F(FgParameterInfoTest, NewRegistryHasFourEmptyOpenPorts) {
    Fg_ParameterInfo registry;
    for (int each = 0; each < 4; ++each) {
        EXPECT_EQ(registry.getRegisterInfo(each), nullptr);
        EXPECT_NE(registry.addGroupInfo(each, nullptr, "Group"), nullptr);
    }
}

TEST_F(FgParameterInfoTest, PortOutsideTheFourHasNoRecordsAndTakesNone) {
    for (const int other : {-1, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(mRegistry.addGroupInfo(other, nullptr, "Group"), nullptr);
        EXPECT_EQ(addWidth(mGroup, other), nullptr);
        EXPECT_EQ(mRegistry.getRegisterInfo(other), nullptr);
        EXPECT_EQ(mRegistry.getNextRegisterInfo(nullptr, other), nullptr);
        mRegistry.init(other);
        mRegistry.destroy(other);
        mRegistry.finalize(other);
    }
    EXPECT_EQ(mGroup->u.gReg.nrOfElements, 0);
}

TEST_F(FgParameterInfoTest, GroupStartsWithoutElements) {
    EXPECT_EQ(mGroup->format, REG_FORMAT_GROUP);
    EXPECT_STREQ(mGroup->name, "ROI");
    EXPECT_EQ(mGroup->parameterName, nullptr);
    EXPECT_EQ(mGroup->unit, nullptr);
    EXPECT_EQ(mGroup->parentName, nullptr);
    EXPECT_EQ(mGroup->depth, 0);
    EXPECT_EQ(mGroup->port, port);
    EXPECT_EQ(mGroup->u.gReg.nrOfElements, 0);
    EXPECT_EQ(mGroup->u.gReg.elements, nullptr);
    EXPECT_EQ(mGroup->u.gReg.autoIndex, 0);
}

TEST_F(FgParameterInfoTest, TopLevelGroupsAreVisitedFromTheLastAddedToTheFirst) {
    RegisterInfo* const second = mRegistry.addGroupInfo(port, nullptr, "second");
    RegisterInfo* const third = mRegistry.addGroupInfo(port, nullptr, "third");
    EXPECT_EQ(topLevelNames(), (std::vector<std::string>{"third", "second", "ROI"}));
    EXPECT_EQ(mRegistry.getRegisterInfo(port), third);
    EXPECT_EQ(third->previous, nullptr);
    EXPECT_EQ(second->previous, third);
    EXPECT_EQ(mGroup->previous, second);
    EXPECT_EQ(mRegistry.getRegisterInfo(port + 1), nullptr);
}

TEST_F(FgParameterInfoTest, SubgroupKnowsDepthAndNameOfItsParent) {
    RegisterInfo* const child = mRegistry.addGroupInfo(port, mGroup, "child");
    RegisterInfo* const grandchild = mRegistry.addGroupInfo(port, child, "grandchild");
    EXPECT_EQ(child->depth, 1);
    EXPECT_STREQ(child->parentName, "ROI");
    EXPECT_NE(child->parentName, mGroup->name) << "a copy";
    EXPECT_EQ(grandchild->depth, 2);
    EXPECT_STREQ(grandchild->parentName, "child");
    EXPECT_EQ(child->next, nullptr);
    EXPECT_EQ(topLevelNames(), std::vector<std::string>{"ROI"});
}

TEST_F(FgParameterInfoTest, ChildrenStandAtTheirIndexInTheElements) {
    std::vector<RegisterInfo*> children;
    for (int i = 0; i < 100; ++i) {
        children.push_back(i % 10 == 3 ? mRegistry.addGroupInfo(port, mGroup, "child") : addWidth(mGroup));
        ASSERT_EQ(children.back()->index, i);
        ASSERT_EQ(mGroup->u.gReg.nrOfElements, i + 1);
    }
    for (std::size_t i = 0; i < children.size(); ++i) {
        EXPECT_EQ(mGroup->u.gReg.elements[i], children[i]);
    }
    EXPECT_EQ(mGroup->u.gReg.autoIndex, 100);
}

TEST_F(FgParameterInfoTest, ParameterCopiesItsTextsAndKeepsItsWords) {
    char text[] = "Width";
    const RegisterInfo* const record = mRegistry.addInfoUInt(mGroup, text, text, 16, 4294967295U, 3, access,
                                                             range, visibility, text, id, port);
    std::memset(text, 'x', 5);
    EXPECT_STREQ(record->name, "Width");
    EXPECT_STREQ(record->parameterName, "Width");
    EXPECT_STREQ(record->unit, "Width");
    EXPECT_EQ(record->accessFlags, access);
    EXPECT_EQ(record->rangeFlags, range);
    EXPECT_EQ(record->visibilityFlags, visibility);
    EXPECT_EQ(record->id, id);
    EXPECT_EQ(record->port, port);
    EXPECT_EQ(record->next, nullptr);
    EXPECT_EQ(record->previous, nullptr);
    EXPECT_EQ(record->parentName, nullptr);
    EXPECT_EQ(record->format, REG_FORMAT_UINT);
    EXPECT_EQ(record->u.uiReg.from, 16U);
    EXPECT_EQ(record->u.uiReg.to, 4294967295U);
    EXPECT_EQ(record->u.uiReg.steps, 3U);
}

TEST_F(FgParameterInfoTest, TextsThatAreNotGivenAreNull) {
    const RegisterInfo* const record =
        mRegistry.addInfoInt(mGroup, nullptr, nullptr, 0, 1, 1, access, range, visibility, nullptr, id, port);
    EXPECT_EQ(record->name, nullptr);
    EXPECT_EQ(record->parameterName, nullptr);
    EXPECT_EQ(record->unit, nullptr);
}

TEST_F(FgParameterInfoTest, SignedLimits) {
    const RegisterInfo* const record =
        mRegistry.addInfoInt(mGroup, "n", "p", std::numeric_limits<int>::min(), -1, 5, access, range,
                             visibility, nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_INT);
    EXPECT_EQ(record->u.iReg.from, std::numeric_limits<int>::min());
    EXPECT_EQ(record->u.iReg.to, -1);
    EXPECT_EQ(record->u.iReg.steps, 5);
}

TEST_F(FgParameterInfoTest, SignedAndUnsignedLimitsOf64Bits) {
    const RegisterInfo* record = mRegistry.addInfoInt64(mGroup, "n", "p", -9000000000LL, 9000000000LL, 2,
                                                        access, range, visibility, nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_INT64);
    EXPECT_EQ(record->u.iReg64.from, -9000000000LL);
    EXPECT_EQ(record->u.iReg64.to, 9000000000LL);
    EXPECT_EQ(record->u.iReg64.steps, 2);
    record = mRegistry.addInfoUInt64(mGroup, "n", "p", 1, std::numeric_limits<std::uint64_t>::max(), 3,
                                     access, range, visibility, nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_UINT64);
    EXPECT_EQ(record->u.iReg64.from, 1);
    EXPECT_EQ(static_cast<std::uint64_t>(record->u.iReg64.to), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(record->u.iReg64.steps, 3);
}

TEST_F(FgParameterInfoTest, DoubleLimits) {
    const RegisterInfo* const record = mRegistry.addInfoDouble(mGroup, "n", "p", 0.096, 3.024, 0.048, access,
                                                               range, visibility, "us", id, port);
    EXPECT_EQ(record->format, REG_FORMAT_DOUBLE);
    EXPECT_EQ(record->u.dReg.from, 0.096);
    EXPECT_EQ(record->u.dReg.to, 3.024);
    EXPECT_EQ(record->u.dReg.steps, 0.048);
}

TEST_F(FgParameterInfoTest, FieldsKeepLimitsAndLengthButNoStep) {
    const RegisterInfo* record = mRegistry.addInfoIntField(mGroup, "n", "p", 8, -4, 4, 99, access, range,
                                                           visibility, nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_INTFIELD);
    EXPECT_EQ(record->u.ifReg.from, -4);
    EXPECT_EQ(record->u.ifReg.to, 4);
    EXPECT_EQ(record->u.ifReg.nrOfElements, 8);
    record = mRegistry.addInfoUIntField(mGroup, "n", "p", 4096, 0, 4095, 99, access, range, visibility,
                                        nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_UINTFIELD);
    EXPECT_EQ(record->u.uifReg.from, 0U);
    EXPECT_EQ(record->u.uifReg.to, 4095U);
    EXPECT_EQ(record->u.uifReg.nrOfElements, 4096U);
    record = mRegistry.addInfoDoubleField(mGroup, "n", "p", 5, -0.5, 0.5, 99, access, range, visibility,
                                          nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_DOUBLEFIELD);
    EXPECT_EQ(record->u.dfReg.from, -0.5);
    EXPECT_EQ(record->u.dfReg.to, 0.5);
    EXPECT_EQ(record->u.dfReg.nrOfElements, 5);
}

TEST_F(FgParameterInfoTest, StringKeepsItsFileFilter) {
    const RegisterInfo* record =
        mRegistry.addInfoString(mGroup, "n", "p", "*.lut", access, range, visibility, nullptr, id, port);
    EXPECT_EQ(record->format, REG_FORMAT_STRING);
    EXPECT_STREQ(record->u.sReg.FileExtension, "*.lut");
    EXPECT_EQ(record->u.sReg.string, nullptr);
    EXPECT_EQ(record->u.sReg.strLen, 0);
    record = mRegistry.addInfoString(mGroup, "n", "p", nullptr, access, range, visibility, nullptr, id, port);
    EXPECT_EQ(record->u.sReg.FileExtension, nullptr);
}

class FgParameterInfoEnumTest : public FgParameterInfoTest {
  protected:
    RegisterInfo* addEnum(int nrOfElements) {
        return mRegistry.addInfoEnum(mGroup, "n", "p", nrOfElements, access, range, visibility, nullptr, id,
                                     port);
    }
};

TEST_F(FgParameterInfoEnumTest, StartsWithEmptyEntries) {
    const RegisterInfo* const record = addEnum(3);
    EXPECT_EQ(record->format, REG_FORMAT_ENUM);
    EXPECT_EQ(record->u.eReg.nrOfElements, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(record->u.eReg.enumNames[i], nullptr);
        EXPECT_EQ(record->u.eReg.enumDefName[i], nullptr);
        EXPECT_EQ(record->u.eReg.enumValues[i], 0);
    }
}

TEST_F(FgParameterInfoEnumTest, EntryTakesNameValueAndSymbol) {
    RegisterInfo* const record = addEnum(2);
    EXPECT_EQ(mRegistry.addEnumNameValue(record, 1, "Gray 8bit", 3, "FG_GRAY"), 0);
    EXPECT_STREQ(record->u.eReg.enumNames[1], "Gray 8bit");
    EXPECT_EQ(record->u.eReg.enumValues[1], 3);
    EXPECT_STREQ(record->u.eReg.enumDefName[1], "FG_GRAY");
    EXPECT_EQ(record->u.eReg.enumNames[0], nullptr);
}

TEST_F(FgParameterInfoEnumTest, SecondEntryAtAnIndexReplacesNameAndDropsTheSymbol) {
    RegisterInfo* const record = addEnum(1);
    mRegistry.addEnumNameValue(record, 0, "first", 1, "FG_FIRST");
    EXPECT_EQ(mRegistry.addEnumNameValue(record, 0, "second", -2, nullptr), 0);
    EXPECT_STREQ(record->u.eReg.enumNames[0], "second");
    EXPECT_EQ(record->u.eReg.enumValues[0], -2);
    EXPECT_EQ(record->u.eReg.enumDefName[0], nullptr);
}

TEST_F(FgParameterInfoEnumTest, MayHaveNoEntries) {
    EXPECT_EQ(addEnum(0)->u.eReg.nrOfElements, 0);
    EXPECT_NE(addEnum(-5), nullptr);
}

TEST_F(FgParameterInfoEnumTest, EntryWithoutANameIsEmpty) {
    RegisterInfo* const record = addEnum(1);
    EXPECT_EQ(mRegistry.addEnumNameValue(record, 0, nullptr, 4, nullptr), 0);
    EXPECT_EQ(record->u.eReg.enumNames[0], nullptr);
    EXPECT_EQ(record->u.eReg.enumValues[0], 4);
}

using AddToPort = std::function<RegisterInfo*(Fg_ParameterInfo&, RegisterInfo*, int)>;

class EveryParameterKindTest : public testing::TestWithParam<AddToPort> {};

TEST_P(EveryParameterKindTest, NeedsAParent) {
    Fg_ParameterInfo registry;
    EXPECT_EQ(GetParam()(registry, nullptr, 0), nullptr);
    EXPECT_EQ(registry.getRegisterInfo(0), nullptr);
}

TEST_P(EveryParameterKindTest, FinalizedPortTakesNoMore) {
    Fg_ParameterInfo registry;
    RegisterInfo* const group = registry.addGroupInfo(0, nullptr, "Group");
    registry.finalize(0);
    EXPECT_EQ(GetParam()(registry, group, 0), nullptr);
    EXPECT_EQ(registry.addGroupInfo(0, nullptr, "Group"), nullptr);
    EXPECT_EQ(registry.addGroupInfo(0, group, "Group"), nullptr);
    EXPECT_EQ(group->u.gReg.autoIndex, 0);
    RegisterInfo* const other = registry.addGroupInfo(1, nullptr, "Group");
    EXPECT_NE(GetParam()(registry, other, 1), nullptr);
}

TEST_P(EveryParameterKindTest, JoinsItsGroup) {
    Fg_ParameterInfo registry;
    RegisterInfo* const group = registry.addGroupInfo(3, nullptr, "Group");
    RegisterInfo* const record = GetParam()(registry, group, 3);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->index, 0);
    EXPECT_EQ(record->depth, 0);
    EXPECT_EQ(record->parentName, nullptr);
    EXPECT_EQ(group->u.gReg.elements[0], record);
    EXPECT_STREQ(record->parameterName, "p");
    EXPECT_STREQ(record->unit, "u");
    EXPECT_EQ(record->accessFlags, 1);
    EXPECT_EQ(record->rangeFlags, 2);
    EXPECT_EQ(record->visibilityFlags, 3);
    EXPECT_EQ(record->id, 4);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, EveryParameterKindTest,
    testing::Values(
        [](auto& r, auto* g, int p) { return r.addInfoInt(g, "n", "p", 0, 1, 1, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) { return r.addInfoUInt(g, "n", "p", 0, 1, 1, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) { return r.addInfoInt64(g, "n", "p", 0, 1, 1, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) { return r.addInfoUInt64(g, "n", "p", 0, 1, 1, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) { return r.addInfoDouble(g, "n", "p", 0, 1, 1, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) {
            return r.addInfoIntField(g, "n", "p", 2, 0, 1, 1, 1, 2, 3, "u", 4, p);
        },
        [](auto& r, auto* g, int p) {
            return r.addInfoUIntField(g, "n", "p", 2, 0, 1, 1, 1, 2, 3, "u", 4, p);
        },
        [](auto& r, auto* g, int p) {
            return r.addInfoDoubleField(g, "n", "p", 2, 0, 1, 1, 1, 2, 3, "u", 4, p);
        },
        [](auto& r, auto* g, int p) { return r.addInfoEnum(g, "n", "p", 2, 1, 2, 3, "u", 4, p); },
        [](auto& r, auto* g, int p) { return r.addInfoString(g, "n", "p", "*", 1, 2, 3, "u", 4, p); }));

TEST_F(FgParameterInfoTest, GroupUnderAParameterDeliberatelyAdvancesTheIndexOfItsNextChild) {
    RegisterInfo* const parameter =
        mRegistry.addInfoUInt(mGroup, "n", "p", 0, 0, 0, access, range, visibility, nullptr, id, port);
    RegisterInfo* const other =
        mRegistry.addInfoUInt(mGroup, "n", "p", 0, 0, 0, access, range, visibility, nullptr, id, port);
    EXPECT_EQ(mRegistry.addGroupInfo(port, parameter, "lost"), nullptr);
    EXPECT_EQ(addWidth(parameter)->index, addWidth(other)->index + 1);
    EXPECT_EQ(mGroup->u.gReg.nrOfElements, 2);
    EXPECT_EQ(topLevelNames(), std::vector<std::string>{"ROI"});
}

TEST_F(FgParameterInfoTest, ChildOfAParameterWithLimitsTouchesNoMemoryOfOthers) {
    RegisterInfo* const parameter = addWidth(mGroup);
    EXPECT_NE(addWidth(parameter), nullptr);
    EXPECT_EQ(parameter->u.uiReg.from, 16U);
    EXPECT_EQ(parameter->u.uiReg.to, 8192U);
}

TEST_F(FgParameterInfoTest, InitEmptiesAPortAndOpensItAgain) {
    addWidth(mGroup);
    mRegistry.finalize(port);
    mRegistry.init(port);
    EXPECT_EQ(mRegistry.getRegisterInfo(port), nullptr);
    EXPECT_NE(mRegistry.addGroupInfo(port, nullptr, "Group"), nullptr);
}

TEST_F(FgParameterInfoTest, DestroyDeliberatelyLeavesTheHeadWhereItWas) {
    const RegisterInfo* const head = mRegistry.getRegisterInfo(port);
    mRegistry.destroy(port);
    EXPECT_EQ(mRegistry.getRegisterInfo(port), head);
    mRegistry.destroy(port);
}

TEST_F(FgParameterInfoTest, DestroyingOnePortKeepsTheOthers) {
    const RegisterInfo* const other = mRegistry.addGroupInfo(0, nullptr, "kept");
    mRegistry.init(port);
    EXPECT_STREQ(other->name, "kept");
    EXPECT_EQ(mRegistry.getRegisterInfo(0), other);
}

} // namespace
