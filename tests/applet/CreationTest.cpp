// Std_entry: what reaches the host libraries, in order, for a master and for a slave.

#include "tests/support/Creation.h"
#include "platform/ErrorCodes.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/ExternalDesign.h"
#include "tests/support/LibraryCalls.h"
#include "tests/support/ScopedEnvironment.h"

#include <algorithm>

namespace error = kavo::error;
using kavo::test::Creation;
using kavo::test::ExternalDesign;
using simulator::Call;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

class ApplicationCreatesTheApplet : public kavo::test::OnFreshBoard {
  protected:
    static std::vector<Call> callsOfCreation(int slave) {
        hostCalls().clear();
        hostCalls().record(true);
        const Creation creation(slave);
        EXPECT_TRUE(creation.hasSucceeded());
        EXPECT_EQ(creation.error(), 0);
        hostCalls().record(false);
        return hostCalls().calls();
    }
    /// Kinds in the order of their first calls, questions about the design left out.
    static std::vector<CallKind> phases(const std::vector<Call>& calls) {
        std::vector<CallKind> kinds;
        for (const Call& call : calls) {
            if (call.kind != CallKind::designQuery && (kinds.empty() || kinds.back() != call.kind)) {
                kinds.push_back(call.kind);
            }
        }
        return kinds;
    }
    static std::vector<RecordedWrite> writesOf(const std::vector<Call>& calls) {
        std::vector<RecordedWrite> writes;
        for (const Call& call : calls) {
            if (call.kind == CallKind::write) {
                writes.push_back({call.name, call.values.at(0), call.dmaIndex, call.type});
            }
        }
        return writes;
    }
    /// Outputs off, generator held, outputs on again as their start values say.
    static std::vector<RecordedWrite> safeState() {
        std::vector<RecordedWrite> writes;
        for (const int port : {0, 1}) {
            const auto write = [&](const std::string& name, std::uint32_t value) {
                writes.push_back({AppletOnBoard::trigger(port, name), value, static_cast<unsigned>(port), 2});
            };
            for (const char* output : {"0", "1", "2", "3"}) {
                write(std::string("TriggerOutput_Select") + output + "_Select_Select", 5);
            }
            write("Generators_ClearQueuePulse_Mode", 1);
            write("TriggerCamera_SelectTriggerCamera_Select_Select", 0);
            write("TriggerCamera_SelectTriggerCamera_Polarity_Invert", 0);
            const std::uint32_t sources[] = {0, 1, 5, 5};
            for (const int output : {0, 1, 2, 3}) {
                const std::string name = "TriggerOutput_Select" + std::to_string(output);
                write(name + "_Select_Select", sources[output]);
                write(name + "_Polarity_Invert", 1);
            }
        }
        return writes;
    }
};

} // namespace

TEST_F(ApplicationCreatesTheApplet, TheRuntimeIsOpenedFirst) {
    kavo::test::libraryCalls().clear();
    hostCalls().record(true);
    hostCalls().failOnce(CallKind::initialisation, 1, -7);
    const Creation creation;
    ASSERT_FALSE(kavo::test::libraryCalls().empty());
    EXPECT_EQ(kavo::test::libraryCalls().front().rfind("open libgrabcore5.so ", 0), 0U);
    EXPECT_EQ(kavo::test::libraryCalls().back(), "close after unloading");
}

TEST_F(ApplicationCreatesTheApplet, ASlaveStopsBehindTheSafeState) {
    const std::vector<Call> calls = callsOfCreation(1);
    EXPECT_EQ(phases(calls), (std::vector<CallKind>{CallKind::designLoad, CallKind::initialisation,
                                                    CallKind::idLookup, CallKind::write}));
    EXPECT_EQ(writesOf(calls), safeState());
}

TEST_F(ApplicationCreatesTheApplet, AMasterAppliesTheDefaultsBehindTheSafeState) {
    const auto writes = writesOf(callsOfCreation(0));
    const auto safe = safeState();
    ASSERT_GT(writes.size(), safe.size() + 1);
    EXPECT_TRUE(std::equal(safe.begin(), safe.end(), writes.begin()));
    // The first default is the time-out, the runtime's own parameter; the next the camera type.
    EXPECT_EQ(writes[safe.size()], (RecordedWrite{"FG_TIMEOUT", 1000000, 0, 0}));
    EXPECT_EQ(writes[safe.size() + 1].name.rfind("Device1_Process0_", 0), 0U);
}

TEST_F(ApplicationCreatesTheApplet, TablesAreFilledThenIdsResolvedThenParametersRegistered) {
    const kavo::test::ScopedEnvironment registers("KAVO_ENABLE_DRA", "1");
    const std::vector<Call> calls = callsOfCreation(1);
    const auto first = [&](const std::string& function) {
        return std::find_if(calls.begin(), calls.end(),
                            [&](const Call& call) { return call.function == function; }) -
               calls.begin();
    };
    const auto last = [&](const std::string& function) {
        const auto found = std::find_if(calls.rbegin(), calls.rend(),
                                        [&](const Call& call) { return call.function == function; });
        return calls.rend() - found - 1;
    };
    EXPECT_LT(first("Fg_InitHandleSlaveAware"), first("QelGetNrOfRegister"));
    EXPECT_LT(first("QelGetNrOfRegister"), first("QelGetEvent")) << "names come before events";
    EXPECT_LT(last("QelGetEvent"), first("Fg_getParameterIdByName"));
    EXPECT_LT(last("Fg_getParameterIdByName"), first("QelGetRegisterBitRange"));
    EXPECT_LT(last("QelGetRegisterBitRange"), first("Fg_setParameterWithType"));
}

TEST_F(ApplicationCreatesTheApplet, EverySlaveFlagButZeroMakesASlave) {
    for (const int slave : {0, 1, -1, 256}) {
        const std::vector<Call> calls = callsOfCreation(slave);
        const auto opening = std::find_if(calls.begin(), calls.end(), [](const Call& call) {
            return call.kind == CallKind::initialisation;
        });
        ASSERT_NE(opening, calls.end());
        EXPECT_EQ(opening->function, "Fg_InitHandleSlaveAware");
        EXPECT_EQ(opening->id, slave != 0 ? 1 : 0);
        EXPECT_EQ(opening->name, "Orbelline.qel");
        EXPECT_EQ(writesOf(calls).size() == safeState().size(), slave != 0);
    }
}

TEST_F(ApplicationCreatesTheApplet, TheEmbeddedDesignIsLoadedFromMemory) {
    const std::vector<Call> calls = callsOfCreation(1);
    EXPECT_EQ(calls.front().function, "QelLoadDesignFromBuffer");
}

TEST_F(ApplicationCreatesTheApplet, AForcedDesignIsLoadedFromTheCurrentFolder) {
    const ExternalDesign design(kavo::test::embeddedDesign());
    const std::vector<Call> calls = callsOfCreation(0);
    EXPECT_EQ(calls.front().function, "QelLoadQelFileWithType");
    EXPECT_EQ(calls.front().name, "Orbelline.qel");
    EXPECT_EQ(calls.front().type, 3652);
    const auto opening = std::find_if(calls.begin(), calls.end(),
                                      [](const Call& call) { return call.kind == CallKind::initialisation; });
    EXPECT_EQ(opening->name, "Orbelline.qel");
}

TEST_F(ApplicationCreatesTheApplet, TheErrorNeedNotBeWanted) {
    Fg_Struct handle{Std_entry(board().device(), nullptr, 0)};
    ASSERT_NE(handle.Master, nullptr);
    EXPECT_EQ(Fg_FreeGrabber(&handle), 0);
    hostCalls().failOnce(CallKind::initialisation, 1, -7);
    EXPECT_EQ(Std_entry(board().device(), nullptr, 0), nullptr);
}

TEST_F(ApplicationCreatesTheApplet, TheWrapperKnowsItsBoardAndDesign) {
    Creation creation;
    const auto& wrapper = *static_cast<FgQxWrapper*>(creation.handle()->Master);
    EXPECT_EQ(wrapper.boardHandle(), board().device());
    EXPECT_NE(wrapper.designHandle(), nullptr);
    EXPECT_EQ(wrapper.designHandle(), FgQxWrapper::accessDesignHandle(nullptr));
}

TEST_F(ApplicationCreatesTheApplet, TwoHandlesOnOneBoardAreApart) {
    Creation master;
    Creation slave(1);
    ASSERT_TRUE(master.hasSucceeded() && slave.hasSucceeded());
    unsigned width = 512;
    EXPECT_EQ(Fg_setParameterWithType(master.handle(), FG_WIDTH, &width, 0, 2), 0);
    EXPECT_EQ(Fg_getParameterWithType(slave.handle(), FG_WIDTH, &width, 0, 2), 0);
    EXPECT_EQ(width, 1024U) << "every handle has its own caches";
    EXPECT_EQ(Fg_getParameterWithType(master.handle(), 1, &width, 0, 2), error::invalidParameter);
    EXPECT_EQ(Fg_getLastErrorNumber(master.handle()), error::invalidParameter);
    EXPECT_EQ(Fg_getLastErrorNumber(slave.handle()), 0);
}

TEST_F(ApplicationCreatesTheApplet, EveryCallOnAFreedHandleFindsNoHandle) {
    Creation creation;
    Fg_Struct* handle = creation.handle();
    EXPECT_EQ(Fg_FreeGrabber(handle), 0);
    unsigned word = 0;
    EXPECT_EQ(Fg_getLastErrorNumber(handle), error::noHandle);
    EXPECT_EQ(Fg_setParameterWithType(handle, FG_WIDTH, &word, 0, 2), error::noHandle);
    EXPECT_EQ(Fg_getNrOfParameter(handle), error::noHandle);
    EXPECT_EQ(Fg_getParameterName(handle, 0), nullptr);
    EXPECT_EQ(Fg_FreeGrabber(handle), error::noHandle);
}
