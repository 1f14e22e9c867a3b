// A thousand lives of an applet, and a thousand creations that fail in each way they can, leave the process
// as it was: memory, file descriptors, libraries, temporary files.

#include "tests/support/AllocationFaults.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/LeakExemption.h"
#include "tests/support/LibraryCalls.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/LifetimeResources.h"

#include <algorithm>
#include <iostream>

namespace error = kavo::error;
using kavo::test::libraryCalls;
using kavo::test::ScopedEnvironment;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// What is counted here does not depend on the build, which takes its time.
constexpr int thousand = 100;
#else
constexpr int thousand = 1000;
#endif
constexpr int injectedCode = -4711;

/// Opens less closes since the last question. The record is thrown away, with its memory.
long librariesLeftOpen() {
    const int found = kavo::test::librariesAreMissing() ? 0 : 1;
    long open = 0;
    for (const std::string& call : libraryCalls()) {
        open += call.rfind("open ", 0) == 0 ? found : 0;
        open -= call.rfind("close", 0) == 0 ? 1 : 0;
    }
    std::vector<std::string>().swap(libraryCalls());
    return open;
}

/// A way in which a creation goes.
struct Branch {
    const char* name;
    int error; ///< what Std_entry tells
    int slave;
    int lives;
    void (*arrange)(); ///< makes the next creation go this way
    const char* families = nullptr;
    bool onDevice = true;
};

std::ostream& operator<<(std::ostream& out, const Branch& branch) { return out << branch.name; }

void arrangeNothing() {}
template <CallKind kind>
void failAll() {
    hostCalls().failFrom(kind, 1, injectedCode);
}
void missRuntime() { kavo::test::librariesAreMissing() = true; }
void lackInitialisation() {
    hostCalls().lackSymbol("Fg_InitHandleSlaveAware");
    hostCalls().lackSymbol("Fg_InitHandle");
}
void failWithoutReason() {
    hostCalls().lackSymbol("Fg_getLastErrorNumber");
    failAll<CallKind::initialisation>();
}

constexpr Branch branches[] = {
    {"Master", 0, 0, thousand, arrangeNothing},
    {"Slave", 0, 1, thousand, arrangeNothing},
    {"EveryFamily", 0, 0, thousand / 5, arrangeNothing, "on"},
    {"NoRuntimeLibrary", error::runtimeMissing, 0, thousand, missRuntime},
    {"NoInitialisationFunction", error::runtimeMissing, 0, thousand, lackInitialisation},
    {"InnerHandleRefused", injectedCode, 0, thousand, failAll<CallKind::initialisation>},
    {"InnerHandleRefusedWithoutReason", error::initialisationFailed, 0, thousand, failWithoutReason},
    {"NoDevice", error::invalidParameter, 0, thousand, arrangeNothing, nullptr, false},
    {"NoIds", 0, 0, thousand / 5, failAll<CallKind::idLookup>},
    {"NoWrites", 0, 0, thousand / 5, failAll<CallKind::write>},
    {"NoReads", 0, 0, thousand / 5, failAll<CallKind::read>},
    {"NoParameterTree", 0, 0, thousand / 5, failAll<CallKind::parameterTree>, "on"},
};

class Lifetime : public kavo::test::OnFreshBoard, public testing::WithParamInterface<Branch> {
  protected:
    ~Lifetime() override { kavo::test::librariesAreMissing() = false; }

    void live() {
        GetParam().arrange();
        int code = untouched;
        Fg_Struct handle{
            Std_entry(GetParam().onDevice ? board().device() : nullptr, &code, GetParam().slave)};
        ASSERT_EQ(code, GetParam().error);
        ASSERT_EQ(handle.Master != nullptr, code == 0);
        const int expected = handle.Master != nullptr ? 0 : error::noHandle;
        ASSERT_EQ(Fg_FreeGrabber(&handle), expected);
        ASSERT_EQ(librariesLeftOpen(), 0);
        kavo::test::librariesAreMissing() = false;
        hostCalls().reset();
    }

    static constexpr int untouched = 12345;
    ScopedEnvironment registers{"KAVO_ENABLE_DRA", GetParam().families};
    ScopedEnvironment inspected{"KAVO_ENABLE_DQXA", GetParam().families};
};

INSTANTIATE_TEST_SUITE_P(Branches, Lifetime, testing::ValuesIn(branches),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.name); });

/// A life with everything in it that takes something for a while, what fails included.
class FullLife : public kavo::test::OnFreshBoard {
  protected:
    FullLife() {
        std::ofstream(broken) << "# Lut data file v1.1\n[gray]\nnrOfElements=99999999;\n";
        std::ofstream(foreign) << "[Kamerasektion]\n";
    }

    void live() {
        AppletOnBoard applet;
        hostCalls().record(false);
        hostCalls().clear();
        for (const int port : {0, 1}) {
            useFiles(applet, port);
            useParameters(applet, port);
        }
        char* const temporary = FgQxWrapper::createTempFile();
        EXPECT_TRUE(std::filesystem::exists(temporary));
        FgQxWrapper::deleteTempFile(temporary);
    }

    void useFiles(AppletOnBoard& applet, int port) {
        Fg_Struct* handle = applet.handle();
        EXPECT_EQ(Fg_saveConfig(handle, settings.c_str()), 0);
        EXPECT_EQ(Fg_saveConfig(handle, nowhere.c_str()), error::fileAccessFailed);
        EXPECT_EQ(Fg_loadConfig(handle, settings.c_str()), 0);
        EXPECT_EQ(Fg_loadConfig(handle, nowhere.c_str()), error::fileNotFound);
        EXPECT_EQ(Fg_loadConfig(handle, foreign.c_str()), error::configurationLoadFailed);
        EXPECT_EQ(applet.set(FG_LUT_SAVE_FILE, table.c_str(), port), 0);
        EXPECT_EQ(applet.set(FG_LUT_SAVE_FILE, nowhere.c_str(), port), error::fileAccessFailed);
        EXPECT_EQ(applet.set(FG_LUT_TYPE, 0U, port), 0);
        EXPECT_EQ(applet.set(FG_LUT_CUSTOM_FILE, table.c_str(), port), 0);
        EXPECT_EQ(applet.set(FG_LUT_CUSTOM_FILE, nowhere.c_str(), port), error::fileNotFound);
        EXPECT_EQ(applet.set(FG_LUT_CUSTOM_FILE, broken.c_str(), port), error::fileAccessFailed);
    }

    static void useParameters(AppletOnBoard& applet, int port) {
        EXPECT_EQ(applet.set(FG_WIDTH, 512U, port), 0);
        EXPECT_EQ(applet.set(FG_WIDTH, 17U, port), error::offStep);
        AppletOnBoard::failWrite(1, injectedCode);
        EXPECT_EQ(applet.set(FG_WIDTH, 1024U, port), injectedCode);
        EXPECT_EQ(applet.get(FG_WIDTH, port), 512U);
        std::string text(200000, '\0');
        auto size = static_cast<unsigned>(text.size());
        EXPECT_EQ(Fg_getParameterInfoXML(applet.handle(), port, text.data(), &size), 0);
        EXPECT_EQ(Fg_getParameterInfoXML(applet.handle(), port, text.data(), &(size = 5)),
                  error::bufferTooSmall);
        EXPECT_NE(Fg_getEventMask(applet.handle(), "FG_OVERFLOW_CAM0"), 0U);
        EXPECT_EQ(Fg_AcquireEx(applet.handle(), port, 3, 0, nullptr), 0);
        EXPECT_EQ(Fg_stopAcquireEx(applet.handle(), port, nullptr, 0), 0);
    }

    kavo::test::TemporaryFolder folder;
    const std::string settings = folder.path("settings.mcf");
    const std::string foreign = folder.path("foreign.mcf");
    const std::string table = folder.path("table.lut");
    const std::string broken = folder.path("broken.lut");
    const std::string nowhere = folder.path("no-such-folder/settings.mcf");
};

class UnloadedDesign : public kavo::test::OnFreshBoard {};

} // namespace

TEST_P(Lifetime, AThousandTimesLeavesNothing) {
    for (int warmUp = 0; warmUp < 3; ++warmUp) {
        live();
    }
    const LifetimeBalance balance;
    for (int life = 0; life < GetParam().lives && !HasFatalFailure(); ++life) {
        live();
    }
}

TEST_F(FullLife, AHundredTimesLeavesNothing) {
    for (int warmUp = 0; warmUp < 3; ++warmUp) {
        live();
    }
    librariesLeftOpen();
    {
        const LifetimeBalance balance;
        for (int life = 0; life < thousand / 10; ++life) {
            live();
            EXPECT_EQ(librariesLeftOpen(), 0);
        }
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path("")), {}), 4);
}

TEST_F(UnloadedDesign, KeepsOneWrapperWithItsLibraryAndNothingElse) {
    const kavo::test::LeakExemption keptWrappers;
    const auto fail = [] {
        hostCalls().failOnce(CallKind::designLoad, 1, 0);
        EXPECT_EQ(Std_entry(board().device(), nullptr, 0), nullptr);
        EXPECT_EQ(librariesLeftOpen(), 1);
    };
    fail();
    fail();
    const LifetimeResources before = LifetimeResources::now();
    fail();
    const long blocksOfOne = kavo::test::liveMemory().blocks - before.blocks;
    for (int life = 1; life < thousand; ++life) {
        fail();
    }
    EXPECT_EQ(kavo::test::liveMemory().blocks - before.blocks, thousand * blocksOfOne);
    EXPECT_LE(blocksOfOne, 20) << "no table and no description was made yet";
    const LifetimeResources after = LifetimeResources::now();
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.libraries, before.libraries);
}
