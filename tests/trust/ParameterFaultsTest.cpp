// Every write and every read of every standard parameter, with each call that reaches the host failing in
// turn, once and from then on.

#include "applet/StandardParameterTable.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/AppletView.h"
#include "tests/trust/HostFaults.h"
#include "tests/trust/ParameterAccess.h"

#include <cstring>

using simulator::hostCalls;

namespace {

struct Start {
    int port;
    Scene scene;
};

std::vector<Start> allStarts() {
    std::vector<Start> starts;
    for (const int port : {0, 1}) {
        for (const Scene& scene : scenesOf(port)) {
            starts.push_back({port, scene});
        }
    }
    return starts;
}

/// A fresh applet in the scene of a test, without a record of calls.
class Subject {
  public:
    explicit Subject(const Start& start) : mView(prepared(start)) {}

    AppletOnBoard applet;
    AppletView::Picture look() { return mView.look(); }
    AppletView& view() { return mView; }

  private:
    AppletOnBoard& prepared(const Start& start) {
        hostCalls().record(false);
        enter(applet, start.scene, start.port);
        return applet;
    }

    AppletView mView;
};

class ParameterFaults : public testing::TestWithParam<Start> {
  protected:
    static int port() { return GetParam().port; }

    /// What a text parameter is set to: a table that can be loaded, and written over.
    std::string tableFile() {
        return folder.makeFile("table.lut", "id=3;\nnrOfElements=2;\n[gray]\n0,17;\n1,18;\n");
    }

    void sweepSet(SweepReport& report, int id, const TrialValue& value);
    void expectUndone(Subject& subject, const AppletView::Picture& before, bool hasWritten);
    void sweepGet(SweepReport& report, Subject& subject, int id);

    kavo::test::TemporaryFolder folder;
};

/// What no fault changes.
struct Reference {
    int code;
    AppletView::Picture before, after;
};

void ParameterFaults::expectUndone(Subject& subject, const AppletView::Picture& before, bool hasWritten) {
    const AppletView::Picture seen = subject.look();
    EXPECT_EQ(subject.view().differencesInValues(before, seen), "");
    EXPECT_EQ(subject.view().differencesInRecords(before, seen), "");
    if (!hasWritten) {
        EXPECT_EQ(subject.view().differencesInHardware(before, seen), "");
    }
}

void ParameterFaults::sweepSet(SweepReport& report, int id, const TrialValue& value) {
    report.operation();
    const bool isText = std::holds_alternative<std::string>(value);
    const auto renewFile = [&] { isText ? static_cast<void>(tableFile()) : void(); };
    renewFile();
    Subject undisturbed(GetParam());
    Reference reference{0, undisturbed.look(), {}};
    const HostFaults faults([&] { reference.code = setTo(undisturbed.applet, id, value, port()); });
    reference.after = undisturbed.look();
    if (reference.code != 0) {
        expectUndone(undisturbed, reference.before, false);
    }
    for (std::size_t nth = 0; nth < faults.count(); ++nth) {
        SCOPED_TRACE("call " + std::to_string(nth) + ' ' + faults.call(nth).name);
        renewFile();
        Subject subject(GetParam());
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE(nameOf(duration));
            faults.arrange(nth, duration);
            const int code = setTo(subject.applet, id, value, port());
            hostCalls().stopFailing();
            report.fault(code == 0);
            EXPECT_EQ(code, injectedCode);
            EXPECT_EQ(subject.applet.lastError(), injectedCode);
            expectUndone(subject, reference.before, faults.hasWrittenBefore(nth));
        }
        EXPECT_EQ(setTo(subject.applet, id, value, port()), reference.code);
        const AppletView::Picture after = subject.look();
        EXPECT_EQ(subject.view().differencesInValues(reference.after, after), "");
        EXPECT_EQ(subject.view().differencesInRecords(reference.after, after), "");
        if (id != FG_SENDSOFTWARETRIGGER) {
            EXPECT_EQ(subject.view().differencesInHardware(reference.after, after), "");
        }
    }
}

void ParameterFaults::sweepGet(SweepReport& report, Subject& subject, int id) {
    report.operation();
    using Buffer = std::array<char, 4096>;
    const auto get = [&](Buffer& buffer) {
        // An index of the table, where one is read.
        buffer.fill(0);
        return Fg_getParameterWithType(subject.applet.handle(), id, buffer.data(),
                                       static_cast<unsigned>(port()), kavo::type::unsigned32);
    };
    Buffer told;
    const HostFaults faults([&] { EXPECT_EQ(get(told), 0); });
    const AppletView::Picture before = subject.look();
    for (std::size_t nth = 0; nth < faults.count(); ++nth) {
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE("call " + std::to_string(nth) + ' ' + faults.call(nth).name);
            Buffer buffer;
            faults.arrange(nth, duration);
            const int code = get(buffer);
            hostCalls().stopFailing();
            report.fault(code == 0);
            EXPECT_EQ(code, injectedCode);
            EXPECT_EQ(subject.applet.lastError(), injectedCode);
            EXPECT_EQ(buffer, Buffer{}) << "a failed read gives nothing";
            expectUndone(subject, before, false);
            EXPECT_EQ(get(buffer), 0);
            EXPECT_EQ(buffer, told);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Starts, ParameterFaults, testing::ValuesIn(allStarts()), [](const auto& suiteInfo) {
    return "Port" + std::to_string(suiteInfo.param.port) + suiteInfo.param.scene.name;
});

} // namespace

TEST_P(ParameterFaults, AWriteThatFailsIsUndoneAndCanBeRepeated) {
    SweepReport report(std::string("Writes, port ") + std::to_string(port()) + ", " + GetParam().scene.name);
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        std::vector<TrialValue> values;
        {
            Subject subject(GetParam());
            values = trialValues(subject.applet, parameter.id, port(), folder.path("table.lut"));
        }
        for (const TrialValue& value : values) {
            SCOPED_TRACE(testing::Message() << parameter.name << " <- " << value);
            sweepSet(report, parameter.id, value);
        }
    }
    EXPECT_GT(report.faults(), 100);
    EXPECT_EQ(report.survivors(), 0);
}

TEST_P(ParameterFaults, AReadThatFailsTellsTheCodeAndChangesNothing) {
    SweepReport report(std::string("Reads, port ") + std::to_string(port()) + ", " + GetParam().scene.name);
    Subject subject(GetParam());
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        SCOPED_TRACE(parameter.name);
        sweepGet(report, subject, parameter.id);
    }
    EXPECT_GT(report.faults(), 20);
    EXPECT_EQ(report.survivors(), 0);
}
