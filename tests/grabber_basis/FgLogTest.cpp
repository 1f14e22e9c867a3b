#include "grabber_basis/Fg_Log.h"
#include "tests/grabber_basis/OpenLog.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryFolder.h"

#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

using kavo::test::fileContent;
using kavo::test::OpenLog;

class FgLogTest : public testing::Test {
  protected:
    std::string content() const { return fileContent(mPath); }

    kavo::test::TemporaryFolder mFolder;
    std::string mPath = mFolder.path("log.txt");
    OpenLog mLog{mPath};
};

void writeEverything(Fg_Log& log) {
    log.Func("function");
    log.Info("information");
    log.UsrDbg("%d", 1);
    log.Error("text");
    log.Info("text", 1);
    log.ErrorInt("where", "text", 1);
    log.ErrorDouble("where", "text", 0.5);
    log.WriteWelcome();
}

TEST_F(FgLogTest, LogWithAFileNameDeliberatelyCreatesNoFile) {
    const std::string path = mFolder.path("never.txt");
    {
        Fg_Log log(path.c_str());
        log.OpenLogFile(path.c_str());
        writeEverything(log);
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(FgLogTest, LogWithoutAFileWritesNothing) {
    Fg_Log log(nullptr);
    writeEverything(log);
    log.CloseLogFile();
}

TEST_F(FgLogTest, FunctionTraceAndPlainInformationHaveNoEffect) {
    mLog.Func("function");
    mLog.Info("information");
    mLog.CloseLogFile();
    EXPECT_EQ(content(), "");
}

TEST_F(FgLogTest, DebugTextStandsAsItIsAndIsNotFlushed) {
    mLog.UsrDbg("%s=%d", "width", 16);
    EXPECT_EQ(content(), "");
    mLog.CloseLogFile();
    EXPECT_EQ(content(), "width=16");
}

TEST_F(FgLogTest, ErrorLineIsFlushedAtOnce) {
    mLog.Error("no such key");
    EXPECT_EQ(content(), "lumacardIV::Error >> no such key;\n");
}

TEST_F(FgLogTest, InformationLineHoldsItsNumber) {
    mLog.Info("lines", -3);
    EXPECT_EQ(content(), "lumacardIV::Info >> lines >> -3;\n");
}

TEST_F(FgLogTest, ErrorLineHoldsPlaceTextAndNumber) {
    mLog.ErrorInt("place", "text", 2147483647);
    EXPECT_EQ(content(), "lumacardIV::Error >> place >> text >> 2147483647;\n");
}

TEST_F(FgLogTest, ErrorLineHoldsADoubleWithTwelveDigits) {
    mLog.ErrorDouble("place", "text", 0.1);
    mLog.ErrorDouble("place", "text", 1e20);
    mLog.ErrorDouble("place", "text", 1.0 / 3.0);
    EXPECT_EQ(content(), "lumacardIV::Error >> place >> text >> 0.1;\n"
                         "lumacardIV::Error >> place >> text >> 1e+20;\n"
                         "lumacardIV::Error >> place >> text >> 0.333333333333;\n");
}

TEST_F(FgLogTest, DoubleHasADecimalPointUnderACommaLocale) {
    const kavo::test::CommaLocale locale;
    mLog.ErrorDouble("place", "text", 0.1);
    EXPECT_EQ(content(), "lumacardIV::Error >> place >> text >> 0.1;\n");
}

TEST_F(FgLogTest, TimestampIsTheLocalDateTextWithItsNewline) {
    const std::time_t before = std::time(nullptr);
    const std::string stamp = Fg_Log::GetTimestamp();
    const std::time_t after = std::time(nullptr);
    ASSERT_EQ(stamp.size(), 25U);
    bool isNow = false;
    for (std::time_t moment = before; moment <= after; ++moment) {
        isNow = isNow || stamp == std::asctime(std::localtime(&moment));
    }
    EXPECT_TRUE(isNow) << stamp;
}

TEST_F(FgLogTest, WelcomeBlockStandsBetweenTwoLinesOfHyphens) {
    mLog.WriteWelcome();
    const std::string separator = std::string(73, '-') + "\n";
    const std::string text = content();
    EXPECT_EQ(text.substr(0, 74), separator);
    const std::size_t endOfNotice = text.find('\n', 74) + 1;
    EXPECT_GT(endOfNotice, 75U) << "a notice line";
    const std::string contents = "Contents: Log details for lumacard Dll\n";
    EXPECT_EQ(text.substr(endOfNotice, contents.size()), contents);
    EXPECT_EQ(text.size(), endOfNotice + contents.size() + 25 + 74);
    EXPECT_EQ(text.substr(text.size() - 74), separator);
}

TEST_F(FgLogTest, ClosedLogWritesNothingMore) {
    mLog.Error("first");
    mLog.CloseLogFile();
    EXPECT_FALSE(mLog.isOpen());
    writeEverything(mLog);
    mLog.CloseLogFile();
    EXPECT_EQ(content(), "lumacardIV::Error >> first;\n");
}

} // namespace
