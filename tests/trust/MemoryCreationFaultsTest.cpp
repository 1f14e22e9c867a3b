// Creation and freeing, with each allocation of the applet failing in turn, once and from then on.

#include "tests/support/Creation.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/trust/HostSparedFromFaults.h"
#include "tests/trust/MemoryFaults.h"

using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr int untouched = 12345;

/// How an applet is created.
struct Way {
    const char* name;
    int slave;
    const char* families; ///< whether registers and the inner handle's parameters are offered
    long stride;          ///< one in so many allocations fails; the ways have most in common
};

std::ostream& operator<<(std::ostream& out, const Way& way) { return out << way.name; }

class MemoryCreationFaults : public kavo::test::OnFreshBoard, public testing::WithParamInterface<Way> {
  protected:
    MemoryCreationFaults() {
        // What the process keeps once it has made an applet is not to be taken for a leak.
        for (int warmUp = 0; warmUp < 2; ++warmUp) {
            namesOfAll = namesOfNew();
        }
        hostCalls().record(true);
        createAndFree();
        hostCalls().clear();
    }

    /// Number of names of an applet that is created without a fault.
    static int namesOfNew() {
        kavo::test::Creation creation(GetParam().slave);
        EXPECT_EQ(creation.error(), 0);
        return Fg_getNrOfParameter(creation.handle());
    }

    void createAndFree() {
        Fg_Struct handle{Std_entry(board().device(), nullptr, GetParam().slave)};
        EXPECT_EQ(Fg_FreeGrabber(&handle), 0);
    }

    static void expectNothingLeftOpen() {
        EXPECT_EQ(hostCalls().calls(CallKind::designUnload).size(),
                  hostCalls().calls(CallKind::designLoad).size());
        EXPECT_EQ(hostCalls().calls(CallKind::release).size(),
                  hostCalls().calls(CallKind::initialisation).size())
            << "inner handles";
        EXPECT_EQ(openLibraries(), 0);
    }

    void tryFault(SweepReport& report, long nth, FaultDuration duration);

    int namesOfAll = 0;
    kavo::test::ScopedEnvironment registers{"KAVO_ENABLE_DRA", GetParam().families};
    kavo::test::ScopedEnvironment inspected{"KAVO_ENABLE_DQXA", GetParam().families};
};

void MemoryCreationFaults::tryFault(SweepReport& report, long nth, FaultDuration duration) {
    const MemoryBalance balance;
    Fg_Struct handle{nullptr};
    int error = untouched;
    const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] {
        handle.Master = Std_entry(board().device(), &error, GetParam().slave);
        return error;
    });
    report.fault(handle.Master != nullptr);
    EXPECT_TRUE(outcome.hasHappened);
    EXPECT_EQ(handle.Master, nullptr);
    if (handle.Master != nullptr) {
        Fg_FreeGrabber(&handle);
    }
    // Without the wrapper itself there is nothing to tell; whatever else is missing, the exception tells.
    EXPECT_EQ(outcome.code.value_or(0), nth == 0 ? untouched : 0);
    EXPECT_EQ(outcome.code.has_value(), nth == 0);
    expectNothingLeftOpen();
    hostCalls().clear();
}

INSTANTIATE_TEST_SUITE_P(Ways, MemoryCreationFaults,
                         testing::Values(Way{"Master", 0, nullptr, 1}, Way{"Slave", 1, nullptr, 7},
                                         Way{"EveryFamily", 0, "on", 31}),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.name); });

} // namespace

TEST_P(MemoryCreationFaults, EndInAnExceptionOrNoHandleAndLeaveNothing) {
    SweepReport report(std::string("Creation without memory, ") + GetParam().name);
    report.operation();
    const long allocations = allocationsOf([&] { createAndFree(); });
    hostCalls().clear();
    EXPECT_GT(allocations, 500);
    for (long nth = 0; nth < allocations; nth += GetParam().stride) {
        SCOPED_TRACE(testing::Message() << "allocation " << nth);
        tryFault(report, nth, FaultDuration::once);
        if (nth % 4 == 0) {
            SCOPED_TRACE("for ever");
            tryFault(report, nth, FaultDuration::forEver);
        }
        if (nth % 62 == 0) {
            EXPECT_EQ(namesOfNew(), namesOfAll);
            hostCalls().clear();
        }
    }
    EXPECT_EQ(namesOfNew(), namesOfAll);
    EXPECT_EQ(report.survivors(), 0);
}

TEST_P(MemoryCreationFaults, FreeingNeedsNoMemory) {
    Fg_Struct handle{Std_entry(board().device(), nullptr, GetParam().slave)};
    EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(Fg_FreeGrabber(&handle), 0); }), 0);
    expectNothingLeftOpen();
}
