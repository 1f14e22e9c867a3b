// Configuration files, table files of the applet and temporary files, with each call on a file failing in
// turn, once and from then on; a write can also get half of its bytes onto a full disk.

#include "tests/trust/FileFaults.h"
#include "platform/ErrorCodes.h"
#include "tests/trust/FaultFixture.h"

#include <algorithm>

namespace error = kavo::error;
using kavo::test::fileContent;

namespace {

class FileFaultsOfAnApplet : public FaultFixture {
  protected:
    struct LoadSurvivors {
        long ofClosing;
        long ofReading; ///< any other call
    };
    LoadSurvivors sweepLoad(const Scene& scene);
};

/// A custom table that is set or saved, on one port.
class TableFileFaults : public FileFaultsOfAnApplet, public testing::WithParamInterface<int> {
  protected:
    static int port() { return GetParam(); }
    static Scene custom() { return {"CustomTable", {{FG_LUT_TYPE, unsigned{lookupTableCustom}}}}; }

    void sweepSet(SweepReport& report, const Scene& scene, int id, const TrialValue& value);
};

void TableFileFaults::sweepSet(SweepReport& report, const Scene& scene, int id, const TrialValue& value) {
    report.operation();
    FaultSubject undisturbed(scene, {port()});
    const FileFaults faults([&] { EXPECT_EQ(setTo(undisturbed.applet, id, value, port()), error::ok); });
    const AppletView::Picture after = undisturbed.look();
    EXPECT_GT(faults.count(), 3U);
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const std::size_t filesBefore = openFiles();
        FaultSubject subject(scene, {port()});
        const AppletView::Picture before = subject.look();
        const int code =
            FileFaults::during(nth, duration, kind, [&] { return setTo(subject.applet, id, value, port()); });
        report.fault(code == error::ok);
        EXPECT_TRUE(FileFaults::hasHappened());
        EXPECT_EQ(openFiles(), filesBefore);
        EXPECT_EQ(subject.applet.lastError(), code);
        const AppletView::Picture& expected = code == error::ok ? after : before;
        EXPECT_TRUE(code == error::ok || code == error::fileNotFound || code == error::fileAccessFailed)
            << code;
        const AppletView::Picture seen = subject.look();
        EXPECT_EQ(subject.view().differencesInValues(expected, seen), "");
        EXPECT_EQ(subject.view().differencesInRecords(expected, seen), "");
        EXPECT_EQ(subject.view().differencesInHardware(expected, seen), "");
        EXPECT_EQ(setTo(subject.applet, id, value, port()), error::ok);
        EXPECT_EQ(subject.view().differencesInHardware(after, subject.look()), "");
    });
}

INSTANTIATE_TEST_SUITE_P(Ports, TableFileFaults, testing::Values(0, 1),
                         [](const auto& suiteInfo) { return "Port" + std::to_string(suiteInfo.param); });

} // namespace

TEST_F(FileFaultsOfAnApplet, SavingTellsThatTheFileCouldNotBeWritten) {
    SweepReport report("Saving with bad files");
    report.operation();
    FaultSubject subject(changed());
    const AppletView::Picture before = subject.look();
    const FileFaults faults([&] { EXPECT_EQ(save(subject), error::ok); });
    const std::string whole = fileContent(file);
    EXPECT_GT(faults.count(), 100U);
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const std::size_t filesBefore = openFiles();
        const int code = FileFaults::during(nth, duration, kind, [&] { return save(subject); });
        report.fault(code == error::ok);
        EXPECT_TRUE(FileFaults::hasHappened());
        EXPECT_EQ(openFiles(), filesBefore);
        // Every line was flushed before: a close that fails takes nothing away.
        EXPECT_EQ(code, faults.call(nth) == FileCall::close ? error::ok : error::fileAccessFailed);
        EXPECT_EQ(subject.applet.lastError(), code);
        if (code == error::ok) {
            EXPECT_EQ(fileContent(file), whole);
        }
        const AppletView::Picture seen = subject.look();
        EXPECT_EQ(subject.view().differencesInValues(before, seen), "");
        EXPECT_EQ(subject.view().differencesInHardware(before, seen), "");
        EXPECT_EQ(save(subject), error::ok);
        EXPECT_EQ(fileContent(file), whole);
    });
}

FileFaultsOfAnApplet::LoadSurvivors FileFaultsOfAnApplet::sweepLoad(const Scene& scene) {
    SweepReport report("Loading bad files, " + std::string(scene.name));
    report.operation();
    LoadSurvivors survivors{0, 0};
    {
        FaultSubject source(scene);
        EXPECT_EQ(save(source), error::ok);
    }
    FaultSubject undisturbed;
    const AppletView::Picture before = undisturbed.look();
    const FileFaults faults([&] { EXPECT_EQ(load(undisturbed), error::ok); });
    const AppletView::Picture after = undisturbed.look();
    EXPECT_GT(faults.count(), 5U);
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const std::size_t filesBefore = openFiles();
        std::optional<FaultSubject> subject(std::in_place);
        const int code = FileFaults::during(nth, duration, kind, [&] { return load(*subject); });
        report.fault(code == error::ok);
        EXPECT_TRUE(FileFaults::hasHappened());
        EXPECT_EQ(openFiles(), filesBefore);
        EXPECT_TRUE(code == error::ok || code == error::fileNotFound ||
                    code == error::configurationLoadFailed)
            << code;
        EXPECT_EQ(subject->applet.lastError(), code == error::ok ? code : error::configurationLoadFailed);
        const AppletView::Picture seen = subject->look();
        EXPECT_EQ(code == error::ok ? subject->view().strangeValues(seen, before, after)
                                    : subject->view().differencesInValues(before, seen),
                  "");
        EXPECT_EQ(load(*subject), error::ok);
        EXPECT_EQ(subject->view().differencesInValues(after, subject->look()), "");

        subject.emplace();
        FileFaults::during(nth, duration, kind, [&] { return load(*subject); });
        EXPECT_EQ(differencesFromTwin(subject), "");
        if (code == error::ok) {
            ++(faults.call(nth) == FileCall::close ? survivors.ofClosing : survivors.ofReading);
        }
    });
    return survivors;
}

TEST_F(FileFaultsOfAnApplet, LoadingTellsItAndKeepsTheSettings) {
    Scene scene{"Plain", {{FG_WIDTH, 512U}, {FG_XOFFSET, 64U}, {FG_TRIGGER_PULSEFORMGEN1_DELAY, 80.0}}};
    const LoadSurvivors survivors = sweepLoad(scene);
    EXPECT_EQ(survivors.ofReading, 0);
    EXPECT_GT(survivors.ofClosing, 0);
}

TEST_F(FileFaultsOfAnApplet, LoadingLeavesOutATableThatCannotBeRead) {
    EXPECT_GT(sweepLoad(changed()).ofReading, 0);
}

TEST_F(FileFaultsOfAnApplet, TemporaryFilesAreMadeOrThereIsNone) {
    SweepReport report("Temporary files on a bad disk");
    report.operation();
    const auto make = [] { return FgQxWrapper::createTempFile(); };
    const FileFaults faults([&] { FgQxWrapper::deleteTempFile(make()); });
    ASSERT_EQ(faults.count(), 3U) << "open, close, remove";
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const std::size_t filesBefore = openFiles();
        char* const name = FileFaults::during(nth, duration, kind, make);
        report.fault(name != nullptr);
        // Any name whose file cannot be made gives way to the next one.
        EXPECT_EQ(name != nullptr, faults.call(nth) != FileCall::open || duration == FaultDuration::once);
        EXPECT_EQ(openFiles(), filesBefore);
        EXPECT_TRUE(name == nullptr || std::filesystem::is_empty(name));
        const std::string path(name != nullptr ? name : "");
        FileFaults::during(nth > 1 ? 0 : 1, duration, kind, [&] { FgQxWrapper::deleteTempFile(name); });
        EXPECT_EQ(std::filesystem::exists(path), nth > 1 && name != nullptr);
        std::filesystem::remove(path);
    });
}

TEST_P(TableFileFaults, AFileThatCannotBeReadIsRefused) {
    SweepReport report("Tables from bad files, port " + std::to_string(port()));
    sweepSet(report, custom(), FG_LUT_CUSTOM_FILE, tableFile);
}

TEST_P(TableFileFaults, ALongFileThatCannotBeReadIsRefused) {
    SweepReport report("Tables from bad long files, port " + std::to_string(port()));
    std::string content;
    for (int line = 0; line < 200; ++line) {
        content += "# A remark of the user's before the table begins\n";
    }
    content += "id=3;\nnrOfElements=1000;\n[gray]\n";
    for (int index = 0; index < 1000; ++index) {
        content += std::to_string(index) + "," + std::to_string(4095 - index) + ";\n";
    }
    sweepSet(report, custom(), FG_LUT_CUSTOM_FILE, folder.makeFile("long.lut", content));
}

TEST_P(TableFileFaults, ATypeWhoseFileCannotBeReadIsRefused) {
    SweepReport report("Table types with bad files, port " + std::to_string(port()));
    sweepSet(report, {"PathOnly", {{FG_LUT_CUSTOM_FILE, tableFile}}}, FG_LUT_TYPE,
             unsigned{lookupTableCustom});
}

TEST_P(TableFileFaults, AFileThatCannotBeWrittenIsTold) {
    SweepReport report("Saved tables on a bad disk, port " + std::to_string(port()));
    report.operation();
    const std::string path = folder.path("saved.lut");
    FaultSubject subject(custom(), {port()});
    const AppletView::Picture before = subject.look();
    const auto saveTable = [&] { return subject.applet.set(FG_LUT_SAVE_FILE, path.c_str(), port()); };
    const FileFaults faults([&] { EXPECT_EQ(saveTable(), error::ok); });
    const std::string whole = fileContent(path);
    EXPECT_EQ(subject.applet.set(FG_LUT_SAVE_FILE, "", port()), error::ok);
    EXPECT_GT(faults.count(), 4096U);
    // The entries are all alike: of those in the middle, a sample.
    constexpr std::size_t ends = 20;
    constexpr std::size_t stride = 211;
    for (std::size_t nth = 0; nth < faults.count();
         nth +=
         nth < ends || nth + ends >= faults.count() ? 1 : std::min(stride, faults.count() - ends - nth)) {
        faults.forEachOf(nth, [&](std::size_t, FaultDuration duration, FileFaultKind kind) {
            SCOPED_TRACE(faults.describe(nth, duration, kind));
            const std::size_t filesBefore = openFiles();
            const int code = FileFaults::during(nth, duration, kind, saveTable);
            report.fault(code == error::ok);
            EXPECT_TRUE(FileFaults::hasHappened());
            EXPECT_EQ(openFiles(), filesBefore);
            EXPECT_EQ(code, faults.call(nth) == FileCall::close ? error::ok : error::fileAccessFailed);
            EXPECT_EQ(subject.applet.lastError(), code);
            if (code == error::ok) {
                EXPECT_TRUE(fileContent(path) == whole);
                EXPECT_EQ(subject.applet.set(FG_LUT_SAVE_FILE, "", port()), error::ok);
            }
            const AppletView::Picture seen = subject.look();
            EXPECT_EQ(subject.view().differencesInValues(before, seen), "");
            EXPECT_EQ(subject.view().differencesInHardware(before, seen), "");
        });
    }
    EXPECT_EQ(saveTable(), error::ok);
    EXPECT_TRUE(fileContent(path) == whole);
}
