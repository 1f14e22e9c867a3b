#include "console/Terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

namespace orbctl {

namespace {

/// A pseudo terminal, which is one for the program.
class TerminalOf : public ::testing::Test {
  protected:
    TerminalOf() {
        mMaster = posix_openpt(O_RDWR | O_NOCTTY);
        grantpt(mMaster);
        unlockpt(mMaster);
        mSlave = open(ptsname(mMaster), O_RDWR | O_NOCTTY);
        unsetenv("NO_COLOR");
        setenv("TERM", "xterm", 1);
    }
    ~TerminalOf() override {
        close(mSlave);
        close(mMaster);
    }

    int mMaster = -1;
    int mSlave = -1;
};

} // namespace

TEST_F(TerminalOf, ATerminalHasColour) {
    EXPECT_TRUE(Terminal::of(mSlave).isInteractive());
    EXPECT_EQ(Terminal::of(mSlave).bold("text"), "\033[1mtext\033[0m");
    EXPECT_EQ(Terminal::of(mSlave).bold(""), "");
}

TEST_F(TerminalOf, NoColorTakesColourButNotTheProgressBar) {
    setenv("NO_COLOR", "1", 1);
    EXPECT_TRUE(Terminal::of(mSlave).isInteractive());
    EXPECT_EQ(Terminal::of(mSlave).bold("text"), "text");
}

TEST_F(TerminalOf, AnEmptyNoColorCountsAsUnset) {
    setenv("NO_COLOR", "", 1);
    EXPECT_TRUE(Terminal::of(mSlave).hasColour());
}

TEST_F(TerminalOf, ADumbTerminalGetsPlainText) {
    for (const char* const name : {"dumb", ""}) {
        setenv("TERM", name, 1);
        EXPECT_FALSE(Terminal::of(mSlave).isInteractive());
        EXPECT_EQ(Terminal::of(mSlave).error("text"), "text");
    }
    unsetenv("TERM");
    EXPECT_FALSE(Terminal::of(mSlave).isInteractive());
}

TEST_F(TerminalOf, APipeGetsPlainText) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_FALSE(Terminal::of(ends[1]).hasColour());
    close(ends[0]);
    close(ends[1]);
}

} // namespace orbctl
