// Creation when memory runs out.

#include "tests/support/AllocationFaults.h"
#include "tests/support/Creation.h"

#include <new>

using kavo::test::AllocationFault;

namespace {

class CreationWithoutMemory : public kavo::test::OnFreshBoard {};

} // namespace

TEST_F(CreationWithoutMemory, TheWrapperItselfGivesNoHandleAndNoException) {
    simulator::hostCalls().record(true);
    int code = 0;
    void* wrapper = &code;
    {
        const AllocationFault fault(0);
        wrapper = Std_entry(board().device(), &code, 0);
        EXPECT_TRUE(fault.hasHappened());
    }
    EXPECT_EQ(wrapper, nullptr);
    EXPECT_TRUE(simulator::hostCalls().calls().empty());
}

TEST_F(CreationWithoutMemory, WhatTheWrapperConsistsOfThrowsAndLeavesNothing) {
    bool threw = false;
    {
        const AllocationFault fault(1);
        try {
            Std_entry(board().device(), nullptr, 0);
        } catch (const std::bad_alloc&) {
            threw = true;
        }
    }
    EXPECT_TRUE(threw);
    const kavo::test::Creation creation;
    EXPECT_TRUE(creation.hasSucceeded());
}
