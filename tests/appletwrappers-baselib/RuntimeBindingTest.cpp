// Binding the runtime by name and opening the inner handle.

#include "platform/ErrorCodes.h"
#include "simulator/HostCalls.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"
#include "tests/support/LibraryCalls.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace error = kavo::error;
using kavo::test::BareWrapper;
using kavo::test::libraryCalls;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr const char* runtime = "libgrabcore5.so";

class RuntimeBinding : public testing::Test {
  protected:
    RuntimeBinding() {
        hostCalls().reset();
        libraryCalls().clear();
    }
    ~RuntimeBinding() override {
        if (wrapper != nullptr && wrapper->grabcoreFg() != nullptr) {
            hostCalls().reset();
            Fg_Struct handle{static_cast<FgQxWrapper*>(wrapper.release())};
            Fg_FreeGrabber(&handle);
        }
        hostCalls().reset();
        kavo::test::librariesAreMissing() = false;
    }

    int open(bool slave = false) { return wrapper->runFgInit("a design", device, design, slave); }
    void bindAndLoad() {
        ASSERT_EQ(wrapper->initializeDllFunctions(runtime), 0);
        design = kavo::test::loadSmallDesign();
        ASSERT_NE(design, nullptr);
        hostCalls().record(true);
    }
    /// Gives the design to the wrapper, which unloads it.
    void handOver() { wrapper->initHandles(device, design); }
    static std::vector<simulator::Call> openings() { return hostCalls().calls(CallKind::initialisation); }

    QXdevice* device = simulator::Board::at(0).device();
    fpga_design* design = nullptr;
    std::unique_ptr<BareWrapper> wrapper = std::make_unique<BareWrapper>();
};

} // namespace

TEST_F(RuntimeBinding, ANewWrapperHasNothing) {
    EXPECT_EQ(wrapper->grabcoreFg(), nullptr);
    EXPECT_EQ(wrapper->boardHandle(), nullptr);
    EXPECT_EQ(wrapper->designHandle(), nullptr);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
    EXPECT_EQ(wrapper->Fg_getParameterInfo(0), nullptr);
}

TEST_F(RuntimeBinding, LooksEveryFunctionUpInOrder) {
    EXPECT_EQ(wrapper->initializeDllFunctions(runtime), 0);
    std::vector<std::string> expected{"open libgrabcore5.so " + std::to_string(RTLD_NOW)};
    for (const char* name : {"Fg_getAppletId",
                             "Fg_setParameter",
                             "Fg_setParameterWithType",
                             "Fg_getParameter",
                             "Fg_getParameterWithType",
                             "Fg_saveConfig",
                             "Fg_loadConfig",
                             "Fg_Acquire",
                             "Fg_stopAcquire",
                             "Fg_getLastPicNumberBlockingEx",
                             "Fg_getLastPicNumberEx",
                             "Fg_FreeGrabber",
                             "Fg_getLastErrorNumber",
                             "Fg_getStatusEx",
                             "Fg_AcquireEx",
                             "Fg_stopAcquireEx",
                             "Fg_getParameterInfo",
                             "Fg_AllocShading",
                             "Fg_FreeShading",
                             "Shad_SetSubValueLine",
                             "Shad_SetMultValueLine",
                             "Shad_SetFixedPatternNoiseLine",
                             "Shad_GetMaxLine",
                             "Shad_GetAccess",
                             "Shad_FreeAccess",
                             "Shad_WriteActLine",
                             "Fg_getParameterIdByName"}) {
        expected.push_back("symbol " + std::string(name));
    }
    EXPECT_EQ(libraryCalls(), expected);
    libraryCalls().clear();
    open();
    EXPECT_EQ(libraryCalls(),
              (std::vector<std::string>{"symbol Fg_InitHandleSlaveAware", "symbol Fg_InitHandle",
                                        "symbol Fg_getLastErrorNumber"}));
}

TEST_F(RuntimeBinding, BindsEachFunctionUnderItsOwnName) {
    ASSERT_EQ(wrapper->initializeDllFunctions(runtime), 0);
    void* library = dlopen(runtime, RTLD_NOW);
#define X(name) EXPECT_EQ(reinterpret_cast<void*>(wrapper->wrapperFg().DLL_##name), dlsym(library, #name));
    KAVO_BOUND_FUNCTIONS(X)
#undef X
    dlclose(library);
}

TEST_F(RuntimeBinding, AMissingLibraryIsReportedAndStored) {
    EXPECT_EQ(wrapper->initializeDllFunctions("libthatisnowhere.so"), error::runtimeMissing);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), error::runtimeMissing);
    EXPECT_EQ(libraryCalls().size(), 1U);
    wrapper.reset();
    EXPECT_EQ(libraryCalls().size(), 1U) << "what was not opened is not closed";
}

TEST_F(RuntimeBinding, AMissingSymbolIsNoError) {
    hostCalls().lackSymbol("Fg_AcquireEx");
    EXPECT_EQ(wrapper->initializeDllFunctions(runtime), 0);
    EXPECT_EQ(wrapper->wrapperFg().DLL_Fg_AcquireEx, nullptr);
    EXPECT_NE(wrapper->wrapperFg().DLL_Fg_stopAcquireEx, nullptr);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0);
}

TEST_F(RuntimeBinding, OpensTheInnerHandleWithTheSlaveFlag) {
    for (const bool slave : {false, true}) {
        wrapper = std::make_unique<BareWrapper>();
        bindAndLoad();
        EXPECT_EQ(open(slave), 0);
        ASSERT_EQ(openings().size(), 1U);
        EXPECT_EQ(openings().front().function, "Fg_InitHandleSlaveAware");
        EXPECT_EQ(openings().front().name, "a design");
        EXPECT_EQ(openings().front().id, slave ? 1 : 0);
        EXPECT_NE(wrapper->grabcoreFg(), nullptr);
        handOver();
        Fg_Struct handle{static_cast<FgQxWrapper*>(wrapper.release())};
        EXPECT_EQ(Fg_FreeGrabber(&handle), 0);
        hostCalls().reset();
    }
}

TEST_F(RuntimeBinding, WithoutTheSlaveAwareFunctionThePlainOneServesSlavesToo) {
    hostCalls().lackSymbol("Fg_InitHandleSlaveAware");
    bindAndLoad();
    EXPECT_EQ(open(true), 0);
    ASSERT_EQ(openings().size(), 1U);
    EXPECT_EQ(openings().front().function, "Fg_InitHandle");
    EXPECT_EQ(openings().front().name, "a design");
    EXPECT_NE(wrapper->grabcoreFg(), nullptr);
    handOver();
}

TEST_F(RuntimeBinding, ThePlainFunctionIsNotAskedForBesideTheSlaveAwareOne) {
    hostCalls().lackSymbol("Fg_InitHandle");
    bindAndLoad();
    EXPECT_EQ(open(), 0);
    EXPECT_EQ(openings().front().function, "Fg_InitHandleSlaveAware");
    handOver();
}

TEST_F(RuntimeBinding, WithoutAnyInitialisationFunctionTheRuntimeIsMissing) {
    hostCalls().lackSymbol("Fg_InitHandleSlaveAware");
    hostCalls().lackSymbol("Fg_InitHandle");
    bindAndLoad();
    EXPECT_EQ(open(), error::runtimeMissing);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), error::runtimeMissing);
    EXPECT_EQ(wrapper->grabcoreFg(), nullptr);
    handOver();
}

TEST_F(RuntimeBinding, NoHandleGivesTheRuntimesLastErrorWithoutHandle) {
    bindAndLoad();
    hostCalls().failOnce(CallKind::initialisation, 1, -4242);
    EXPECT_EQ(open(), -4242);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), -4242);
    EXPECT_EQ(wrapper->grabcoreFg(), nullptr);
    ASSERT_EQ(hostCalls().calls(CallKind::lastError).size(), 1U);
    handOver();
}

TEST_F(RuntimeBinding, NoHandleAndNoLastErrorFunctionGivesMinusHundred) {
    hostCalls().lackSymbol("Fg_getLastErrorNumber");
    bindAndLoad();
    hostCalls().failOnce(CallKind::initialisation, 1, -4242);
    EXPECT_EQ(open(), error::initialisationFailed);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), error::initialisationFailed);
    handOver();
}

TEST_F(RuntimeBinding, TheLatestSuccessIsRememberedForTheWholeProcess) {
    bindAndLoad();
    ASSERT_EQ(open(), 0);
    EXPECT_EQ(FgQxWrapper::accessDeviceHandle(nullptr), device);
    EXPECT_EQ(FgQxWrapper::accessDesignHandle(nullptr), design);
    handOver();

    BareWrapper second;
    ASSERT_EQ(second.initializeDllFunctions(runtime), 0);
    hostCalls().failOnce(CallKind::initialisation, 1, -1);
    QXdevice* otherDevice = simulator::Board::at(1).device();
    EXPECT_EQ(second.runFgInit("a design", otherDevice, design, false), -1);
    EXPECT_EQ(FgQxWrapper::accessDeviceHandle(nullptr), device) << "a failure is not remembered";
}

TEST_F(RuntimeBinding, RememberedHandlesAreReplacedByOthersOnly) {
    QXdevice* other = simulator::Board::at(2).device();
    EXPECT_EQ(FgQxWrapper::accessDeviceHandle(other), other);
    EXPECT_EQ(FgQxWrapper::accessDeviceHandle(nullptr), other);
    auto* otherDesign = reinterpret_cast<fpga_design*>(other);
    EXPECT_EQ(FgQxWrapper::accessDesignHandle(otherDesign), otherDesign);
    EXPECT_EQ(FgQxWrapper::accessDesignHandle(nullptr), otherDesign);
}

TEST_F(RuntimeBinding, HandlesAreStoredAndTheDesignIsUnloadedBehindTheLibrary) {
    bindAndLoad();
    handOver();
    EXPECT_EQ(wrapper->boardHandle(), device);
    EXPECT_EQ(wrapper->designHandle(), design);
    libraryCalls().clear();
    wrapper.reset();
    EXPECT_EQ(libraryCalls(), std::vector<std::string>{"close"});
    EXPECT_EQ(hostCalls().calls(CallKind::designUnload).size(), 1U);
}

TEST_F(RuntimeBinding, WithoutDesignNothingIsUnloaded) {
    ASSERT_EQ(wrapper->initializeDllFunctions(runtime), 0);
    hostCalls().record(true);
    wrapper.reset();
    EXPECT_EQ(hostCalls().calls(CallKind::designUnload).size(), 0U);
}

TEST_F(RuntimeBinding, TheRuntimesLastErrorNeedsFunctionAndHandle) {
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberQx(), error::notAvailable);
    bindAndLoad();
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberQx(), error::notAvailable);
    ASSERT_EQ(open(), 0);
    handOver();
    hostCalls().failOnce(CallKind::read, 1, -31);
    std::uint32_t word = 0;
    EXPECT_EQ(wrapper->getUnwrappedParameter(600, &word, 0), -31);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumberQx(), -31);
    EXPECT_EQ(wrapper->Fg_getLastErrorNumber(), 0) << "the wrapper's own last error is another";
}

TEST_F(RuntimeBinding, CallsOnTheInnerHandleNeedTheirFunctionAndIt) {
    for (const bool hasFunctions : {false, true}) {
        ASSERT_TRUE(!hasFunctions || wrapper->initializeDllFunctions(runtime) == 0);
        std::uint32_t word = 0;
        EXPECT_EQ(wrapper->getUnwrappedParameter(600, &word, 0), error::notAvailable);
        EXPECT_EQ(wrapper->setUnwrappedParameter(600, &word, 0), error::notAvailable);
        EXPECT_EQ(wrapper->getParameterIdByName("FG_TIMEOUT"), error::notAvailable);
        EXPECT_EQ(wrapper->getUnwrappedParameterInfo(), nullptr);
    }
}

TEST_F(RuntimeBinding, CallsOnTheInnerHandlePassIdValueAndPort) {
    bindAndLoad();
    ASSERT_EQ(open(), 0);
    handOver();
    std::uint32_t word = 4711;
    hostCalls().clear();
    EXPECT_EQ(wrapper->setUnwrappedParameter(600, &word, 1), 0);
    const auto writes = hostCalls().calls(CallKind::write);
    ASSERT_EQ(writes.size(), 1U);
    EXPECT_EQ(writes.front().function, "Fg_setParameter");
    EXPECT_EQ(writes.front().id, 600);
    EXPECT_EQ(writes.front().dmaIndex, 1U);
    EXPECT_EQ(writes.front().values, std::vector<std::uint32_t>{4711});
    word = 0;
    EXPECT_EQ(wrapper->getUnwrappedParameter(600, &word, 1), 0);
    EXPECT_EQ(word, 4711U);
    EXPECT_EQ(hostCalls().calls(CallKind::read).front().function, "Fg_getParameter");
    EXPECT_EQ(wrapper->getParameterIdByName("FG_TIMEOUT"), 600);
    EXPECT_NE(wrapper->getUnwrappedParameterInfo(), nullptr);
    EXPECT_EQ(hostCalls().calls(CallKind::parameterTree).front().id, 0);
}
