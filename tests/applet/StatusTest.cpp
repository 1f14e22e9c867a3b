// Fill level, overflow and camera status: nothing is cached, every read goes to the design.

#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"

namespace error = kavo::error;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

class Status : public OnBothPorts {
  protected:
    Status() { fill(0, 0); }

    void overflow(unsigned flag) { applet.board().setDesignValue(overflowName(), flag); }
    void fill(unsigned first, unsigned second) {
        applet.board().setDesignValue(fillName(0), first);
        applet.board().setDesignValue(fillName(1), second);
    }
    void runtimeStatus(std::uint32_t value) {
        applet.board().pinRuntimeParameter(FG_CAMSTATUS_EXTENDED, static_cast<unsigned>(port()), value);
        applet.board().pinRuntimeParameter(FG_CAMSTATUS_EXTENDED, static_cast<unsigned>(otherPort()), ~value);
    }
    static std::string overflowName() { return AppletOnBoard::process(port(), "Overflow_OverflowOccurred"); }
    static std::string fillName(int half) {
        return AppletOnBoard::process(port(), "Buffer_0_DRAM_A_" + std::to_string(half) + "_FillLevel");
    }
    std::vector<std::string> readsOf(int id) {
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.readCode(id, port()), 0);
        EXPECT_TRUE(AppletOnBoard::writes().empty());
        for (const auto& call : hostCalls().calls(CallKind::read)) {
            EXPECT_EQ(call.dmaIndex, static_cast<unsigned>(port())) << call.name;
            EXPECT_EQ(call.type, call.name == "FG_CAMSTATUS_EXTENDED" ? 0 : 2) << call.name;
        }
        return AppletOnBoard::reads();
    }
    /// Every read of a parameter fails in turn; its code is passed on and the value left alone.
    void expectEveryReadToFail(int id) {
        const std::size_t reads = readsOf(id).size();
        ASSERT_GT(reads, 0U);
        for (unsigned nth = 1; nth <= reads; ++nth) {
            const int code = -4711 - static_cast<int>(nth);
            AppletOnBoard::forgetCalls();
            AppletOnBoard::failRead(nth, code);
            EXPECT_EQ(applet.get(id, port()), 0xDEADBEEFU) << nth;
            EXPECT_EQ(applet.lastError(), code) << nth;
            EXPECT_EQ(AppletOnBoard::reads().size(), nth) << "nothing is read behind a failure";
            EXPECT_EQ(applet.readCode(id, port()), 0) << nth;
        }
    }
};
FOR_BOTH_PORTS(Status);

} // namespace

TEST_P(Status, TheFillLevelIsTheLargerHalf) {
    fill(10, 60);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 60U);
    fill(61, 60);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 61U);
    fill(100, 0);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 100U);
    fill(0, 0);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 0U);
}

TEST_P(Status, AnOverflowIsAFullMemoryAndNothingElseIsRead) {
    fill(10, 20);
    overflow(1);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 100U);
    EXPECT_EQ(readsOf(FG_FILLLEVEL), std::vector<std::string>{overflowName()});
}

TEST_P(Status, TheFillLevelReadsTheOverflowFirst) {
    EXPECT_EQ(readsOf(FG_FILLLEVEL), (std::vector<std::string>{overflowName(), fillName(0), fillName(1)}));
}

TEST_P(Status, TheOverflowIsTheRegisterAsItIs) {
    EXPECT_EQ(applet.get(FG_OVERFLOW, port()), 0U);
    overflow(1);
    EXPECT_EQ(applet.get(FG_OVERFLOW, port()), 1U);
    EXPECT_EQ(readsOf(FG_OVERFLOW), std::vector<std::string>{overflowName()});
}

TEST_P(Status, OnlyTheOwnPortIsAsked) {
    applet.board().setDesignValue(AppletOnBoard::process(otherPort(), "Overflow_OverflowOccurred"), 1);
    fill(30, 20);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 30U);
    EXPECT_EQ(applet.get(FG_OVERFLOW, port()), 0U);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, otherPort()), 100U);
}

TEST_P(Status, TheBandFollowsTheFillLevel) {
    const std::pair<unsigned, unsigned> bands[] = {{0, 0},  {1, 0},  {24, 0}, {25, 1}, {26, 1},  {49, 1},
                                                   {50, 2}, {74, 2}, {75, 3}, {99, 3}, {100, 3}, {127, 3}};
    runtimeStatus(0);
    for (const auto& [level, band] : bands) {
        fill(level, 0);
        EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), band << 6) << level;
        fill(0, level);
        EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), band << 6) << level;
    }
}

TEST_P(Status, TheRuntimesBitsPassAndTheAppletsOwnAreReplaced) {
    runtimeStatus(0xFF);
    EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), 0x1FU);
    runtimeStatus(0xFFFFFFFF);
    EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), 0xFFFFFF1FU);
    fill(60, 10);
    EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), 0xFFFFFF9FU);
    overflow(1);
    EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), 0xFFFFFFFFU);
    runtimeStatus(0);
    EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), 0xE0U);
}

TEST_P(Status, EveryPassedBitIsTheRuntimes) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        const std::uint32_t word = std::uint32_t{1} << bit;
        runtimeStatus(word);
        const bool isOwn = bit >= 5 && bit <= 7;
        EXPECT_EQ(applet.get(FG_CAMSTATUS_EXTENDED, port()), isOwn ? 0 : word) << bit;
    }
}

TEST_P(Status, TheExtendedStatusReadsTheOverflowTwice) {
    EXPECT_EQ(readsOf(FG_CAMSTATUS_EXTENDED),
              (std::vector<std::string>{overflowName(), fillName(0), fillName(1), overflowName(),
                                        "FG_CAMSTATUS_EXTENDED"}));
    overflow(1);
    EXPECT_EQ(readsOf(FG_CAMSTATUS_EXTENDED),
              (std::vector<std::string>{overflowName(), overflowName(), "FG_CAMSTATUS_EXTENDED"}));
}

TEST_P(Status, TheCameraStatusIsTheLowestBit) {
    runtimeStatus(0xFFFFFFFE);
    overflow(1);
    EXPECT_EQ(applet.get(FG_CAMSTATUS, port()), 0U);
    runtimeStatus(0x00000003);
    EXPECT_EQ(applet.get(FG_CAMSTATUS, port()), 1U);
}

TEST_P(Status, NothingIsCached) {
    fill(10, 0);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 10U);
    fill(11, 0);
    EXPECT_EQ(applet.get(FG_FILLLEVEL, port()), 11U);
    EXPECT_EQ(readsOf(FG_FILLLEVEL).size(), 3U);
}

TEST_P(Status, EveryFailingReadIsPassedOn) {
    for (const int id : {FG_FILLLEVEL, FG_OVERFLOW, FG_CAMSTATUS_EXTENDED, FG_CAMSTATUS}) {
        SCOPED_TRACE(id);
        expectEveryReadToFail(id);
    }
    overflow(1);
    for (const int id : {FG_FILLLEVEL, FG_CAMSTATUS_EXTENDED}) {
        SCOPED_TRACE(id);
        expectEveryReadToFail(id);
    }
}

TEST_P(Status, NullPointersAndWritesAreRefused) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    using Getter = void (FgQxWrapperImpl::*)(unsigned*);
    const Getter getters[][2] = {
        {&FgQxWrapperImpl::get_sdk_param_FG_FILLLEVEL_P0, &FgQxWrapperImpl::get_sdk_param_FG_FILLLEVEL_P1},
        {&FgQxWrapperImpl::get_sdk_param_FG_OVERFLOW_P0, &FgQxWrapperImpl::get_sdk_param_FG_OVERFLOW_P1},
        {&FgQxWrapperImpl::get_sdk_param_FG_CAMSTATUS_EXTENDED_P0,
         &FgQxWrapperImpl::get_sdk_param_FG_CAMSTATUS_EXTENDED_P1}};
    AppletOnBoard::forgetCalls();
    for (const auto& getter : getters) {
        try {
            (wrapper.*getter[port()])(nullptr);
            ADD_FAILURE();
        } catch (int code) {
            EXPECT_EQ(code, error::invalidParameter);
        }
    }
    EXPECT_TRUE(hostCalls().calls().empty());
    for (const int id : {FG_FILLLEVEL, FG_OVERFLOW, FG_CAMSTATUS_EXTENDED, FG_CAMSTATUS}) {
        EXPECT_EQ(applet.set(id, 0U, port()), error::notAvailable);
    }
}
