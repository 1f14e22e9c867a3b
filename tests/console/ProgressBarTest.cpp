#include "console/ProgressBar.h"

#include <gtest/gtest.h>
#include <sstream>

namespace orbctl {

TEST(ProgressBar, FillsInStepWithTheWork) {
    EXPECT_EQ(ProgressBar::line("Acquiring", 0, 4, 29), "Acquiring [            ] 0/4");
    EXPECT_EQ(ProgressBar::line("Acquiring", 2, 4, 29), "Acquiring [######      ] 2/4");
    EXPECT_EQ(ProgressBar::line("Acquiring", 4, 4, 29), "Acquiring [############] 4/4");
}

TEST(ProgressBar, StaysBelowTheWidthOfTheTerminal) {
    for (int width = 5; width < 120; ++width)
        if (width > 15) {
            EXPECT_LT(ProgressBar::line("Acquiring", 3, 4, width).size(), static_cast<std::size_t>(width));
        }
}

TEST(ProgressBar, LeavesTheBarOutWhereThereIsNoRoom) {
    EXPECT_EQ(ProgressBar::line("Acquiring", 3, 4, 16), "Acquiring 3/4");
}

TEST(ProgressBar, NeverFillsBeyondItsEnd) {
    EXPECT_EQ(ProgressBar::line("A", 9, 4, 20), ProgressBar::line("A", 4, 4, 20));
}

TEST(ProgressBar, WritesNothingWhereTheStreamIsNoTerminal) {
    std::ostringstream stream;
    {
        ProgressBar bar(stream, Terminal::plain(), "Acquiring", 4);
        bar.show(1);
        bar.show(4);
    }
    EXPECT_EQ(stream.str(), "");
}

} // namespace orbctl
