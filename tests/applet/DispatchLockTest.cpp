// One dispatch at a time: what happens when a host function enters the applet again, from this thread or from
// another one, and when it throws.

#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "tests/support/Creation.h"
#include "tests/support/LibraryCalls.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <thread>

namespace error = kavo::error;

namespace {

/// What the runtime does when the applet reads one of its parameters.
std::function<int()>& whenRead() {
    static std::function<int()> action;
    return action;
}

int readInRuntime(Fg_Struct*, int, void*, unsigned) { return whenRead()(); }

class DispatchLock : public kavo::test::OnFreshBoard {
  protected:
    DispatchLock() {
        kavo::test::replacedSymbols()["Fg_getParameter"] = reinterpret_cast<void*>(readInRuntime);
        creation.emplace(1);
        kavo::test::replacedSymbols().clear();
    }

    int enter() { return Fg_getParameterWithType(handle(), FG_NR_OF_DMAS, &word, 0, 2); }
    int readWidth(unsigned* width) { return Fg_getParameterWithType(handle(), FG_WIDTH, width, 0, 2); }
    Fg_Struct* handle() { return creation->handle(); }

    unsigned word = 0;
    std::optional<kavo::test::Creation> creation;
};

} // namespace

TEST_F(DispatchLock, EnteringTwiceIsRefusedInsteadOfBlocking) {
    std::string refusal;
    whenRead() = [&] {
        try {
            unsigned width = 0;
            readWidth(&width);
        } catch (const std::logic_error& entered) {
            refusal = entered.what();
        }
        return 0;
    };
    EXPECT_EQ(enter(), 0);
    EXPECT_EQ(refusal, "GenericLock object got lock but is already marked as locked");
    unsigned width = 0;
    EXPECT_EQ(readWidth(&width), 0);
    EXPECT_EQ(width, 1024U);
}

TEST_F(DispatchLock, ARefusedEntryFromInsideReachesTheCallerOutside) {
    whenRead() = [&] {
        unsigned width = 512;
        return Fg_setParameterWithType(handle(), FG_WIDTH, &width, 0, 2);
    };
    EXPECT_THROW(enter(), std::logic_error);
    unsigned width = 0;
    EXPECT_EQ(readWidth(&width), 0);
    EXPECT_EQ(width, 1024U);
}

TEST_F(DispatchLock, ANullBufferIsRefusedWithoutTheLock) {
    int code = 0;
    whenRead() = [&] {
        code = Fg_setParameterWithType(handle(), FG_WIDTH, nullptr, 0, 2) + readWidth(nullptr);
        return 0;
    };
    EXPECT_EQ(enter(), 0);
    EXPECT_EQ(code, 2 * error::invalidParameter);
}

TEST_F(DispatchLock, NamesEventsAndErrorsNeedNoLock) {
    whenRead() = [&] {
        return Fg_getParameterIdByName(handle(), "FG_WIDTH") == FG_WIDTH &&
                       Fg_getNrOfParameter(handle()) == 93 &&
                       Fg_getEventMask(handle(), "FG_OVERFLOW_CAM0") != 0
                   ? -4711
                   : 0;
    };
    EXPECT_EQ(enter(), -4711);
    EXPECT_EQ(Fg_getLastErrorNumber(handle()), -4711);
}

TEST_F(DispatchLock, AnExceptionOfTheHostLeavesTheLockAndPasses) {
    whenRead() = []() -> int { throw std::runtime_error("host"); };
    EXPECT_THROW(enter(), std::runtime_error);
    unsigned width = 0;
    EXPECT_EQ(readWidth(&width), 0);
}

TEST_F(DispatchLock, AnotherThreadWaitsUntilTheDispatchIsOver) {
    std::atomic<bool> started{false};
    std::atomic<int> finished{0};
    std::thread other;
    bool overtook = false;
    whenRead() = [&] {
        other = std::thread([&] {
            started = true;
            unsigned width = 0;
            readWidth(&width);
            finished = static_cast<int>(width);
        });
        while (!started) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        overtook = finished != 0;
        return 0;
    };
    EXPECT_EQ(enter(), 0);
    other.join();
    EXPECT_FALSE(overtook);
    EXPECT_EQ(finished, 1024);
}
