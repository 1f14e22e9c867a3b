#include "tests/support/AppletOnBoard.h"

using ImageGeometry = OnBothPorts;
FOR_BOTH_PORTS(ImageGeometry);

TEST_P(ImageGeometry, WidthIsWrittenToBothHalvesOfTheFrameMemory) {
    ASSERT_EQ(applet.creationError(), 0);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_WIDTH, 512U, port()), 0);
    const auto dma = static_cast<unsigned>(port());
    const std::vector<RecordedWrite> expected{
        {AppletOnBoard::process(port(), "Buffer_0_DRAM_A_0_XLength"), 512, dma, 2},
        {AppletOnBoard::process(port(), "Buffer_0_DRAM_A_1_XLength"), 512, dma, 2}};
    EXPECT_EQ(AppletOnBoard::writes(), expected);
    EXPECT_EQ(applet.get(FG_WIDTH, port()), 512U);
    EXPECT_EQ(applet.record(FG_XOFFSET, port())->u.uiReg.to, 3584U);
}
