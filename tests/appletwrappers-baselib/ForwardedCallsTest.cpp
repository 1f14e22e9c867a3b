// The exports that the runtime answers on the inner handle, and the release of a handle.

#include "platform/ErrorCodes.h"
#include "platform/FrameGrabber.h"
#include "simulator/HostCalls.h"
#include "tests/appletwrappers-baselib/ArgumentRecorder.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"

#include <gtest/gtest.h>

namespace error = kavo::error;
using kavo::test::BareWrapper;

namespace {

int token = 0;
dma_mem* const memory = reinterpret_cast<dma_mem*>(&token);
char name[] = "a name";

std::intptr_t address(const void* pointer) { return reinterpret_cast<std::intptr_t>(pointer); }

struct Forwarded {
    const char* function;
    int (*call)(Fg_Struct* handle);
    std::vector<std::intptr_t> values;
};

std::ostream& operator<<(std::ostream& out, const Forwarded& forwarded) { return out << forwarded.function; }

const std::vector<Forwarded> everyForwarded = {
    {"Fg_getAppletId", [](Fg_Struct* handle) { return Fg_getAppletId(handle, name); }, {address(name)}},
    {"Fg_getStatusEx",
     [](Fg_Struct* handle) { return Fg_getStatusEx(handle, 1, 2, 3, memory); },
     {1, 2, 3, address(memory)}},
    {"Fg_AcquireEx",
     [](Fg_Struct* handle) { return Fg_AcquireEx(handle, 4, 5, 6, memory); },
     {4, 5, 6, address(memory)}},
    {"Fg_stopAcquireEx",
     [](Fg_Struct* handle) { return Fg_stopAcquireEx(handle, 7, memory, 8); },
     {7, address(memory), 8}},
    {"Fg_getLastPicNumberEx",
     [](Fg_Struct* handle) { return Fg_getLastPicNumberEx(handle, 9, memory); },
     {9, address(memory)}},
    {"Fg_getLastPicNumberBlockingEx",
     [](Fg_Struct* handle) { return Fg_getLastPicNumberBlockingEx(handle, 10, 11, 12, memory); },
     {10, 11, 12, address(memory)}},
};

class ForwardedCall : public testing::TestWithParam<Forwarded> {
  protected:
    ForwardedCall() {
        simulator::hostCalls().reset();
        *argumentRecord() = {};
    }
    void bindToRecorder() {
        ASSERT_EQ(wrapper.initializeDllFunctions(ARGUMENT_RECORDER), 0);
        ASSERT_EQ(wrapper.runFgInit("test", simulator::Board::at(0).device(), nullptr, false), 0);
    }

    BareWrapper wrapper;
    Fg_Struct handle{static_cast<FgQxWrapper*>(&wrapper)};
};

INSTANTIATE_TEST_SUITE_P(EveryExport, ForwardedCall, testing::ValuesIn(everyForwarded),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.function); });

/// A wrapper on the heap, to be freed through its handle.
class FreedHandle : public testing::Test {
  protected:
    FreedHandle() {
        simulator::hostCalls().reset();
        *argumentRecord() = {};
    }
    ~FreedHandle() override { simulator::hostCalls().reset(); }

    bool destroyed = false;
    BareWrapper* wrapper = new BareWrapper(&destroyed);
    Fg_Struct handle{static_cast<FgQxWrapper*>(wrapper)};
};

} // namespace

TEST_P(ForwardedCall, ReachesTheRuntimeWithTheInnerHandleAndTheArgumentsUnchanged) {
    bindToRecorder();
    ArgumentRecord& record = *argumentRecord();
    for (const int result : {0, 1, 4711}) {
        record.answer = result;
        wrapper.setError(-99);
        EXPECT_EQ(GetParam().call(&handle), result);
        EXPECT_EQ(record.function, GetParam().function);
        EXPECT_EQ(record.handle, record.inner);
        EXPECT_EQ(record.values, GetParam().values);
        EXPECT_EQ(Fg_getLastErrorNumber(&handle), 0);
    }
}

TEST_P(ForwardedCall, ANegativeResultFetchesTheRuntimesOwnLastError) {
    bindToRecorder();
    argumentRecord()->answer = -5;
    EXPECT_EQ(GetParam().call(&handle), -5);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), -777);
}

TEST_P(ForwardedCall, WithoutInnerHandleItIsNotAvailable) {
    ASSERT_EQ(wrapper.initializeDllFunctions(ARGUMENT_RECORDER), 0);
    EXPECT_EQ(GetParam().call(&handle), error::notAvailable);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), error::notAvailable);
    EXPECT_EQ(argumentRecord()->function, "");
}

TEST_P(ForwardedCall, AMissingRuntimeFunctionIsNotAvailable) {
    simulator::hostCalls().lackSymbol(GetParam().function);
    kavo::test::bindToBoard(wrapper);
    ASSERT_NE(wrapper.grabcoreFg(), nullptr);
    EXPECT_EQ(GetParam().call(&handle), error::notAvailable);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), error::notAvailable);
    wrapper.wrapperFg().DLL_Fg_FreeGrabber(wrapper.grabcoreFg());
    simulator::hostCalls().reset();
}

TEST_P(ForwardedCall, RefusesAHandleWithoutWrapper) {
    Fg_Struct empty{nullptr};
    EXPECT_EQ(GetParam().call(nullptr), error::noHandle);
    EXPECT_EQ(GetParam().call(&empty), error::noHandle);
}

TEST_F(FreedHandle, ReleasesTheInnerHandleAndDestroysTheWrapper) {
    ASSERT_EQ(wrapper->initializeDllFunctions(ARGUMENT_RECORDER), 0);
    ASSERT_EQ(wrapper->runFgInit("test", nullptr, nullptr, false), 0);
    argumentRecord()->answer = -4;
    EXPECT_EQ(Fg_FreeGrabber(&handle), -4);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(handle.Master, nullptr);
    EXPECT_EQ(argumentRecord()->function, "Fg_FreeGrabber");
    EXPECT_EQ(argumentRecord()->handle, argumentRecord()->inner);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), error::noHandle);
}

TEST_F(FreedHandle, WithoutFunctionAndInnerHandleThereIsNothingToRelease) {
    EXPECT_EQ(Fg_FreeGrabber(&handle), 0);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(handle.Master, nullptr);
}

TEST_F(FreedHandle, ABoundFunctionIsCalledEvenWithoutInnerHandle) {
    simulator::hostCalls().record(true);
    ASSERT_EQ(wrapper->initializeDllFunctions("libgrabcore5.so"), 0);
    EXPECT_EQ(Fg_FreeGrabber(&handle), error::noHandle);
    EXPECT_EQ(simulator::hostCalls().calls(simulator::CallKind::release).size(), 1U);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(handle.Master, nullptr);
}

TEST_F(FreedHandle, AMissingFunctionLeavesTheInnerHandleButNotTheWrapper) {
    simulator::hostCalls().lackSymbol("Fg_FreeGrabber");
    kavo::test::bindToBoard(*wrapper);
    ASSERT_NE(wrapper->grabcoreFg(), nullptr);
    EXPECT_EQ(Fg_FreeGrabber(&handle), error::notAvailable);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(handle.Master, nullptr);
}

TEST_F(FreedHandle, TheSecondTimeThereIsNoHandle) {
    kavo::test::bindToBoard(*wrapper);
    EXPECT_EQ(Fg_FreeGrabber(&handle), 0);
    EXPECT_EQ(Fg_FreeGrabber(&handle), error::noHandle);
    EXPECT_EQ(Fg_getNrOfParameter(&handle), error::noHandle);
}
