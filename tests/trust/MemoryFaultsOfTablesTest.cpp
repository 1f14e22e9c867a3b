// Every form of a lookup-table file, temporary files and the applet's named constants, with each allocation
// failing in turn, once and from then on.

#include "appletwrappers-baselib/FgQxWrapper.h"
#include "platform/FrameGrabber.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/LutFileFaultForms.h"
#include "tests/trust/MemoryFaults.h"

using kavo::test::fileContent;

namespace {

class MemoryFaultsOfTables : public testing::TestWithParam<LutFileForm> {
  protected:
    [[nodiscard]] int save() {
        Fg_LutFileParser parser;
        return GetParam().save(parser, path.c_str());
    }
    [[nodiscard]] int load() {
        Fg_LutFileParser parser;
        content.clear();
        return GetParam().load(parser, path.c_str(), content);
    }

    kavo::test::TemporaryFolder folder;
    std::string path = folder.path("a table with a name of some length.lut");
    LutFileContent content;
};

INSTANTIATE_TEST_SUITE_P(Forms, MemoryFaultsOfTables, testing::ValuesIn(lutFileForms()),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.name); });

/// Calls the visitor with every fault of an operation.
template <class Visitor>
void forEveryFault(long allocations, Visitor visit) {
    for (long nth = 0; nth < allocations; ++nth) {
        for (const FaultDuration duration : bothDurations) {
            SCOPED_TRACE(testing::Message() << "allocation " << nth << ' ' << nameOf(duration));
            visit(nth, duration);
        }
    }
}

} // namespace

TEST_P(MemoryFaultsOfTables, EndWritingInAnException) {
    SweepReport report(std::string("Writing tables without memory, ") + GetParam().name);
    report.operation();
    const long allocations = allocationsOf([&] { EXPECT_EQ(save(), 0); });
    const std::string whole = fileContent(path);
    forEveryFault(allocations, [&](long nth, FaultDuration duration) {
        const MemoryBalance balance;
        const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] { return save(); });
        report.fault(outcome.code == 0);
        EXPECT_EQ(outcome.code, std::nullopt);
        EXPECT_EQ(save(), 0);
        EXPECT_EQ(fileContent(path), whole);
    });
}

TEST_P(MemoryFaultsOfTables, EndReadingInAnExceptionOrAnError) {
    if (!GetParam().load) {
        Fg_LutFileParser parser;
        EXPECT_EQ(allocationsOf([&] { parser.getMatrixFromFile(path.c_str(), nullptr, 0); }), 0);
        return;
    }
    SweepReport report(std::string("Reading tables without memory, ") + GetParam().name);
    report.operation();
    ASSERT_EQ(save(), 0);
    constexpr std::size_t roomForAll = 64;
    content.reserve(roomForAll);
    const long allocations = allocationsOf([&] { EXPECT_EQ(load(), 0); });
    const LutFileContent whole = content;
    EXPECT_GT(allocations, 0);
    forEveryFault(allocations, [&](long nth, FaultDuration duration) {
        const MemoryBalance balance;
        const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] { return load(); });
        report.fault(outcome.code == 0);
        EXPECT_EQ(outcome.code.value_or(-1), -1);
        EXPECT_EQ(load(), 0);
        EXPECT_EQ(content, whole);
    });
    EXPECT_EQ(report.survivors(), 0);
}

TEST(MemoryFaultsOfTemporaryFiles, EndInAnExceptionBeforeThereIsAFile) {
    SweepReport report("Temporary files without memory");
    report.operation();
    const auto makeAndDelete = [] { FgQxWrapper::deleteTempFile(FgQxWrapper::createTempFile()); };
    const long allocations = allocationsOf(makeAndDelete);
    EXPECT_EQ(allocations, 1);
    forEveryFault(allocations, [&](long nth, FaultDuration duration) {
        const MemoryBalance balance;
        const MemoryFaultOutcome outcome = underMemoryFault(nth, duration, [&] {
            makeAndDelete();
            return 0;
        });
        report.fault(outcome.code == 0);
        EXPECT_EQ(outcome.code, std::nullopt);
        makeAndDelete();
    });
}

TEST(MemoryFaultsOfNamedConstants, LetThemBeBuiltLater) {
    SweepReport report("Named constants without memory");
    report.operation();
    const auto ask = [] {
        char name[] = "FG_GRAY";
        return Info(4352, 0, 0, reinterpret_cast<unsigned*>(name), nullptr);
    };
    // They are built once in a process: until that succeeds, one allocation later each time.
    for (long nth = 0;; ++nth) {
        const MemoryFaultOutcome forEver = underMemoryFault(nth, FaultDuration::forEver, ask);
        if (!forEver.hasHappened) {
            EXPECT_EQ(forEver.code, 3);
            break;
        }
        report.fault(forEver.code.has_value());
        EXPECT_EQ(forEver.code, std::nullopt);
        const MemoryBalance balance;
        report.fault(underMemoryFault(nth, FaultDuration::once, ask).code.has_value());
    }
    EXPECT_GT(report.faults(), 40);
    EXPECT_EQ(report.survivors(), 0);
    EXPECT_EQ(ask(), 3);
}
