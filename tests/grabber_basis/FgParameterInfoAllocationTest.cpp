#include "grabber_basis/parameterInfo.h"
#include "tests/support/AllocationFaults.h"

#include <functional>
#include <gtest/gtest.h>
#include <new>

namespace {

using kavo::test::AllocationFault;

class FgParameterInfoAllocationTest : public testing::Test {
  protected:
    /// Fails each allocation of an addition in turn; the group must be as before after each.
    int countSurvivedFaults(const std::function<const RegisterInfo*()>& add) {
        int faults = 0;
        for (bool isAdded = false; !isAdded; faults += isAdded ? 0 : 1) {
            const AllocationFault fault(faults);
            try {
                isAdded = add() != nullptr;
            } catch (const std::bad_alloc&) {
                EXPECT_EQ(mGroup->u.gReg.nrOfElements, 0);
                EXPECT_EQ(mGroup->u.gReg.autoIndex, 0);
                EXPECT_EQ(mGroup->u.gReg.elements, nullptr);
            }
        }
        EXPECT_EQ(mGroup->u.gReg.nrOfElements, 1);
        return faults;
    }

    Fg_ParameterInfo mRegistry;
    RegisterInfo* const mGroup = mRegistry.addGroupInfo(0, nullptr, "Group");
};

TEST_F(FgParameterInfoAllocationTest, ParameterIsAddedWholeOrNotAtAll) {
    const int faults = countSurvivedFaults(
        [&] { return mRegistry.addInfoString(mGroup, "n", "p", "*.lut", 1, 1, 1, "unit", 5, 0); });
    EXPECT_GE(faults, 6) << "record, four texts, elements";
}

TEST_F(FgParameterInfoAllocationTest, EnumerationIsAddedWholeOrNotAtAll) {
    const int faults = countSurvivedFaults(
        [&] { return mRegistry.addInfoEnum(mGroup, "n", "p", 3, 1, 1, 1, nullptr, 5, 0); });
    EXPECT_GE(faults, 7) << "record, two texts, three arrays, elements";
}

TEST_F(FgParameterInfoAllocationTest, SubgroupIsAddedWholeOrNotAtAll) {
    const int faults = countSurvivedFaults([&] { return mRegistry.addGroupInfo(0, mGroup, "child"); });
    EXPECT_GE(faults, 4) << "record, two texts, elements";
}

TEST_F(FgParameterInfoAllocationTest, EntryWithoutMemoryForItsNameGivesMinus500) {
    RegisterInfo* const record = mRegistry.addInfoEnum(mGroup, "n", "p", 1, 1, 1, 1, nullptr, 5, 0);
    mRegistry.addEnumNameValue(record, 0, "old", 1, "OLD");
    {
        const AllocationFault fault(0);
        EXPECT_EQ(mRegistry.addEnumNameValue(record, 0, "new", 2, "NEW"), -500);
        EXPECT_TRUE(fault.hasHappened());
    }
    EXPECT_EQ(record->u.eReg.enumNames[0], nullptr);
    EXPECT_EQ(record->u.eReg.enumDefName[0], nullptr);
    EXPECT_EQ(record->u.eReg.enumValues[0], 1);
}

TEST_F(FgParameterInfoAllocationTest, RefusedParameterMakesNoRecord) {
    const long before = kavo::test::allocationCount();
    EXPECT_EQ(mRegistry.addInfoUInt(nullptr, "n", "p", 0, 1, 1, 1, 1, 1, "unit", 5, 0), nullptr);
    mRegistry.finalize(0);
    EXPECT_EQ(mRegistry.addInfoUInt(mGroup, "n", "p", 0, 1, 1, 1, 1, 1, "unit", 5, 0), nullptr);
    EXPECT_EQ(mRegistry.addGroupInfo(0, nullptr, "n"), nullptr);
    EXPECT_EQ(kavo::test::allocationCount(), before);
}

/// A record of every kind that holds texts, under a group of a group.
void fill(Fg_ParameterInfo& registry, int port) {
    RegisterInfo* const top = registry.addGroupInfo(port, nullptr, "Top");
    RegisterInfo* const group = registry.addGroupInfo(port, top, "Group");
    registry.addInfoUInt(group, "name", "parameter", 0, 1, 1, 1, 1, 1, "unit", 5, port);
    registry.addInfoString(group, "name", "parameter", "*.lut", 1, 1, 1, "unit", 5, port);
    RegisterInfo* const entries =
        registry.addInfoEnum(group, "name", "parameter", 3, 1, 1, 1, "unit", 5, port);
    for (const int index : {0, 1, 2, 0}) {
        registry.addEnumNameValue(entries, index, "entry", index, "ENTRY");
    }
}

TEST(FgParameterInfoMemoryTest, DestroyingARegistryGivesItsMemoryBackToTheLastByte) {
    const kavo::test::LiveMemory before = kavo::test::liveMemory();
    {
        Fg_ParameterInfo registry;
        for (int port = 0; port < Fg_ParameterInfo::portCount; ++port) {
            fill(registry, port);
        }
        EXPECT_GT(kavo::test::liveMemory().blocks, before.blocks);
    }
    EXPECT_EQ(kavo::test::liveMemory().blocks, before.blocks);
    EXPECT_EQ(kavo::test::liveMemory().bytes, before.bytes);
}

TEST(FgParameterInfoMemoryTest, InitialisingAPortAgainGivesItsRecordsBack) {
    Fg_ParameterInfo registry;
    fill(registry, 0);
    registry.init(0);
    const kavo::test::LiveMemory before = kavo::test::liveMemory();
    fill(registry, 0);
    registry.init(0);
    EXPECT_EQ(kavo::test::liveMemory().blocks, before.blocks);
}

} // namespace
