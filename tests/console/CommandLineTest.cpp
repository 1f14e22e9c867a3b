#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

void expectUsageFailure(const std::vector<std::string>& words, const std::string& messages) {
    const ProgramResult result = orbctl(words);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, messages);
}

} // namespace

TEST(CommandLine, PrintsHelpOnStandardOutput) {
    for (const char* const command :
         {"", "info", "list", "get", "set", "describe", "registers", "acquire", "run", "demo"}) {
        const ProgramResult result = *command == '\0' ? orbctl({"--help"}) : orbctl({command, "--help"});
        EXPECT_EQ(result.status, 0) << command;
        EXPECT_NE(result.output.find("Usage: orbctl"), std::string::npos) << command;
        EXPECT_EQ(result.messages, "") << command;
    }
}

TEST(CommandLine, PrintsItsVersion) {
    const ProgramResult result = orbctl({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.rfind("orbctl ", 0), 0U);
}

TEST(CommandLine, AsksForACommand) {
    expectUsageFailure({}, "orbctl: a command is missing\nTry orbctl --help\n");
}

TEST(CommandLine, SuggestsACommandForAMisspelledOne) {
    expectUsageFailure({"lst"}, "orbctl: there is no command lst; did you mean list?\nTry orbctl --help\n");
    expectUsageFailure({"--board", "1", "lst"},
                       "orbctl: there is no command lst; did you mean list?\nTry orbctl --help\n");
}

TEST(CommandLine, RefusesWhatACommandDoesNotTake) {
    expectUsageFailure({"list", "--bogus"},
                       "orbctl: The following argument was not expected: --bogus\nTry orbctl list --help\n");
    expectUsageFailure({"get"}, "orbctl: NAME is required\nTry orbctl get --help\n");
    expectUsageFailure({"list", "--port", "2"},
                       "orbctl: --port: 2 not in {0,1,both}\nTry orbctl list --help\n");
}

TEST(CommandLine, RefusesCountsAndTimesOutOfRange) {
    for (const char* const count : {"0", "-1", "x", "1000001"})
        EXPECT_EQ(orbctl({"acquire", "-n", count}).status, 2) << count;
    for (const char* const timeout : {"0", "-1", "x"})
        EXPECT_EQ(orbctl({"acquire", "--timeout", timeout}).status, 2) << timeout;
}

TEST(CommandLine, NamesALibraryThatIsNotThere) {
    const ProgramResult runtime = orbctl({"--runtime", "/nowhere/libgrabcore5.so", "list"});
    EXPECT_EQ(runtime.status, 3);
    EXPECT_EQ(runtime.messages.rfind("orbctl: the runtime /nowhere/libgrabcore5.so cannot be opened: ", 0),
              0U);
    const ProgramResult applet = orbctl({"--applet", "/nowhere/libOrbelline.so", "list"});
    EXPECT_EQ(applet.status, 3);
    EXPECT_EQ(applet.messages.rfind("orbctl: the applet /nowhere/libOrbelline.so cannot be opened: ", 0), 0U);
}

TEST(CommandLine, NamesALibraryThatIsNoRuntime) {
    const ProgramResult result = orbctl({"--runtime", "libm.so.6", "list"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: neither the runtime nor the applet has the function Fg_OpenBoard\n");
}

TEST(CommandLine, TellsThatABoardIsNotThere) {
    const ProgramResult result = orbctl({"--board", "4000", "list"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages.rfind("orbctl: board 4000 cannot be opened: ", 0), 0U);
}

TEST(CommandLine, FindsTheLibrariesBesideItself) {
    const ProgramResult result = Program(ORBELLINE_ORBCTL).run({"get", "FG_WIDTH"});
    EXPECT_EQ(result.status, 0) << result.messages;
}

TEST(CommandLine, NoticesThatStandardOutputIsFull) {
    const ProgramResult result = console().outputInto("/dev/full").run({"list"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: standard output cannot be written\n");
}

} // namespace orbctl::test
