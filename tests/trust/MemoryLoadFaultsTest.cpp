// Loading a configuration, with each allocation of the applet failing in turn, once and from then on.

#include "platform/ErrorCodes.h"
#include "tests/trust/FaultFixture.h"
#include "tests/trust/MemoryFaults.h"

namespace error = kavo::error;

namespace {

class MemoryLoadFaults : public FaultFixture {
  protected:
    MemoryLoadFaults() {
        FaultSubject source(changed());
        EXPECT_EQ(save(source), error::ok);
    }
    void loadUndisturbed();
    void tryFault(SweepReport& report, long nth, FaultDuration duration);

    long allocations = 0;
    AppletView::Picture before, after;
};

void MemoryLoadFaults::loadUndisturbed() {
    FaultSubject undisturbed;
    before = undisturbed.look();
    allocations = allocationsOf([&] { EXPECT_EQ(load(undisturbed), error::ok); });
    after = undisturbed.look();
}

void MemoryLoadFaults::tryFault(SweepReport& report, long nth, FaultDuration duration) {
    const std::size_t filesBefore = openFiles();
    const MemoryBalance balance;
    std::optional<FaultSubject> subject(std::in_place);
    const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] { return load(*subject); });
    report.fault(outcome.code == error::ok);
    EXPECT_TRUE(outcome.hasHappened);
    // The load goes on where a table has no memory, as with any setting that is refused.
    EXPECT_EQ(outcome.code.value_or(error::ok), error::ok);
    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_EQ(subject->view().strangeValues(subject->look(), before, after), "");
    EXPECT_EQ(differencesFromTwin(subject), "");

    subject.emplace();
    underMemoryFault(nth, duration, [&] { return load(*subject); });
    EXPECT_EQ(load(*subject), error::ok);
    const AppletView::Picture repeated = subject->look();
    EXPECT_EQ(subject->view().differencesInValues(after, repeated), "");
    EXPECT_EQ(subject->view().differencesInRecords(after, repeated), "");
    EXPECT_EQ(subject->view().differencesInHardware(after, repeated), "");
}

} // namespace

TEST_F(MemoryLoadFaults, TellWhatTheHardwareHasAndCanBeRepeated) {
    SweepReport report("Loading without memory");
    report.operation();
    loadUndisturbed();
    EXPECT_GT(allocations, 30);
    for (long nth = 0; nth < allocations; ++nth) {
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE(testing::Message() << "allocation " << nth << ' ' << nameOf(duration));
            tryFault(report, nth, duration);
        }
    }
}
