#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

/// Name of the first register that the program lists.
std::string firstRegister() {
    const std::string output = orbctl({"registers"}).output;
    return output.substr(0, output.find(' '));
}

} // namespace

TEST(RegistersCommand, ListsNameWidthAndValue) {
    const ProgramResult result = orbctl({"registers"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_NE(result.output.find(" bit  0x"), std::string::npos);
    EXPECT_EQ(result.output.find("DRA_"), std::string::npos);
}

TEST(RegistersCommand, ListsOnlyWhatMatches) {
    const std::string name = firstRegister();
    const ProgramResult result = orbctl({"registers", name});
    EXPECT_EQ(result.output.rfind(name, 0), 0U);
    const ProgramResult none = orbctl({"registers", "no such part"});
    EXPECT_EQ(none.status, 3);
    EXPECT_EQ(none.messages, "orbctl: there is no register with no such part in its name\n");
}

TEST(RegistersCommand, ReadsByEitherName) {
    const std::string name = firstRegister();
    const ProgramResult result = orbctl({"registers", "read", name, "DRA_" + name});
    EXPECT_EQ(result.status, 0) << result.messages;
    const std::string line = result.output.substr(0, result.output.find('\n') + 1);
    EXPECT_EQ(line.rfind(name + " = 0x", 0), 0U);
    EXPECT_EQ(result.output, line + line);
}

TEST(RegistersCommand, SuggestsANameForAMisspelledOne) {
    const std::string name = firstRegister();
    const ProgramResult result = orbctl({"registers", "read", name + "X"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages,
              "orbctl: there is no parameter DRA_" + name + "X; did you mean DRA_" + name + "?\n");
}

TEST(RegistersCommand, WorksInsideARunOnlyBeforeTheBoardIsOpened) {
    EXPECT_EQ(console().input("registers\n").run({"run"}).status, 0);
    const ProgramResult late = console().input("get FG_WIDTH\nregisters\n").run({"run"});
    EXPECT_EQ(late.status, 3);
    EXPECT_NE(late.messages.find("the applet offers no registers"), std::string::npos);
}

} // namespace orbctl::test
