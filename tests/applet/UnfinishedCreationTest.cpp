// An applet whose creation did not come to its end, or is repeated.

#include "platform/DesignRuntime.h"
#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/LibraryCalls.h"

#include <new>

namespace error = kavo::error;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr const char* runtime = "libgrabcore5.so";

class UnfinishedCreation : public kavo::test::OnFreshBoard {
  protected:
    ~UnfinishedCreation() override { kavo::test::replacedSymbols().clear(); }

    static int refuseToLookUp(Fg_Struct*, const char*) { throw std::bad_alloc(); }

    template <class Call>
    static int codeOf(Call call) {
        try {
            call();
        } catch (int code) {
            return code;
        }
        return error::ok;
    }
};

} // namespace

TEST_F(UnfinishedCreation, WithoutInnerHandleNoDesignParameterIsAvailable) {
    FgQxWrapperImpl wrapper;
    std::uint32_t value = 0;
    for (const bool hasFunctions : {false, true}) {
        ASSERT_TRUE(!hasFunctions || wrapper.initializeDllFunctions(runtime) == error::ok);
        EXPECT_EQ(codeOf([&] { wrapper.set_sdk_param_FG_FORMAT_P0(1, true); }), error::notAvailable);
        EXPECT_EQ(codeOf([&] {
                      wrapper.get_qx_param_Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status(
                          &value, 0, 2, true);
                  }),
                  error::notAvailable);
    }
}

TEST_F(UnfinishedCreation, WithoutDescriptionsParametersAreSetAllTheSame) {
    FgQxWrapperImpl wrapper;
    QXdevice* device = board().device();
    fpga_design* design = QelLoadDesignFromBuffer(rawQelData, rawQelDataSize, 1);
    ASSERT_EQ(wrapper.initializeDllFunctions(runtime), error::ok);
    ASSERT_EQ(wrapper.runFgInit("test", device, design, true), error::ok);
    wrapper.initHandles(device, design);
    wrapper.retrieveIds();
    unsigned read = 0;
    EXPECT_NO_THROW(wrapper.set_sdk_param_FG_WIDTH_P0(512, true));
    EXPECT_NO_THROW(wrapper.get_sdk_param_FG_WIDTH_P0(&read));
    EXPECT_EQ(read, 512U);
    EXPECT_NO_THROW(wrapper.set_sdk_param_FG_TRIGGERIN_DOWNSCALE_P1(4, true));
    EXPECT_NO_THROW(wrapper.set_sdk_param_FG_TRIGGERIN_DOWNSCALE_PHASE_P1(3, true));
    EXPECT_NO_THROW(wrapper.set_sdk_param_FG_TRIGGERSTATE_P1(1, true));
    EXPECT_EQ(wrapper.description(0, FG_WIDTH), nullptr);
    wrapper.wrapperFg().DLL_Fg_FreeGrabber(wrapper.grabcoreFg());
}

TEST_F(UnfinishedCreation, OnlyDescribedParametersOfThePortsAreFound) {
    AppletOnBoard applet;
    EXPECT_NE(applet.wrapper().description(1, FG_WIDTH), nullptr);
    EXPECT_EQ(applet.wrapper().description(1, FG_DMA_PORT), nullptr);
    EXPECT_EQ(applet.wrapper().description(2, FG_WIDTH), nullptr);
}

TEST_F(UnfinishedCreation, AFinishedRegistryTakesNoMoreDescriptions) {
    AppletOnBoard applet;
    RegisterInfo* first = Fg_getParameterInfo(applet.handle(), 0);
    RegisterInfo* width = applet.wrapper().description(0, FG_WIDTH);
    for (const int port : {0, 1}) {
        applet.wrapper().parameterInfo().finalize(port);
    }
    static_cast<FgQxWrapper&>(applet.wrapper()).createUserParameters();
    EXPECT_EQ(Fg_getParameterInfo(applet.handle(), 0), first);
    EXPECT_EQ(applet.wrapper().description(0, FG_WIDTH), width);
}

TEST_F(UnfinishedCreation, ARuntimeThatCannotFreeIsNotAskedToWhenAnExceptionEndsIt) {
    kavo::test::replacedSymbols()["Fg_getParameterIdByName"] = reinterpret_cast<void*>(&refuseToLookUp);
    hostCalls().record(true);
    EXPECT_THROW(Std_entry(board().device(), nullptr, 0), std::bad_alloc);
    EXPECT_EQ(hostCalls().calls(CallKind::release).size(), 1U);
    hostCalls().clear();
    kavo::test::replacedSymbols()["Fg_FreeGrabber"] = nullptr;
    EXPECT_THROW(Std_entry(board().device(), nullptr, 0), std::bad_alloc);
    EXPECT_TRUE(hostCalls().calls(CallKind::release).empty());
    EXPECT_EQ(hostCalls().calls(CallKind::designUnload).size(), 1U);
}
