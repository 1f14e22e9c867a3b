#include "tests/applet/SetterFaults.h"

// The camera's line, the network packets of its two links, and the time-out.

class CameraInput : public OnBothPorts {
  protected:
    std::vector<RecordedWrite> linkWrites(unsigned lineLength, unsigned pixelFormat) {
        return {processWrite(port(), "LAG_MTUSizeCam0_LineLength", lineLength),
                processWrite(port(), "LAG_MTUSizeCam1_LineLength", lineLength),
                processWrite(port(), "Camera0_PixelFormat", pixelFormat),
                processWrite(port(), "Camera1_PixelFormat", pixelFormat)};
    }

    void expectRefused(int id, unsigned value, int code) {
        SCOPED_TRACE(value);
        const unsigned before = applet.get(id, port());
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(id, value, port()), code);
        EXPECT_EQ(applet.lastError(), code);
        EXPECT_EQ(applet.get(id, port()), before);
        EXPECT_TRUE(AppletOnBoard::writes().empty());
    }
};
FOR_BOTH_PORTS(CameraInput);

TEST_P(CameraInput, CameraWidthIsWrittenToTheLink) {
    for (const unsigned value : {16U, 32U, 2048U, 4096U}) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_CAMERA_WIDTH, value, port()), 0);
        const std::vector<RecordedWrite> expected{processWrite(port(), "LAG_CameraWidth_LineLength", value)};
        EXPECT_EQ(AppletOnBoard::writes(), expected);
        EXPECT_EQ(applet.get(FG_CAMERA_WIDTH, port()), value);
        EXPECT_EQ(applet.get(FG_CAMERA_WIDTH, otherPort()), 1024U);
    }
}

TEST_P(CameraInput, CameraWidthKeepsToItsRangeAndStep) {
    for (const unsigned value : {0U, 8U, 15U, 4097U, 4112U, 0xFFFFFFF0U}) {
        expectRefused(FG_CAMERA_WIDTH, value, -6000);
    }
    for (const unsigned value : {17U, 24U, 4095U}) {
        expectRefused(FG_CAMERA_WIDTH, value, -7080);
    }
    // It is the sensor's line: the region of interest has no say.
    ASSERT_EQ(applet.set(FG_WIDTH, 2048U, port()), 0);
    EXPECT_EQ(applet.set(FG_CAMERA_WIDTH, 16U, port()), 0);
}

TEST_P(CameraInput, MtuSizeGivesBothLinksTheirLineLength) {
    struct {
        unsigned type, mtu, lineLength;
    } const cases[] = {
        {0, 44, 8}, {0, 52, 16},     {0, 1500, 1464}, {0, 8196, 8160}, {0, 9036, 9000}, {4, 44, 4},
        {4, 52, 8}, {4, 8196, 4080}, {4, 9036, 4500}, {1, 1500, 732},  {2, 7204, 3584}, {6, 1500, 732},
    };
    for (const auto& [type, mtu, lineLength] : cases) {
        SCOPED_TRACE(mtu);
        ASSERT_EQ(applet.set(FG_GBE_CAMTYPE, type, port()), 0);
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_MTU_SIZE, mtu, port()), 0);
        EXPECT_EQ(AppletOnBoard::writes(), linkWrites(lineLength, type));
        EXPECT_EQ(applet.get(FG_MTU_SIZE, port()), mtu);
        EXPECT_EQ(applet.get(FG_MTU_SIZE, otherPort()), 7204U);
    }
}

TEST_P(CameraInput, MtuSizeKeepsToItsRangeAndStep) {
    for (const unsigned value : {0U, 36U, 40U, 43U, 9037U, 9040U, 9044U, 0xFFFFFFFCU}) {
        expectRefused(FG_MTU_SIZE, value, -6000);
    }
    // Every second value of the grid that the description shows is refused as well.
    for (const unsigned value : {45U, 48U, 1496U, 1498U, 9032U, 9035U}) {
        expectRefused(FG_MTU_SIZE, value, -7080);
    }
    EXPECT_EQ(applet.record(FG_MTU_SIZE, port())->u.uiReg.steps, 4U);
}

TEST_P(CameraInput, EveryMtuSizeOfTheGridFitsEveryCameraType) {
    for (const unsigned type : {0U, 1U, 2U, 4U, 6U}) {
        ASSERT_EQ(applet.set(FG_GBE_CAMTYPE, type, port()), 0);
        for (unsigned mtu = 44; mtu <= 9036; mtu += 8) {
            ASSERT_EQ(applet.set(FG_MTU_SIZE, mtu, port()), 0) << mtu << " with type " << type;
        }
    }
}

TEST_P(CameraInput, EveryCameraTypeButTheFirstTakesTwoBytesAPixel) {
    ASSERT_EQ(applet.set(FG_MTU_SIZE, 8196U, port()), 0);
    for (const unsigned type : {6U, 4U, 2U, 1U, 0U}) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_GBE_CAMTYPE, type, port()), 0);
        EXPECT_EQ(AppletOnBoard::writes(), linkWrites(type == 0 ? 8160 : 4080, type));
        EXPECT_EQ(applet.get(FG_GBE_CAMTYPE, port()), type);
        EXPECT_EQ(applet.get(FG_GBE_CAMTYPE, otherPort()), 0U);
    }
    for (const unsigned value : {3U, 5U, 7U, 0xFFFFFFFFU}) {
        expectRefused(FG_GBE_CAMTYPE, value, -6000);
    }
}

TEST_P(CameraInput, AFailedWriteLeavesTheParameterAsItWas) {
    expectEachFailedWriteToBeUndone(applet, FG_MTU_SIZE, port(), 1500U, 8196U, 4);
    expectEachFailedWriteToBeUndone(applet, FG_GBE_CAMTYPE, port(), 0U, 6U, 4);
    expectEachFailedWriteToBeUndone(applet, FG_CAMERA_WIDTH, port(), 1024U, 2048U, 1);
    expectEachFailedWriteToBeUndone(applet, FG_SWAP_CHANNELS, port(), 1U, 0U, 1);
    expectEachFailedWriteToBeUndone(applet, FG_TIMEOUT, port(), 7U, 8U, 1);
}

TEST_P(CameraInput, LinkLineMustBeAMultipleOfFourPixels) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    const auto set =
        port() == 0 ? &FgQxWrapperImpl::setCameraAndMTUSize_P0 : &FgQxWrapperImpl::setCameraAndMTUSize_P1;
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(48, 4); }), -7080);
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    // Only the halved length is judged.
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(46, 0); }), 0);
    EXPECT_EQ(AppletOnBoard::writes(), linkWrites(10, 0));
    AppletOnBoard::forgetCalls();
    AppletOnBoard::failWrite(3, runtimeFailure);
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(60, 2); }), runtimeFailure);
    EXPECT_EQ(AppletOnBoard::writes().size(), 3U);
}

TEST_P(CameraInput, SwapActsOnTheSwapRegisterAlone) {
    for (const unsigned value : {0U, 1U}) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_SWAP_CHANNELS, value, port()), 0);
        const std::vector<RecordedWrite> expected{processWrite(port(), "LAG_Swap_Swap_Value", value)};
        EXPECT_EQ(AppletOnBoard::writes(), expected);
        EXPECT_EQ(applet.get(FG_SWAP_CHANNELS, port()), value);
        EXPECT_EQ(applet.get(FG_SWAP_CHANNELS, otherPort()), 1U);
    }
    expectRefused(FG_SWAP_CHANNELS, 2, -6000);
    expectRefused(FG_SWAP_CHANNELS, 0xFFFFFFFF, -6000);
}

TEST_P(CameraInput, TimeoutGoesToTheRuntimeForTheChannelOfThePort) {
    for (const unsigned value : {2U, 5U, 2147483646U}) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_TIMEOUT, value, port()), 0);
        const std::vector<RecordedWrite> expected{{"FG_TIMEOUT", value, static_cast<unsigned>(port()), 0}};
        EXPECT_EQ(AppletOnBoard::writes(), expected);
        const auto calls = simulator::hostCalls().calls(simulator::CallKind::write);
        EXPECT_EQ(calls.at(0).function, "Fg_setParameter");
        EXPECT_EQ(calls.at(0).id, 600);
        EXPECT_EQ(applet.get(FG_TIMEOUT, port()), value);
        EXPECT_EQ(applet.get(FG_TIMEOUT, otherPort()), 1000000U);
    }
    for (const unsigned value : {0U, 1U, 2147483647U, 2147483648U, 0xFFFFFFFFU}) {
        expectRefused(FG_TIMEOUT, value, -6000);
    }
}
