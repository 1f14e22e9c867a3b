#include "tests/applet/SetterFaults.h"

// The region of interest: width and x offset share a side of the frame memory, height and y offset the other.

namespace {

struct Side {
    int id;
    const char* half0;
    const char* half1;
    /// The parameter on the same side, whose largest value follows.
    int sharer;
    unsigned value;
};

constexpr Side sides[] = {
    {FG_WIDTH, "Buffer_0_DRAM_A_0_XLength", "Buffer_0_DRAM_A_1_XLength", FG_XOFFSET, 512},
    {FG_HEIGHT, "Buffer_0_DRAM_A_0_YLength", "Buffer_0_DRAM_A_1_YLength", FG_YOFFSET, 333},
    {FG_XOFFSET, "Buffer_0_DRAM_A_0_XOffset", "Buffer_0_DRAM_A_1_XOffset", FG_WIDTH, 2048},
    {FG_YOFFSET, "Buffer_0_DRAM_A_0_YOffset", "Buffer_0_DRAM_A_1_YOffset", FG_HEIGHT, 777},
};

/// What is set when the parameter on the same side has a certain value.
struct Attempt {
    int sharer;
    unsigned sharersValue;
    int id;
    unsigned value;
    int code;
};

std::ostream& operator<<(std::ostream& out, const Attempt& attempt) {
    return out << attempt.id << " <- " << attempt.value << " beside " << attempt.sharer << " = "
               << attempt.sharersValue;
}

const Attempt attempts[] = {
    {FG_XOFFSET, 0, FG_WIDTH, 0, -6000},
    {FG_XOFFSET, 0, FG_WIDTH, 8, -6000}, // the range is judged before the step
    {FG_XOFFSET, 0, FG_WIDTH, 15, -6000},
    {FG_XOFFSET, 0, FG_WIDTH, 16, 0},
    {FG_XOFFSET, 0, FG_WIDTH, 17, -7080},
    {FG_XOFFSET, 0, FG_WIDTH, 4080, 0},
    {FG_XOFFSET, 0, FG_WIDTH, 4095, -7080},
    {FG_XOFFSET, 0, FG_WIDTH, 4096, 0},
    {FG_XOFFSET, 0, FG_WIDTH, 4097, -6000},
    {FG_XOFFSET, 0, FG_WIDTH, 4112, -6000},
    {FG_XOFFSET, 0, FG_WIDTH, 0xFFFFFFF0, -6000},
    {FG_XOFFSET, 16, FG_WIDTH, 4080, 0},
    {FG_XOFFSET, 16, FG_WIDTH, 4081, -6000},
    {FG_XOFFSET, 16, FG_WIDTH, 4096, -6000},
    {FG_XOFFSET, 3072, FG_WIDTH, 1024, 0},
    {FG_XOFFSET, 3072, FG_WIDTH, 1040, -6000},

    {FG_WIDTH, 16, FG_XOFFSET, 0, 0},
    {FG_WIDTH, 16, FG_XOFFSET, 8, -7080},
    {FG_WIDTH, 16, FG_XOFFSET, 4079, -7080},
    {FG_WIDTH, 16, FG_XOFFSET, 4080, 0},
    {FG_WIDTH, 16, FG_XOFFSET, 4081, -6000},
    {FG_WIDTH, 16, FG_XOFFSET, 4096, -6000},
    {FG_WIDTH, 1024, FG_XOFFSET, 3072, 0},
    {FG_WIDTH, 1024, FG_XOFFSET, 3088, -6000},
    {FG_WIDTH, 4096, FG_XOFFSET, 0, 0},
    {FG_WIDTH, 4096, FG_XOFFSET, 16, -6000},
    {FG_WIDTH, 4096, FG_XOFFSET, 0xFFFFFFF0, -6000},

    {FG_YOFFSET, 0, FG_HEIGHT, 0, -6000},
    {FG_YOFFSET, 0, FG_HEIGHT, 1, -6000},
    {FG_YOFFSET, 0, FG_HEIGHT, 2, 0},
    {FG_YOFFSET, 0, FG_HEIGHT, 3, 0},
    {FG_YOFFSET, 0, FG_HEIGHT, 4095, 0},
    {FG_YOFFSET, 0, FG_HEIGHT, 4096, 0},
    {FG_YOFFSET, 0, FG_HEIGHT, 4097, -6000},
    {FG_YOFFSET, 0, FG_HEIGHT, 0xFFFFFFFF, -6000},
    {FG_YOFFSET, 1, FG_HEIGHT, 4095, 0},
    {FG_YOFFSET, 1, FG_HEIGHT, 4096, -6000},

    {FG_HEIGHT, 2, FG_YOFFSET, 1, 0},
    {FG_HEIGHT, 2, FG_YOFFSET, 4094, 0},
    {FG_HEIGHT, 2, FG_YOFFSET, 4095, -6000},
    {FG_HEIGHT, 4096, FG_YOFFSET, 0, 0},
    {FG_HEIGHT, 4096, FG_YOFFSET, 1, -6000},
    {FG_HEIGHT, 4096, FG_YOFFSET, 0xFFFFFFFF, -6000},
};

} // namespace

class ImageGeometry : public OnBothPorts {
  protected:
    void SetUp() override {
        for (const int offset : {FG_XOFFSET, FG_YOFFSET}) {
            ASSERT_EQ(applet.set(offset, 0U, port()), 0);
        }
        ASSERT_EQ(applet.set(FG_WIDTH, 16U, port()), 0);
        ASSERT_EQ(applet.set(FG_HEIGHT, 2U, port()), 0);
    }

    unsigned largest(int id) { return applet.record(id, port())->u.uiReg.to; }
};
FOR_BOTH_PORTS(ImageGeometry);

TEST_P(ImageGeometry, IsWrittenToBothHalvesOfTheFrameMemory) {
    for (const Side& side : sides) {
        SCOPED_TRACE(side.half0);
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(side.id, side.value, port()), 0);
        EXPECT_EQ(applet.lastError(), 0);
        const std::vector<RecordedWrite> expected{processWrite(port(), side.half0, side.value),
                                                  processWrite(port(), side.half1, side.value)};
        EXPECT_EQ(AppletOnBoard::writes(), expected);
        EXPECT_EQ(applet.get(side.id, port()), side.value);
        EXPECT_NE(applet.get(side.id, otherPort()), side.value);
    }
}

TEST_P(ImageGeometry, IsNeverReadBack) {
    for (const Side& side : sides) {
        ASSERT_EQ(applet.set(side.id, side.value, port()), 0);
        applet.board().setDesignValue(AppletOnBoard::process(port(), side.half0), 48);
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.get(side.id, port()), side.value);
        EXPECT_TRUE(AppletOnBoard::reads().empty());
    }
}

TEST_P(ImageGeometry, LimitsTheParameterOnTheSameSide) {
    for (const Side& side : sides) {
        SCOPED_TRACE(side.half0);
        const unsigned othersLargest = applet.record(side.sharer, otherPort())->u.uiReg.to;
        ASSERT_EQ(applet.set(side.id, side.value, port()), 0);
        EXPECT_EQ(largest(side.sharer), 4096 - side.value);
        EXPECT_EQ(applet.record(side.sharer, otherPort())->u.uiReg.to, othersLargest);
    }
}

TEST_P(ImageGeometry, AcceptsWhatFitsTheFrameMemoryOnItsGrid) {
    for (const Attempt& attempt : attempts) {
        SCOPED_TRACE(testing::PrintToString(attempt));
        AppletOnBoard fresh;
        // The smallest lengths leave room for any offset.
        ASSERT_EQ(fresh.set(FG_WIDTH, 16U, port()), 0);
        ASSERT_EQ(fresh.set(FG_HEIGHT, 2U, port()), 0);
        ASSERT_EQ(fresh.set(attempt.sharer, attempt.sharersValue, port()), 0);
        const unsigned before = fresh.get(attempt.id, port());
        const unsigned sharersLargest = fresh.record(attempt.sharer, port())->u.uiReg.to;
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(fresh.set(attempt.id, attempt.value, port()), attempt.code);
        EXPECT_EQ(fresh.lastError(), attempt.code);
        const bool isAccepted = attempt.code == 0;
        EXPECT_EQ(fresh.get(attempt.id, port()), isAccepted ? attempt.value : before);
        EXPECT_EQ(fresh.record(attempt.sharer, port())->u.uiReg.to,
                  isAccepted ? 4096 - attempt.value : sharersLargest);
        EXPECT_EQ(AppletOnBoard::writes().size(), isAccepted ? 2U : 0U);
    }
}

TEST_P(ImageGeometry, AFailedWriteLeavesTheParameterAsItWas) {
    for (const Side& side : sides) {
        expectEachFailedWriteToBeUndone(applet, side.id, port(), 16U, side.value, 2);
    }
}

TEST_P(ImageGeometry, AFailedWriteMovesNoLimitAndIsNotRolledBack) {
    const Side& width = sides[0];
    ASSERT_EQ(applet.set(FG_WIDTH, 256U, port()), 0);
    const std::string half0 = AppletOnBoard::process(port(), width.half0);
    const std::string half1 = AppletOnBoard::process(port(), width.half1);

    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, port()), runtimeFailure);
    EXPECT_EQ(applet.board().designValue(half0), 256U);
    EXPECT_EQ(applet.board().designValue(half1), 256U);
    EXPECT_EQ(largest(FG_XOFFSET), 3840U);

    AppletOnBoard::failWrite(2, runtimeFailure);
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, port()), runtimeFailure);
    EXPECT_EQ(applet.board().designValue(half0), 512U);
    EXPECT_EQ(applet.board().designValue(half1), 256U);
    EXPECT_EQ(largest(FG_XOFFSET), 3840U);
    // The offset is judged by the width that is told, not by the register.
    EXPECT_EQ(applet.set(FG_XOFFSET, 3840U, port()), 0);
}

TEST_P(ImageGeometry, ALargerRegionNeedsTheOffsetReducedFirst) {
    ASSERT_EQ(applet.set(FG_XOFFSET, 2048U, port()), 0);
    EXPECT_EQ(applet.set(FG_WIDTH, 4096U, port()), -6000);
    ASSERT_EQ(applet.set(FG_XOFFSET, 0U, port()), 0);
    EXPECT_EQ(applet.set(FG_WIDTH, 4096U, port()), 0);
    EXPECT_EQ(largest(FG_XOFFSET), 0U);
}

TEST_P(ImageGeometry, SettersThrowOnlyWhenAsked) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    const auto set = port() == 0 ? &FgQxWrapperImpl::set_sdk_param_FG_WIDTH_P0
                                 : &FgQxWrapperImpl::set_sdk_param_FG_WIDTH_P1;
    const auto get = port() == 0 ? &FgQxWrapperImpl::get_sdk_param_FG_WIDTH_P0
                                 : &FgQxWrapperImpl::get_sdk_param_FG_WIDTH_P1;
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(17, true); }), -7080);
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(17, false); }), 0);
    EXPECT_EQ(thrownBy([&] { (wrapper.*get)(nullptr); }), -2070);
    unsigned width = 0;
    (wrapper.*get)(&width);
    EXPECT_EQ(width, 16U);
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(thrownBy([&] { (wrapper.*set)(32, false); }), 0);
    (wrapper.*get)(&width);
    EXPECT_EQ(width, 16U);
}
