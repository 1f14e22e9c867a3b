#include "console/RegisterRecord.h"
#include "grabber_basis/parameterInfo.h"

#include <gtest/gtest.h>
#include <limits>

namespace orbctl {

namespace {

class RegisterRecord : public ::testing::Test {
  protected:
    std::vector<Parameter> parameters() { return parametersOf(mRegistry.getRegisterInfo(0)); }
    Parameter only() {
        const std::vector<Parameter> found = parameters();
        EXPECT_EQ(found.size(), 1U);
        return found.at(0);
    }

    Fg_ParameterInfo mRegistry;
    RegisterInfo* mGroup = mRegistry.addGroupInfo(0, nullptr, "First");
};

} // namespace

TEST_F(RegisterRecord, GivesNothingForAPortWithoutRecords) { EXPECT_TRUE(parametersOf(nullptr).empty()); }

TEST_F(RegisterRecord, KeepsTheOrderOfRegistrationAndTheNestingOfGroups) {
    RegisterInfo* const inner = mRegistry.addGroupInfo(0, mGroup, "Inner");
    RegisterInfo* const second = mRegistry.addGroupInfo(0, nullptr, "Second");
    mRegistry.addInfoUInt(inner, "b", "B", 0, 1, 1, 1, 1, 1, nullptr, 2, 0);
    mRegistry.addInfoUInt(second, "c", "C", 0, 1, 1, 1, 1, 1, nullptr, 3, 0);
    mRegistry.addInfoUInt(mGroup, "a", "A", 0, 1, 1, 1, 1, 1, nullptr, 1, 0);
    const std::vector<Parameter> found = parameters();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].name, "B");
    EXPECT_EQ(found[0].category, (std::vector<std::string>{"First", "Inner"}));
    EXPECT_EQ(found[1].name, "A");
    EXPECT_EQ(found[2].name, "C");
    EXPECT_EQ(found[2].category, std::vector<std::string>{"Second"});
}

TEST_F(RegisterRecord, CopiesNamesFlagsUnitAndId) {
    mRegistry.addInfoUInt(mGroup, "Width", "FG_WIDTH", 16, 4096, 16, 3, 2, 1, "pixel", 100, 0);
    const Parameter width = only();
    EXPECT_EQ(width.displayName, "Width");
    EXPECT_EQ(width.id, 100);
    EXPECT_EQ(width.accessFlags, 3);
    EXPECT_EQ(width.unit, "pixel");
    EXPECT_TRUE(width.isDescribed);
    EXPECT_EQ(width.kind, ValueKind::unsigned32);
    EXPECT_EQ(width.limits.to, ParameterValue(std::uint64_t{4096}));
}

TEST_F(RegisterRecord, TakesUnsignedLimitsAsUnsigned) {
    mRegistry.addInfoUInt(mGroup, "d", "D", 1, 4294967295U, 1, 7, 2, 1, nullptr, 1, 0);
    EXPECT_EQ(only().limits.to, ParameterValue(std::uint64_t{4294967295U}));
}

TEST_F(RegisterRecord, TakesSixtyFourBitLimits) {
    constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();
    mRegistry.addInfoUInt64(mGroup, "u", "U", 0, largest, 1, 7, 1, 1, nullptr, 1, 0);
    mRegistry.addInfoInt64(mGroup, "i", "I", -5, 5, 1, 7, 1, 1, nullptr, 2, 0);
    const std::vector<Parameter> found = parameters();
    EXPECT_EQ(found.at(0).kind, ValueKind::unsigned64);
    EXPECT_EQ(found.at(0).limits.to, ParameterValue(largest));
    EXPECT_EQ(found.at(1).kind, ValueKind::signed64);
    EXPECT_EQ(found.at(1).limits.from, ParameterValue(std::int64_t{-5}));
}

TEST_F(RegisterRecord, TakesDoublesFieldsAndTexts) {
    mRegistry.addInfoDouble(mGroup, "g", "GAIN", 0, 4096, 0.5, 7, 1, 1, nullptr, 1, 0);
    mRegistry.addInfoUIntField(mGroup, "v", "VALUES", 4096, 0, 4095, 1, 7, 1, 1, nullptr, 2, 0);
    mRegistry.addInfoString(mGroup, "f", "FILE", "*.lut", 7, 1, 1, nullptr, 3, 0);
    const std::vector<Parameter> found = parameters();
    EXPECT_EQ(found.at(0).limits.step, ParameterValue(0.5));
    EXPECT_EQ(found.at(1).kind, ValueKind::unsignedField);
    EXPECT_EQ(found.at(1).elementCount, 4096U);
    EXPECT_EQ(found.at(2).kind, ValueKind::text);
    EXPECT_EQ(found.at(2).fileFilter, "*.lut");
}

TEST_F(RegisterRecord, TakesEnumerationEntriesAndThoseThatWereNeverFilled) {
    RegisterInfo* const format = mRegistry.addInfoEnum(mGroup, "f", "FG_FORMAT", 2, 3, 1, 1, nullptr, 700, 0);
    mRegistry.addEnumNameValue(format, 0, "Gray 8bit", 3, "FG_GRAY");
    const Parameter parameter = only();
    ASSERT_EQ(parameter.entries.size(), 2U);
    EXPECT_EQ(parameter.entries[0].symbol, "FG_GRAY");
    EXPECT_EQ(parameter.entries[0].value, 3);
    EXPECT_EQ(parameter.entries[1].displayName, "");
}

TEST_F(RegisterRecord, KeepsAKindThatItDoesNotKnow) {
    RegisterInfo* const record = mRegistry.addInfoInt(mGroup, "x", "X", 0, 1, 1, 1, 1, 1, nullptr, 1, 0);
    record->format = REG_FORMAT_LUT;
    EXPECT_EQ(only().kind, ValueKind::unsupported);
}

} // namespace orbctl
