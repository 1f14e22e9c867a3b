#include "tests/applet/SetterFaults.h"

using OutputFormat = OnBothPorts;
FOR_BOTH_PORTS(OutputFormat);

TEST_P(OutputFormat, FormatSelectsTheWordLength) {
    struct {
        unsigned format, select;
    } const cases[] = {{1, 0}, {3, 1}};
    for (const auto& [format, select] : cases) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_FORMAT, format, port()), 0);
        const std::vector<RecordedWrite> expected{
            processWrite(port(), "OutputFormat_FG_FORMAT_SelectSource", select)};
        EXPECT_EQ(AppletOnBoard::writes(), expected);
        EXPECT_EQ(applet.get(FG_FORMAT, port()), format);
        EXPECT_EQ(applet.get(FG_FORMAT, otherPort()), 3U);
    }
}

TEST_P(OutputFormat, AlignmentIsWrittenAsItIsWhateverTheFormat) {
    for (const unsigned format : {1U, 3U}) {
        ASSERT_EQ(applet.set(FG_FORMAT, format, port()), 0);
        for (const unsigned alignment : {0U, 1U}) {
            AppletOnBoard::forgetCalls();
            ASSERT_EQ(applet.set(FG_BITALIGNMENT, alignment, port()), 0);
            const std::vector<RecordedWrite> expected{
                processWrite(port(), "OutputFormat_FG_BITALIGNMENT_Value", alignment)};
            EXPECT_EQ(AppletOnBoard::writes(), expected);
            EXPECT_EQ(applet.get(FG_BITALIGNMENT, port()), alignment);
            EXPECT_EQ(applet.get(FG_FORMAT, port()), format);
            EXPECT_EQ(applet.get(FG_BITALIGNMENT, otherPort()), 1U);
        }
    }
}

TEST_P(OutputFormat, ValuesWithoutAnEntryAreRefused) {
    struct {
        int id;
        unsigned value;
    } const cases[] = {{FG_FORMAT, 0},       {FG_FORMAT, 2},       {FG_FORMAT, 4},
                       {FG_FORMAT, 0x10003}, {FG_BITALIGNMENT, 2}, {FG_BITALIGNMENT, 0xFFFFFFFF}};
    for (const auto& [id, value] : cases) {
        const unsigned before = applet.get(id, port());
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(id, value, port()), -6000);
        EXPECT_EQ(applet.get(id, port()), before);
        EXPECT_TRUE(AppletOnBoard::writes().empty());
    }
}

TEST_P(OutputFormat, AFailedWriteLeavesTheParameterAsItWas) {
    expectEachFailedWriteToBeUndone(applet, FG_FORMAT, port(), 3U, 1U, 1);
    expectEachFailedWriteToBeUndone(applet, FG_BITALIGNMENT, port(), 1U, 0U, 1);
}

TEST_P(OutputFormat, PixelDepthIsThatOfTheProcessing) {
    for (const unsigned format : {3U, 1U}) {
        ASSERT_EQ(applet.set(FG_FORMAT, format, port()), 0);
        EXPECT_EQ(applet.get(FG_PIXELDEPTH, port()), 12U);
        EXPECT_EQ(applet.set(FG_PIXELDEPTH, 8U, port()), -12);
    }
}
