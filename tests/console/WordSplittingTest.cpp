#include "console/WordSplitting.h"
#include "console/Failure.h"

#include <gtest/gtest.h>

namespace orbctl {

using Words = std::vector<std::string>;

TEST(WordSplitting, SplitsAtSpaces) {
    EXPECT_EQ(wordsOf("  set  FG_WIDTH=16\tFG_HEIGHT=2 \r"), (Words{"set", "FG_WIDTH=16", "FG_HEIGHT=2"}));
}

TEST(WordSplitting, KeepsQuotedPartsTogether) {
    EXPECT_EQ(wordsOf("set FG_FORMAT=\"Gray 16bit\" 'a b'c \"\""),
              (Words{"set", "FG_FORMAT=Gray 16bit", "a bc", ""}));
}

TEST(WordSplitting, LeavesCommentsOut) {
    EXPECT_EQ(wordsOf("# nothing"), Words{});
    EXPECT_EQ(wordsOf("list # all"), Words{"list"});
    EXPECT_EQ(wordsOf("a#b"), Words{"a#b"});
    EXPECT_EQ(wordsOf(""), Words{});
}

TEST(WordSplitting, RefusesAnOpenQuote) { EXPECT_THROW(wordsOf("set \"a"), Failure); }

} // namespace orbctl
