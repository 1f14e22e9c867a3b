// What creation does to both trigger systems before any default is applied.

#include "tests/applet/TriggerChange.h"

namespace {

constexpr int anyCode = -4242;

/// The calls of the safe state in order, by the call that makes them.
std::vector<DesignAccesses> safeStateCalls() {
    std::vector<DesignAccesses> calls;
    for (const int port : {0, 1}) {
        calls.push_back(accessesOf(port, "OUT0"));
        calls.push_back(accessesOf(port, "GEN0"));
        calls.push_back({wrote(port, "TriggerCamera_SelectTriggerCamera_Select_Select", 0),
                         wrote(port, "TriggerCamera_SelectTriggerCamera_Polarity_Invert", 0),
                         wrote(port, "TriggerOutput_Select0_Select_Select", 0),
                         wrote(port, "TriggerOutput_Select0_Polarity_Invert", 1),
                         wrote(port, "TriggerOutput_Select1_Select_Select", 1),
                         wrote(port, "TriggerOutput_Select1_Polarity_Invert", 1),
                         wrote(port, "TriggerOutput_Select2_Select_Select", 5),
                         wrote(port, "TriggerOutput_Select2_Polarity_Invert", 1),
                         wrote(port, "TriggerOutput_Select3_Select_Select", 5),
                         wrote(port, "TriggerOutput_Select3_Polarity_Invert", 1)});
    }
    return calls;
}

/// What is left of the calls when the nth access (from 1) of them fails: the rest of its call.
DesignAccesses withFailureAt(std::size_t nth) {
    DesignAccesses accesses;
    std::size_t before = 0;
    for (const DesignAccesses& call : safeStateCalls()) {
        const bool fails = nth > before && nth <= before + call.size();
        const std::size_t made = fails ? nth - before : call.size();
        accesses.insert(accesses.end(), call.begin(), call.begin() + static_cast<std::ptrdiff_t>(made));
        before += call.size();
    }
    return accesses;
}

class SafeStateTest : public testing::Test {
  protected:
    SafeStateTest() : board(simulator::Board::at(0)) {
        simulator::hostCalls().reset();
        board.reset();
        board.clock().stepByHand();
    }
    ~SafeStateTest() override {
        simulator::hostCalls().reset();
        release();
    }

    void create(int slave) {
        simulator::hostCalls().record(true);
        int error = anyCode;
        handle.Master = Std_entry(board.device(), &error, slave);
        EXPECT_EQ(error, 0);
        ASSERT_NE(handle.Master, nullptr);
    }
    void release() {
        if (handle.Master != nullptr) {
            Fg_FreeGrabber(&handle);
            handle.Master = nullptr;
        }
        simulator::hostCalls().reset();
    }
    DesignAccesses madeFirst(std::size_t count) {
        DesignAccesses accesses = recordedAccesses();
        EXPECT_GT(accesses.size(), count);
        accesses.resize(std::min(count, accesses.size()));
        return accesses;
    }

    simulator::Board& board;
    Fg_Struct handle{nullptr};
};

TEST_F(SafeStateTest, ASlaveMakesTheseCallsAndNoOther) {
    create(1);
    EXPECT_EQ(recordedAccesses(), withFailureAt(0));
}

TEST_F(SafeStateTest, ASlaveKeepsWhatTheMasterHasSetOtherwise) {
    const std::string width = AppletOnBoard::trigger(0, formRegister(0, "Width_Width"));
    board.setDesignValue(width, 12345);
    create(1);
    EXPECT_EQ(board.designValue(width), 12345U);
}

TEST_F(SafeStateTest, ASlaveStartsWithTheDocumentedPair) {
    create(1);
    for (const unsigned port : {0U, 1U}) {
        unsigned mode = 0;
        unsigned state = 0;
        EXPECT_EQ(Fg_getParameterWithType(&handle, FG_AREATRIGGERMODE, &mode, port, 2), 0);
        EXPECT_EQ(Fg_getParameterWithType(&handle, FG_TRIGGERSTATE, &state, port, 2), 0);
        EXPECT_EQ(mode, generatorMode);
        EXPECT_EQ(state, syncStop);
    }
}

TEST_F(SafeStateTest, AMasterMakesThemBeforeAnyDefault) {
    create(0);
    EXPECT_EQ(madeFirst(withFailureAt(0).size()), withFailureAt(0));
}

TEST_F(SafeStateTest, AFailureEndsItsCallAlone) {
    const std::size_t count = withFailureAt(0).size();
    ASSERT_EQ(count, 30U);
    for (std::size_t nth = 1; nth <= count; ++nth) {
        SCOPED_TRACE(testing::Message() << "write " << nth << " fails");
        simulator::hostCalls().failOnce(simulator::CallKind::write, static_cast<unsigned>(nth), anyCode);
        create(1);
        EXPECT_EQ(recordedAccesses(), withFailureAt(nth));
        release();
    }
}

TEST_F(SafeStateTest, EveryCallMayFail) {
    simulator::hostCalls().failFrom(simulator::CallKind::write, 1, anyCode);
    create(1);
    DesignAccesses firsts;
    for (const DesignAccesses& call : safeStateCalls()) {
        firsts.push_back(call.front());
    }
    EXPECT_EQ(recordedAccesses(), firsts);
}

TEST_F(SafeStateTest, AMasterAppliesItsDefaultsAfterAFailure) {
    simulator::hostCalls().failOnce(simulator::CallKind::write, 1, anyCode);
    create(0);
    EXPECT_EQ(madeFirst(withFailureAt(1).size()), withFailureAt(1));
    EXPECT_EQ(board.designValue(AppletOnBoard::trigger(0, formRegister(0, "Width_Width"))), 250000U);
}

TEST_F(SafeStateTest, LeavesTheGeneratorsHeldAndTheOutputsAtTheirLevels) {
    create(1);
    for (const int port : {0, 1}) {
        EXPECT_EQ(board.designValue(AppletOnBoard::trigger(port, "Generators_ClearQueuePulse_Mode")), 1U);
        EXPECT_EQ(board.designValue(AppletOnBoard::trigger(port, "TriggerOutput_Select2_Select_Select")), 5U);
        EXPECT_EQ(board.designValue(AppletOnBoard::trigger(port, "TriggerOutput_Select2_Polarity_Invert")),
                  1U);
    }
}

} // namespace
