#pragma once

#include "applet/AppletWrapper.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/WatchedHost.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#ifdef __SANITIZE_THREAD__
constexpr unsigned rounds = 60;
#else
constexpr unsigned rounds = 25;
#endif
constexpr unsigned repetitions = 20;

/// An applet on a board of its own, for any thread.
class BoardApplet {
  public:
    explicit BoardApplet(unsigned boardNumber) : board(simulator::Board::at(boardNumber)) {
        board.resetAndStepByHand();
        handle.Master = Std_entry(board.device(), nullptr, 0);
    }
    /// One handle more on the board of another.
    static std::unique_ptr<BoardApplet> slaveOf(const BoardApplet& master) {
        return std::unique_ptr<BoardApplet>(new BoardApplet(master.board));
    }
    ~BoardApplet() { Fg_FreeGrabber(&handle); }
    BoardApplet(const BoardApplet&) = delete;
    BoardApplet& operator=(const BoardApplet&) = delete;

    template <class Value>
    int set(int id, Value value, unsigned port) {
        return Fg_setParameterWithType(&handle, id, &value, port, kavo::type::unsigned32);
    }
    template <class Value>
    Value get(int id, unsigned port) {
        Value value{};
        EXPECT_EQ(Fg_getParameterWithType(&handle, id, &value, port, kavo::type::unsigned32), 0) << id;
        return value;
    }
    [[nodiscard]] FgQxWrapperImpl& wrapper() const {
        return static_cast<FgQxWrapperImpl&>(*static_cast<FgQxWrapper*>(handle.Master));
    }
    [[nodiscard]] WatchedHost::Handle& watched() const { return WatchedHost::of(wrapper().grabcoreFg()); }

    void expectWholeXml(int port) {
        std::string text(200000, '\0');
        auto size = static_cast<unsigned>(text.size());
        ASSERT_EQ(Fg_getParameterInfoXML(&handle, port, text.data(), &size), 0);
        text.resize(size - 1);
        const std::string end = "</RegisterDescription>\n";
        ASSERT_GT(text.size(), 40000U);
        EXPECT_EQ(text.substr(text.size() - end.size()), end);
    }
    void expectLookUps() {
        const std::uint64_t mask = Fg_getEventMask(&handle, "FG_OVERFLOW_CAM1");
        EXPECT_NE(mask, 0U);
        EXPECT_STREQ(Fg_getEventName(&handle, mask), "FG_OVERFLOW_CAM1");
        EXPECT_EQ(Fg_getParameterIdByName(&handle, "FG_WIDTH"), FG_WIDTH);
        EXPECT_EQ(Fg_getParameterId(&handle, 3),
                  Fg_getParameterIdByName(&handle, Fg_getParameterName(&handle, 3)));
        EXPECT_EQ(Fg_getNrOfParameter(&handle), 93);
        // The code of whichever thread came last.
        EXPECT_LE(Fg_getLastErrorNumber(&handle), 0);
    }

    simulator::Board& board;
    Fg_Struct handle{nullptr};

  private:
    explicit BoardApplet(simulator::Board& sharedBoard) : board(sharedBoard) {
        handle.Master = Std_entry(board.device(), nullptr, 1);
    }
};

class Threads : public testing::Test {
  protected:
    Threads() {
        simulator::hostCalls().reset();
        WatchedHost::forget();
    }

    template <class Work>
    void start(Work work) {
        mThreads.emplace_back(work);
    }
    void join() {
        for (std::thread& thread : mThreads) {
            thread.join();
        }
        mThreads.clear();
    }

    static void expectNoOverlap(const BoardApplet& applet) {
        const WatchedHost::Handle& watched = applet.watched();
        EXPECT_EQ(watched.overlaps, 0);
        EXPECT_EQ(watched.unguardedEntries, watched.entries) << "entries were lost";
        EXPECT_GT(watched.entries, 0);
    }

    kavo::test::TemporaryFolder folder;

  private:
    std::vector<std::thread> mThreads;
};
