// The less travelled ways into one handle: texts, table entries, registers, parameters of the inner handle,
// acquisition; each of them beside ordinary sets and gets.

#include "applet/ParameterFamilies.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/trust/ThreadsFixture.h"

using kavo::test::ScopedEnvironment;

namespace {

/// Sets the width of a port again and again.
void keepSetting(BoardApplet& applet, unsigned port) {
    for (unsigned time = 0; time < rounds * repetitions; ++time) {
        EXPECT_EQ(applet.set(FG_WIDTH, 16U + 16 * (time % 64), port), 0);
    }
}

/// Sets values of a parameter that this thread has for itself and finds each of them unchanged.
void useAlone(BoardApplet& applet, int id, std::uint64_t mask) {
    for (std::uint64_t time = 1; time <= std::uint64_t{rounds} * repetitions; ++time) {
        const std::uint64_t value = (time << 32 | time) & mask;
        EXPECT_EQ(applet.set(id, value, 0), 0);
        EXPECT_EQ(applet.get<std::uint64_t>(id, 0), value) << id;
    }
}

} // namespace

TEST_F(Threads, ReadTextsWhole) {
    BoardApplet applet(0);
    // The table is computed here: its file is only remembered.
    for (const char letter : {'a', 'b', 'c'}) {
        start([&applet, letter] {
            const std::string path(500, letter);
            for (unsigned time = 0; time < rounds * 4; ++time) {
                EXPECT_EQ(Fg_setParameterWithType(&applet.handle, FG_LUT_CUSTOM_FILE, path.c_str(), 1, 0), 0);
            }
        });
        start([&applet] {
            for (unsigned time = 0; time < rounds * 4; ++time) {
                std::string text(1024, '\0');
                EXPECT_EQ(Fg_getParameterWithType(&applet.handle, FG_LUT_CUSTOM_FILE, text.data(), 1, 0), 0);
                text.resize(text.find('\0'));
                EXPECT_TRUE(text.empty() || text == std::string(500, text.front())) << text;
            }
        });
    }
    start([&applet] { keepSetting(applet, 1); });
    join();
    expectNoOverlap(applet);
}

TEST_F(Threads, LoseNoEntryOfATableThatTheyFillTogether) {
    BoardApplet applet(0);
    constexpr unsigned entries = 4096;
    constexpr unsigned threads = 4;
    const auto valueOf = [](unsigned index) { return (index * 7 + 5) % entries; };
    for (unsigned thread = 0; thread < threads; ++thread) {
        start([&applet, thread, valueOf] {
            for (unsigned index = thread; index < entries; index += threads) {
                EXPECT_EQ(applet.set(FG_LUT_VALUE, FieldParameterInt_s{valueOf(index), index}, 0), 0);
            }
        });
    }
    start([&applet] { keepSetting(applet, 0); });
    join();
    const std::vector<std::uint32_t> written =
        applet.board.designField("Device1_Process0_LookupTable_LookupTable_LUTcontent");
    ASSERT_EQ(written.size(), entries);
    for (unsigned index = 0; index < entries; ++index) {
        FieldParameterInt_s entry{0, index};
        ASSERT_EQ(Fg_getParameterWithType(&applet.handle, FG_LUT_VALUE, &entry, 0, 0), 0);
        ASSERT_EQ(entry.value, valueOf(index));
        ASSERT_EQ(written[index], valueOf(index));
    }
    expectNoOverlap(applet);
}

TEST_F(Threads, ShareTheLockAcrossTheFamiliesOfParameters) {
    const ScopedEnvironment registers("KAVO_ENABLE_DRA", "on");
    const ScopedEnvironment inspected("KAVO_ENABLE_DQXA", "on");
    BoardApplet applet(0);
    WatchedHost::watchRegisters(applet.board.device(), applet.wrapper().grabcoreFg());
    const auto registerId = [&](const std::string& name) {
        return Fg_getParameterIdByName(&applet.handle, ("DRA_" + name).c_str());
    };
    const int word = registerId("Device1_Board_UserWord");
    const int delay = registerId(
        "Device1_Process2_Trigger_TriggerCam1_PulseFormGenerators_PulseFormGenerator2_Delay_Delay");
    const int inner =
        family::inspectedIdBase + applet.wrapper().getParameterIdByName(
                                      "Device1_Process2_Trigger_TriggerCam0_Downscale_Downscale_Downscale");
    ASSERT_GT(word, family::registerIdBase);
    ASSERT_GT(delay, family::registerIdBase);
    ASSERT_GT(inner, family::inspectedIdBase);
    start([&] { useAlone(applet, word, ~std::uint64_t{0}); });
    start([&] { useAlone(applet, delay, 0xFFFFFFFF); });
    start([&] { useAlone(applet, inner, 0xFFFFFFFF); });
    start([&] { keepSetting(applet, 0); });
    start([&] { keepSetting(applet, 1); });
    start([&] {
        for (unsigned time = 0; time < rounds; ++time) {
            applet.expectWholeXml(1);
        }
    });
    join();
    expectNoOverlap(applet);
    EXPECT_GT(applet.watched().entries, 10L * rounds * repetitions) << "registers are watched too";
}

TEST_F(Threads, MayAcquireWhileOthersSet) {
    BoardApplet applet(0);
    for (const unsigned port : {0U, 1U}) {
        start([&applet, port] {
            const int dma = static_cast<int>(port);
            for (unsigned time = 0; time < rounds * 2; ++time) {
                EXPECT_EQ(Fg_AcquireEx(&applet.handle, dma, 3, 0, nullptr), 0);
                EXPECT_GE(Fg_getLastPicNumberEx(&applet.handle, dma, nullptr), 0);
                EXPECT_LT(Fg_getStatusEx(&applet.handle, -1, 0, port, nullptr), 0);
                EXPECT_EQ(Fg_stopAcquireEx(&applet.handle, dma, nullptr, 0), 0);
            }
        });
        start([&applet, port] { keepSetting(applet, port); });
        start([&applet, port] {
            for (unsigned time = 0; time < rounds * repetitions; ++time) {
                applet.get<unsigned>(FG_CAMSTATUS_EXTENDED, port);
                applet.get<unsigned>(FG_FILLLEVEL, port);
                EXPECT_LE(Fg_getLastErrorNumber(&applet.handle), 0);
            }
        });
    }
    join();
    expectNoOverlap(applet);
}
