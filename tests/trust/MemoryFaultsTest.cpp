// What an applet does in use, with each of its allocations failing in turn, once and from then on: writes and
// reads of every parameter, look-ups, lookup-table files, the XML description, defaults, saving and loading.

#include "tests/trust/MemoryFaults.h"
#include "applet/StandardParameterTable.h"
#include "platform/ErrorCodes.h"
#include "tests/trust/FaultFixture.h"
#include "tests/trust/HostSparedFromFaults.h"

namespace error = kavo::error;
using kavo::test::fileContent;

namespace {

struct Start {
    int port;
    Scene scene;
};

/// The ways in which the table is filled: what a write allocates depends on nothing else.
std::vector<Start> allStarts() {
    const Scene computed{"ComputedTable", {}};
    const Scene custom{"CustomTable", {{FG_LUT_TYPE, unsigned{lookupTableCustom}}}};
    return {{0, computed}, {0, custom}, {1, computed}, {1, custom}};
}

class MemoryFaults : public FaultFixture {};

class MemoryParameterFaults : public MemoryFaults, public testing::WithParamInterface<Start> {
  protected:
    static int port() { return GetParam().port; }
    void sweepSet(SweepReport& report, int id, const TrialValue& value);
    void trySet(SweepReport& report, int id, const TrialValue& value, long nth, FaultDuration duration);
};

void MemoryParameterFaults::trySet(SweepReport& report, int id, const TrialValue& value, long nth,
                                   FaultDuration duration) {
    const std::size_t filesBefore = openFiles();
    const MemoryBalance balance;
    FaultSubject subject(GetParam().scene, {port()});
    const AppletView::Picture before = subject.look();
    const MemoryFaultOutcome outcome =
        underMemoryFault(nth, duration, [&] { return setTo(subject.applet, id, value, port()); });
    const AppletView::Picture seen = subject.look();
    report.fault(outcome.code == error::ok);
    EXPECT_TRUE(outcome.hasHappened);
    // A table without memory is an unreadable file; any other shortage reaches the caller as it is.
    EXPECT_EQ(outcome.code.value_or(error::fileAccessFailed), error::fileAccessFailed);
    EXPECT_EQ(subject.view().differencesInValues(before, seen), "");
    EXPECT_EQ(subject.view().differencesInRecords(before, seen), "");
    EXPECT_EQ(subject.view().differencesInHardware(before, seen), "");
    EXPECT_EQ(setTo(subject.applet, id, value, port()), error::ok);
    EXPECT_EQ(openFiles(), filesBefore);
}

void MemoryParameterFaults::sweepSet(SweepReport& report, int id, const TrialValue& value) {
    report.operation();
    const long allocations = [&] {
        FaultSubject undisturbed(GetParam().scene, {port()});
        return allocationsOf([&] { setTo(undisturbed.applet, id, value, port()); });
    }();
    for (long nth = 0; nth < allocations; ++nth) {
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE(testing::Message() << "allocation " << nth << ' ' << nameOf(duration));
            trySet(report, id, value, nth, duration);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, MemoryParameterFaults, testing::ValuesIn(allStarts()),
                         [](const auto& suiteInfo) {
                             return "Port" + std::to_string(suiteInfo.param.port) +
                                    suiteInfo.param.scene.name;
                         });

} // namespace

TEST_P(MemoryParameterFaults, AWriteThatFailsIsUndoneAndCanBeRepeated) {
    SweepReport report(std::string("Writes without memory, port ") + std::to_string(port()) + ", " +
                       GetParam().scene.name);
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        std::vector<TrialValue> values;
        {
            FaultSubject subject(GetParam().scene, {port()});
            values = trialValues(subject.applet, parameter.id, port(), tableFile);
        }
        for (const TrialValue& value : values) {
            SCOPED_TRACE(testing::Message() << parameter.name << " <- " << value);
            sweepSet(report, parameter.id, value);
        }
    }
    EXPECT_GE(report.faults(), 8) << "the paths and the tables behind them";
    EXPECT_EQ(report.survivors(), 0);
}

TEST_P(MemoryParameterFaults, AReadNeedsNoMemory) {
    FaultSubject subject(GetParam().scene, {port()});
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        EXPECT_EQ(allocationsOf([&] { subject.applet.readCode(parameter.id, port()); }), 0) << parameter.name;
    }
}

TEST_F(MemoryFaults, LookUpsNeedNoMemory) {
    FaultSubject subject;
    Fg_Struct* const handle = subject.applet.handle();
    const int count = Fg_getNrOfParameter(handle);
    EXPECT_EQ(allocationsOf([&] {
                  for (int index = -1; index <= count; ++index) {
                      Fg_getParameterId(handle, index);
                      Fg_getParameterIdByName(handle, Fg_getParameterName(handle, index));
                  }
                  Fg_getParameterIdByName(handle, "a name that is long and known to no applet of this kind");
                  for (int bit = 0; bit < 64; ++bit) {
                      Fg_getEventMask(handle, Fg_getEventName(handle, std::uint64_t{1} << bit));
                  }
                  Fg_getLastErrorNumber(handle);
                  Fg_getParameterInfo(handle, 0);
              }),
              0);
}

TEST_F(MemoryFaults, TheXmlDescriptionAnswersThatItIsShortOfMemory) {
    SweepReport report("XML without memory");
    for (const int port : {0, 1}) {
        FaultSubject subject;
        const auto describe = [&](std::vector<char>& buffer, unsigned& size) {
            return Fg_getParameterInfoXML(subject.applet.handle(), port, buffer.data(), &size);
        };
        report.operation();
        constexpr unsigned room = 100000;
        std::vector<char> whole(room);
        unsigned wholeSize = room;
        const long allocations = allocationsOf([&] { EXPECT_EQ(describe(whole, wholeSize), error::ok); });
        EXPECT_GT(allocations, 20);
        for (long nth = 0; nth < allocations; ++nth) {
            for (const FaultDuration duration : bothDurations) {
                SCOPED_TRACE(testing::Message() << "allocation " << nth << ' ' << nameOf(duration));
                const MemoryBalance balance;
                std::vector<char> buffer(room);
                unsigned size = room;
                const MemoryFaultOutcome outcome =
                    underMemoryFault(nth, duration, [&] { return describe(buffer, size); });
                report.fault(outcome.code == error::ok);
                EXPECT_EQ(outcome.code, error::bufferTooSmall);
                EXPECT_EQ(subject.applet.lastError(), error::bufferTooSmall);
                EXPECT_EQ(size, room);
                EXPECT_EQ(std::count(buffer.begin(), buffer.end(), 0), room) << "no half a document";
                EXPECT_EQ(describe(buffer, size), error::ok);
                EXPECT_EQ(size, wholeSize);
                EXPECT_EQ(buffer, whole);
            }
        }
    }
    EXPECT_EQ(report.survivors(), 0);
}

TEST_F(MemoryFaults, DefaultsNeedNoMemory) {
    FaultSubject subject(changed());
    EXPECT_EQ(allocationsOf([&] { subject.applet.wrapper().setDefaultValues(); }), 0);
}

TEST_F(MemoryFaults, SavingEndsInAnExceptionAndCanBeRepeated) {
    SweepReport report("Saving without memory");
    report.operation();
    FaultSubject subject(changed());
    const AppletView::Picture before = subject.look();
    const long allocations = allocationsOf([&] { EXPECT_EQ(save(subject), error::ok); });
    const std::string whole = fileContent(file);
    const std::size_t filesBefore = openFiles();
    EXPECT_GT(allocations, 50);
    for (long nth = 0; nth < allocations; ++nth) {
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE(testing::Message() << "allocation " << nth << ' ' << nameOf(duration));
            const MemoryBalance balance;
            const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] { return save(subject); });
            report.fault(outcome.code == error::ok);
            EXPECT_EQ(outcome.code, std::nullopt);
            EXPECT_EQ(openFiles(), filesBefore);
            const AppletView::Picture seen = subject.look();
            EXPECT_EQ(subject.view().differencesInValues(before, seen), "");
            EXPECT_EQ(subject.view().differencesInHardware(before, seen), "");
            EXPECT_EQ(save(subject), error::ok);
            EXPECT_EQ(fileContent(file), whole);
        }
    }
    EXPECT_EQ(report.survivors(), 0);
}
