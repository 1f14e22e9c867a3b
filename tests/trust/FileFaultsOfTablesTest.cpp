// Every form of a lookup-table file, with each call on the file failing in turn, once and from then on.

#include "tests/support/TemporaryFolder.h"
#include "tests/trust/FileFaults.h"
#include "tests/trust/LutFileFaultForms.h"

#include <gtest/gtest.h>

using kavo::test::fileContent;

namespace {

class FileFaultsOfTables : public testing::TestWithParam<LutFileForm> {
  protected:
    [[nodiscard]] int save() {
        Fg_LutFileParser parser;
        const int result = GetParam().save(parser, path.c_str());
        hasToldOfWriting = parser.hasWriteFailed();
        return result;
    }
    [[nodiscard]] int load() {
        Fg_LutFileParser parser;
        content.clear();
        return GetParam().load(parser, path.c_str(), content);
    }

    kavo::test::TemporaryFolder folder;
    std::string path = folder.path("table.lut");
    bool hasToldOfWriting = false;
    LutFileContent content;
};

INSTANTIATE_TEST_SUITE_P(Forms, FileFaultsOfTables, testing::ValuesIn(lutFileForms()),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.name); });

} // namespace

TEST_P(FileFaultsOfTables, AreToldByWriting) {
    SweepReport report(std::string("Writing tables, ") + GetParam().name);
    report.operation();
    const FileFaults faults([&] { EXPECT_EQ(save(), 0); });
    const std::string whole = fileContent(path);
    EXPECT_GT(faults.count(), 5U);
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const int code = FileFaults::during(nth, duration, kind, [&] { return save(); });
        const bool isTold = code != 0 || hasToldOfWriting;
        report.fault(!isTold);
        EXPECT_TRUE(FileFaults::hasHappened());
        EXPECT_EQ(code, faults.call(nth) == FileCall::open ? -1 : 0);
        EXPECT_EQ(hasToldOfWriting, faults.call(nth) == FileCall::write);
        EXPECT_EQ(fileContent(path) == whole, faults.call(nth) != FileCall::write);
        EXPECT_EQ(save(), 0);
        EXPECT_FALSE(hasToldOfWriting);
        EXPECT_EQ(fileContent(path), whole);
    });
}

TEST_P(FileFaultsOfTables, AreToldByReading) {
    if (!GetParam().load) {
        Fg_LutFileParser parser;
        EXPECT_EQ(parser.getMatrixFromFile(path.c_str(), nullptr, 0), -1);
        return;
    }
    SweepReport report(std::string("Reading tables, ") + GetParam().name);
    report.operation();
    ASSERT_EQ(save(), 0);
    const FileFaults faults([&] { EXPECT_EQ(load(), 0); });
    const LutFileContent whole = content;
    EXPECT_GE(whole.size(), 6U);
    faults.forEach([&](std::size_t nth, FaultDuration duration, FileFaultKind kind) {
        SCOPED_TRACE(faults.describe(nth, duration, kind));
        const int code = FileFaults::during(nth, duration, kind, [&] { return load(); });
        report.fault(code == 0);
        EXPECT_TRUE(FileFaults::hasHappened());
        EXPECT_EQ(code, faults.call(nth) == FileCall::close ? 0 : -1);
        EXPECT_LE(content.size(), whole.size());
        EXPECT_EQ(content,
                  LutFileContent(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(content.size())))
            << "what was read before stays good";
        EXPECT_EQ(load(), 0);
        EXPECT_EQ(content, whole);
    });
}
