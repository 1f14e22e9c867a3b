// What the handles of a process have in common: the device and the design last used, the constants by name,
// temporary files; and handles that come and go while others are used.

#include "tests/trust/ThreadsFixture.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <set>

namespace {

constexpr unsigned deviceSelector = 4144;
constexpr unsigned designSelector = 4160;
constexpr unsigned constantSelector = 4352;

/// The value that a query of the applet's properties gives.
unsigned propertyOf(unsigned selector) {
    unsigned value = 0;
    EXPECT_EQ(Info(static_cast<int>(selector), 0, 0, &value, nullptr), 0);
    return value;
}

int constantOf(const char* name) {
    std::string text(name);
    return Info(constantSelector, 0, 0, reinterpret_cast<unsigned*>(text.data()), nullptr);
}

/// A handle travels in a word.
unsigned wordOf(const void* handle) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(handle));
}

std::set<unsigned> wordsOfAllDevices() {
    std::set<unsigned> words;
    for (unsigned number = 0; number < simulator::Board::numberOfBoards; ++number) {
        words.insert(wordOf(simulator::Board::at(number).device()));
    }
    return words;
}

} // namespace

TEST_F(Threads, TheDeviceAndTheDesignOfTheProcessAreThoseOfTheLastCreation) {
    constexpr unsigned creations = 4;
    const std::set<unsigned> devices = wordsOfAllDevices();
    std::atomic<bool> goesOn{true};
    std::array<unsigned, simulator::Board::numberOfBoards> lastDesigns{};
    std::vector<std::thread> askers;
    for (unsigned asker = 0; asker < 2; ++asker) {
        askers.emplace_back([&] {
            while (goesOn.load(std::memory_order_relaxed)) {
                const unsigned device = propertyOf(deviceSelector);
                EXPECT_TRUE(device == 0 || devices.count(device) == 1);
                propertyOf(designSelector);
            }
        });
    }
    for (unsigned number = 0; number < simulator::Board::numberOfBoards; ++number) {
        start([number, &lastDesigns] {
            for (unsigned time = 0; time < creations; ++time) {
                const BoardApplet applet(number);
                lastDesigns[number] = wordOf(applet.wrapper().designHandle());
                // What fails is not remembered.
                int code = 0;
                EXPECT_EQ(Std_entry(nullptr, &code, 0), nullptr);
                EXPECT_LT(code, 0);
                EXPECT_NE(propertyOf(deviceSelector), 0U);
            }
        });
    }
    join();
    goesOn = false;
    for (std::thread& asker : askers) {
        asker.join();
    }
    EXPECT_EQ(devices.count(propertyOf(deviceSelector)), 1U);
    EXPECT_GE(std::count(lastDesigns.begin(), lastDesigns.end(), propertyOf(designSelector)), 1);
}

TEST_F(Threads, ComeAndGoOnTheBoardOfAHandleThatIsUsed) {
    BoardApplet master(0);
    for (unsigned thread = 0; thread < 4; ++thread) {
        start([&master] {
            for (unsigned time = 0; time < rounds / 4; ++time) {
                const auto slave = BoardApplet::slaveOf(master);
                ASSERT_NE(slave->handle.Master, nullptr);
                EXPECT_EQ(slave->get<unsigned>(FG_HEIGHT, 1), 1024U) << "its own cache, not the master's";
                slave->expectWholeXml(1);
                slave->expectLookUps();
            }
        });
    }
    start([&master] {
        for (unsigned time = 0; time < rounds * repetitions; ++time) {
            EXPECT_EQ(master.set(FG_HEIGHT, 2 + time % 1000, 1), 0);
            EXPECT_EQ(master.get<unsigned>(FG_HEIGHT, 1), 2 + time % 1000);
        }
    });
    join();
    expectNoOverlap(master);
    EXPECT_EQ(master.board.designValue("Device1_Process1_Buffer_0_DRAM_A_0_YLength"),
              master.get<unsigned>(FG_HEIGHT, 1));
}

TEST_F(Threads, FindEveryConstantAlthoughAllAskFirst) {
    std::atomic<unsigned> waiting{0};
    for (unsigned thread = 0; thread < 8; ++thread) {
        start([&waiting] {
            waiting.fetch_add(1);
            while (waiting < 8) {
                std::this_thread::yield();
            }
            EXPECT_EQ(constantOf("FG_GRAY"), 3);
            EXPECT_EQ(constantOf("fg_gray"), kavo::error::invalidParameter);
        });
    }
    join();
}

TEST_F(Threads, GetTemporaryFilesOfTheirOwn) {
    constexpr unsigned each = 50;
    std::array<std::vector<std::string>, 8> names;
    for (std::vector<std::string>& own : names) {
        start([&own] {
            std::vector<char*> files;
            for (unsigned time = 0; time < each; ++time) {
                files.push_back(FgQxWrapper::createTempFile());
                ASSERT_NE(files.back(), nullptr);
                own.emplace_back(files.back());
            }
            std::for_each(files.begin(), files.end(), FgQxWrapper::deleteTempFile);
        });
    }
    join();
    std::set<std::string> different;
    for (const std::vector<std::string>& own : names) {
        different.insert(own.begin(), own.end());
        for (const std::string& name : own) {
            EXPECT_FALSE(std::filesystem::exists(name));
        }
    }
    EXPECT_EQ(different.size(), names.size() * each) << "two threads would have had one file";
}
