// Many threads on one handle, and many handles in one process.

#include "applet/ParameterFamilies.h"
#include "grabber_basis/SharedField.h"
#include "tests/trust/ThreadsFixture.h"

namespace {

/// A parameter that one thread has for itself.
struct Own {
    int id;
    unsigned port, from, step, count;
};
constexpr Own owned[] = {
    {FG_HEIGHT, 0, 2, 1, 1000},        {FG_HEIGHT, 1, 2, 1, 1000},
    {FG_CAMERA_WIDTH, 0, 16, 16, 256}, {FG_TRIGGERIN_SRC, 0, 0, 1, 8},
    {FG_TRIGGERIN_SRC, 1, 0, 1, 8},    {FG_TRIGGER_MULTIPLY_PULSES, 1, 1, 1, 65535},
    {FG_TIMEOUT, 0, 2, 1, 100000},     {FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD, 1, 2, 1, 2000},
};

/// Sets own values one after another and finds each of them unchanged.
void useOwn(BoardApplet& applet, const Own& own, unsigned times) {
    for (unsigned time = 0; time < times; ++time) {
        const unsigned value = own.from + own.step * (time % own.count);
        EXPECT_EQ(applet.set(own.id, value, own.port), 0);
        EXPECT_EQ(applet.get<unsigned>(own.id, own.port), value);
    }
}

/// Walks the descriptions as a program does that shows them.
void expectSaneDescriptions(BoardApplet& applet, int port) {
    walkParameterTree(Fg_getParameterInfo(&applet.handle, port), [](const RegisterInfo& record) {
        const int access = kavo::shared::load(record.accessFlags);
        EXPECT_TRUE(access == 1 || access == 3 || access == 7) << record.parameterName << ' ' << access;
        if (record.id == FG_WIDTH) {
            const unsigned to = kavo::shared::load(record.u.uiReg.to);
            EXPECT_TRUE(to <= 4096 && to >= 2048 && to % 16 == 0) << to;
        }
    });
}

} // namespace

TEST_F(Threads, OnOneHandleKeepEachOthersValues) {
    BoardApplet applet(0);
    for (const Own& own : owned) {
        start([&applet, own] { useOwn(applet, own, rounds * repetitions); });
    }
    join();
    expectNoOverlap(applet);
    for (const Own& own : owned) {
        const unsigned last = own.from + own.step * ((rounds * repetitions - 1) % own.count);
        EXPECT_EQ(applet.get<unsigned>(own.id, own.port), last);
    }
}

TEST_F(Threads, NeverComeBetweenTheWritesOfOneSet) {
    BoardApplet applet(0);
    applet.watched().writes.clear();
    for (unsigned thread = 0; thread < 6; ++thread) {
        start([&applet, thread] {
            for (unsigned time = 0; time < rounds * repetitions; ++time) {
                EXPECT_EQ(applet.set(FG_WIDTH, 16 * (1 + thread), thread % 2), 0);
            }
        });
    }
    join();
    const std::vector<WatchedHost::Write>& writes = applet.watched().writes;
    ASSERT_EQ(writes.size(), 2U * 6 * rounds * repetitions);
    for (std::size_t first = 0; first < writes.size(); first += 2) {
        ASSERT_EQ(writes[first].value, writes[first + 1].value) << first;
        ASSERT_EQ(writes[first].dmaIndex, writes[first + 1].dmaIndex) << first;
        ASSERT_NE(writes[first].id, writes[first + 1].id) << first;
    }
    expectNoOverlap(applet);
}

TEST_F(Threads, LoseNoChangeThatDependsOnTheOneBefore) {
    BoardApplet applet(0);
    applet.watched().writes.clear();
    // Every clear turns a level of the design over.
    for (unsigned thread = 0; thread < 5; ++thread) {
        start([&applet] {
            for (unsigned time = 0; time < rounds * repetitions; ++time) {
                EXPECT_EQ(applet.set(FG_TRIGGERIN_STATS_MINMAXFREQUENCY_CLEAR, 1U, 1), 0);
            }
        });
    }
    join();
    const std::vector<WatchedHost::Write>& writes = applet.watched().writes;
    ASSERT_EQ(writes.size(), 5U * rounds * repetitions);
    for (std::size_t nth = 0; nth < writes.size(); ++nth) {
        ASSERT_EQ(writes[nth].value, 1 - nth % 2) << nth;
    }
}

TEST_F(Threads, OnOneHandleMayDoEverythingAtOnce) {
    BoardApplet applet(0);
    const std::string settings = folder.path("given.mcf");
    ASSERT_EQ(Fg_saveConfig(&applet.handle, settings.c_str()), 0);
    for (const unsigned port : {0U, 1U}) {
        start([&, port] {
            for (unsigned time = 0; time < rounds * repetitions; ++time) {
                // A load may have brought the wide picture back.
                const int code = applet.set(FG_XOFFSET, 16 * (time % 128), port);
                EXPECT_TRUE(code == 0 || code == kavo::error::outOfRange) << code;
                EXPECT_EQ(applet.set(FG_WIDTH, 16U + 16 * (time % 64), port), 0);
                EXPECT_EQ(applet.set(FG_TRIGGERIN_DOWNSCALE, 1 + time % 100, port), 0);
                EXPECT_EQ(applet.set(FG_LUT_TYPE, time % 2 * 3, port), 0);
            }
        });
        start([&, port] {
            for (unsigned time = 0; time < rounds * 4; ++time) {
                EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, 1U << time % 3, port), 0);
                EXPECT_EQ(applet.set(FG_TRIGGERSTATE, time % 3, port), 0);
                applet.get<unsigned>(FG_TRIGGERQUEUE_FILLLEVEL, port);
                EXPECT_GT(applet.get<double>(FG_TRIGGER_FRAMESPERSECOND, port), 7.9);
            }
        });
        start([&, port] {
            for (unsigned time = 0; time < rounds; ++time) {
                applet.expectWholeXml(static_cast<int>(port));
                expectSaneDescriptions(applet, static_cast<int>(port));
            }
        });
        start([&, port] {
            const std::string own = folder.path("saved" + std::to_string(port) + ".mcf");
            for (unsigned time = 0; time < rounds / 4; ++time) {
                EXPECT_EQ(Fg_saveConfig(&applet.handle, own.c_str()), 0);
                EXPECT_EQ(Fg_loadConfig(&applet.handle, settings.c_str()), 0);
            }
        });
    }
    start([&] {
        for (unsigned time = 0; time < rounds * repetitions; ++time) {
            applet.expectLookUps();
        }
    });
    join();
    expectNoOverlap(applet);
    for (const unsigned port : {0U, 1U}) {
        const std::string memory = "Device1_Process" + std::to_string(port) + "_Buffer_0_DRAM_A_";
        for (const char* half : {"0", "1"}) {
            EXPECT_EQ(applet.board.designValue(memory + half + "_XLength"),
                      applet.get<unsigned>(FG_WIDTH, port));
            EXPECT_EQ(applet.board.designValue(memory + half + "_XOffset"),
                      applet.get<unsigned>(FG_XOFFSET, port));
        }
        EXPECT_EQ(Fg_loadConfig(&applet.handle, folder.path("saved" + std::to_string(port) + ".mcf").c_str()),
                  0);
    }
}

TEST_F(Threads, SixteenHandlesOnSixteenBoardsDoNotKnowOfEachOther) {
    for (unsigned number = 0; number < simulator::Board::numberOfBoards; ++number) {
        start([this, number] {
            const std::string file = folder.path("board" + std::to_string(number) + ".mcf");
            for (unsigned time = 0; time < 3; ++time) {
                BoardApplet applet(number);
                ASSERT_NE(applet.handle.Master, nullptr);
                useOwn(applet, {FG_WIDTH, number % 2, 16 * (1 + number), 16, 100}, rounds);
                EXPECT_EQ(applet.set(FG_HEIGHT, 100 + number, 0), 0);
                EXPECT_EQ(Fg_saveConfig(&applet.handle, file.c_str()), 0);
                EXPECT_EQ(applet.set(FG_HEIGHT, 4000U, 0), 0);
                EXPECT_EQ(Fg_loadConfig(&applet.handle, file.c_str()), 0);
                EXPECT_EQ(applet.get<unsigned>(FG_HEIGHT, 0), 100 + number);
                EXPECT_EQ(applet.board.designValue("Device1_Process0_Buffer_0_DRAM_A_0_YLength"),
                          100 + number);
                applet.expectWholeXml(1);
                applet.expectLookUps();
                expectNoOverlap(applet);
            }
        });
    }
    join();
}

TEST_F(Threads, SixteenHandlesMayEachHaveSeveral) {
    std::vector<std::unique_ptr<BoardApplet>> applets;
    for (unsigned number = 0; number < simulator::Board::numberOfBoards; ++number) {
        applets.push_back(std::make_unique<BoardApplet>(number));
        BoardApplet& applet = *applets.back();
        start([&applet] { useOwn(applet, owned[0], rounds * 4); });
        start([&applet] { useOwn(applet, owned[5], rounds * 4); });
        start([&applet] {
            applet.expectWholeXml(0);
            expectSaneDescriptions(applet, 1);
            applet.expectLookUps();
        });
    }
    join();
    for (const auto& applet : applets) {
        expectNoOverlap(*applet);
    }
}
