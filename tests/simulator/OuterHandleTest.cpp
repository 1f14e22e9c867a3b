#include "platform/RuntimeForPrograms.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"
#include "simulator/RuntimeCodes.h"
#include "tests/simulator/FakeAppletCalls.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace simulator {
namespace {

using tests::FakeAppletCalls;

std::string applet(const std::string& name) {
    return std::string(FAKE_APPLET_FOLDER) + "/lib" + name + ".so";
}

bool isLoaded(const std::string& file) {
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        dlclose(library);
    }
    return library != nullptr;
}

class OuterHandleTest : public testing::Test {
  protected:
    void SetUp() override {
        int error = 1;
        mHandle = Fg_OpenBoard(applet("FakeApplet").c_str(), 3, 1, &error);
        ASSERT_NE(mHandle, nullptr) << dlerror();
        EXPECT_EQ(error, 0);
        auto* ask =
            reinterpret_cast<FakeAppletCalls* (*)()>(dlsym(Fg_AppletLibrary(mHandle), "fakeAppletCalls"));
        ASSERT_NE(ask, nullptr);
        mCalls = ask();
    }
    void TearDown() override {
        hostCalls().reset();
        Fg_FreeGrabber(mHandle);
        EXPECT_FALSE(isLoaded(applet("FakeApplet")));
    }

    Fg_Struct* mHandle = nullptr;
    FakeAppletCalls* mCalls = nullptr;
};

TEST_F(OuterHandleTest, AppletIsCreatedOnItsBoardAndKeptInMaster) {
    EXPECT_EQ(mCalls->device, Board::at(3).device());
    EXPECT_EQ(mCalls->slave, 1);
    EXPECT_NE(mHandle->Master, nullptr);
}

TEST_F(OuterHandleTest, TypedCallsReachTheAppletUnchanged) {
    const unsigned value = 99;
    EXPECT_EQ(Fg_setParameterWithType(mHandle, 100, &value, 7, 4), 11);
    EXPECT_EQ(mCalls->id, 100);
    EXPECT_EQ(mCalls->dmaIndex, 7u);
    EXPECT_EQ(mCalls->type, 4);
    EXPECT_EQ(mCalls->value, 99u);
}

TEST_F(OuterHandleTest, UntypedCallsReachTheTypedExports) {
    unsigned value = 5;
    EXPECT_EQ(Fg_setParameter(mHandle, 200, &value, 1), 11);
    EXPECT_EQ(mCalls->last, "Fg_setParameterWithType");
    EXPECT_EQ(mCalls->type, 2);
    EXPECT_EQ(Fg_getParameter(mHandle, 200, &value, 1), 12);
    EXPECT_EQ(value, 4711u);
    std::uint8_t picture = 0;
    void* pointer = &picture;
    dma_mem* memory = Fg_CreateImageMemory(mHandle, &pointer, 1, 1);
    EXPECT_EQ(Fg_AcquireEx(mHandle, 1, 4, 8, memory), 15);
    EXPECT_EQ(mCalls->memory, memory);
    EXPECT_EQ(mCalls->type, 8);
    EXPECT_EQ(Fg_Acquire(mHandle, 1, 3), 15);
    EXPECT_EQ(mCalls->id, 3);
    EXPECT_EQ(mCalls->memory, nullptr);
    EXPECT_EQ(Fg_stopAcquire(mHandle, 1), 16);
    EXPECT_EQ(mCalls->last, "Fg_stopAcquireEx");
}

TEST_F(OuterHandleTest, OtherCallsReachTheExportOfTheirName) {
    EXPECT_EQ(Fg_getParameterIdByName(mHandle, "FG_WIDTH"), 13);
    EXPECT_EQ(Fg_getLastErrorNumber(mHandle), -14);
    EXPECT_EQ(Fg_saveConfig(mHandle, "file.mcf"), 17);
    EXPECT_EQ(Shad_GetMaxLine(mHandle, nullptr), 18);
}

TEST_F(OuterHandleTest, ExportsThatAnAppletLacksAreNotAvailable) {
    EXPECT_EQ(Fg_loadConfig(mHandle, "file.mcf"), code::notAvailable);
    EXPECT_EQ(Fg_getParameterInfo(mHandle, 0), nullptr);
    EXPECT_EQ(Fg_getLastPicNumberEx(mHandle, 0, nullptr), code::notAvailable);
}

TEST_F(OuterHandleTest, RoutedCallsAreRecordedAsSuchAndNotMadeToFail) {
    const unsigned value = 1;
    hostCalls().failFrom(CallKind::write, 1, -99);
    hostCalls().record(true);
    EXPECT_EQ(Fg_setParameterWithType(mHandle, 100, &value, 0, 2), 11);
    const std::vector<Call> calls = hostCalls().calls();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].kind, CallKind::routed);
    EXPECT_EQ(calls[0].function, "Fg_setParameterWithType");
}

TEST_F(OuterHandleTest, ReleaseGoesThroughTheAppletAndClosesIt) {
    EXPECT_EQ(Fg_FreeGrabber(mHandle), -5) << "the applet's answer";
    EXPECT_FALSE(isLoaded(applet("FakeApplet")));
    EXPECT_EQ(Fg_FreeGrabber(mHandle), code::noHandle);
    EXPECT_EQ(Fg_AppletLibrary(mHandle), nullptr);
}

int refusedWith(const std::string& file, unsigned board = 0) {
    int error = 1;
    EXPECT_EQ(Fg_OpenBoard(file.c_str(), board, 0, &error), nullptr);
    EXPECT_FALSE(isLoaded(file));
    return error;
}

TEST(OpenBoardTest, FailuresLeaveNothingBehind) {
    EXPECT_EQ(refusedWith(applet("FakeAppletRefusing")), -77);
    EXPECT_EQ(refusedWith(applet("FakeAppletSilent")), kavo::error::initialisationFailed);
    EXPECT_EQ(refusedWith(applet("FakeAppletThrowing")), code::appletThrew);
    EXPECT_EQ(refusedWith(applet("FakeAppletMissing")), code::noApplet);
    EXPECT_EQ(refusedWith(applet("FakeApplet"), 16), code::noBoard);
    EXPECT_EQ(Fg_OpenBoard(nullptr, 0, 0, nullptr), nullptr);
}

TEST(OpenBoardTest, LibraryThatIsNoAppletIsRefused) {
    int error = 0;
    EXPECT_EQ(Fg_OpenBoard("libqelrt.so", 0, 0, &error), nullptr);
    EXPECT_EQ(error, code::noApplet);
}

} // namespace
} // namespace simulator
