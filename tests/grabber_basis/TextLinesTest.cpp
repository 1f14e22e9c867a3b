#include "grabber_basis/TextLines.h"
#include "grabber_basis/TextFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace kavo::text;
using kavo::test::fileContent;
using namespace std::string_literals;

class TextLinesTest : public testing::Test {
  protected:
    std::vector<std::string> linesOf(std::string_view content) const {
        TextFile file;
        file.open(mFolder.makeFile("text", content).c_str(), "r");
        LineReader reader(file.stream());
        std::vector<std::string> lines;
        while (reader.next()) {
            lines.emplace_back(reader.line());
        }
        return lines;
    }

    kavo::test::TemporaryFolder mFolder;
};

using Lines = std::vector<std::string>;

TEST_F(TextLinesTest, LinesKeepTheirEnd) {
    EXPECT_EQ(linesOf("a\n\nb\r\nc"), (Lines{"a\n", "\n", "b\r\n", "c"}));
}

TEST_F(TextLinesTest, EmptyFileHasNoLines) { EXPECT_EQ(linesOf(""), Lines{}); }

TEST_F(TextLinesTest, LongLineComesInPiecesOf255) {
    const std::string full(255, 'x');
    EXPECT_EQ(linesOf(full + "\n"), (Lines{full, "\n"}));
    EXPECT_EQ(linesOf(full + full + "yz\n"), (Lines{full, full, "yz\n"}));
    EXPECT_EQ(linesOf(std::string(254, 'x') + "\n"), Lines{std::string(254, 'x') + "\n"});
}

TEST_F(TextLinesTest, WhatFollowsANulInALineIsDropped) {
    EXPECT_EQ(linesOf("a\0b\nc\n"s), (Lines{"a", "c\n"}));
    EXPECT_EQ(linesOf("\0\0\n"s), Lines{""});
}

TEST_F(TextLinesTest, ReaderStartsAtTheBeginningEachTime) {
    TextFile file;
    file.open(mFolder.makeFile("text", "a\nb\n").c_str(), "r");
    for (int i = 0; i < 2; ++i) {
        LineReader reader(file.stream());
        ASSERT_TRUE(reader.next());
        EXPECT_EQ(reader.line(), "a\n");
    }
}

TEST_F(TextLinesTest, NoFileHasNoLines) {
    LineReader reader(nullptr);
    EXPECT_FALSE(reader.next());
}

TEST_F(TextLinesTest, SecondPieceIsBetweenTheFirstAndTheSecondRunOfSeparators) {
    EXPECT_EQ(secondPiece("Typ='Orbelline';\n", CharacterSet("='")), "Orbelline");
    EXPECT_EQ(secondPiece("Version=2.2;\n", CharacterSet("='")), "2.2;\n");
    EXPECT_EQ(secondPiece("FG_WIDTH=1024;\n", CharacterSet("=;'")), "1024");
    EXPECT_EQ(secondPiece("='=a==b=c", CharacterSet("='")), "b");
}

TEST_F(TextLinesTest, MissingSecondPieceIsEmpty) {
    for (const char* line : {"", "a", "a=", "=", "===", "=a="}) {
        EXPECT_EQ(secondPiece(line, CharacterSet("=")), "") << line;
    }
    EXPECT_EQ(secondPiece("a=b", CharacterSet("")), "");
}

TEST_F(TextLinesTest, WritesAreInTheFileAtOnce) {
    TextFile file;
    ASSERT_TRUE(file.open(mFolder.path("out").c_str(), "w"));
    file.write("first\n");
    EXPECT_EQ(fileContent(mFolder.path("out")), "first\n");
    EXPECT_FALSE(file.hasWriteFailed());
}

TEST_F(TextLinesTest, RemembersAWriteThatFailedUntilAnotherFileIsOpened) {
    TextFile file;
    ASSERT_TRUE(file.open("/dev/full", "w"));
    file.write("lost");
    EXPECT_TRUE(file.hasWriteFailed());
    ASSERT_TRUE(file.open(mFolder.path("out").c_str(), "w"));
    EXPECT_FALSE(file.hasWriteFailed());
}

TEST_F(TextLinesTest, WritingWithoutAFileFails) {
    TextFile file;
    file.write("lost");
    EXPECT_TRUE(file.hasWriteFailed());
}

TEST_F(TextLinesTest, StreamOfAReplacedFileStaysUsable) {
    TextFile file;
    file.open(mFolder.path("first").c_str(), "w");
    std::FILE* const first = file.stream();
    file.open(mFolder.path("second").c_str(), "w");
    std::fputs("late", first);
    std::fflush(first);
    EXPECT_EQ(fileContent(mFolder.path("first")), "late");
}

TEST_F(TextLinesTest, FailedOpeningLeavesNoFileOpen) {
    TextFile file;
    file.open(mFolder.path("first").c_str(), "w");
    EXPECT_FALSE(file.open(mFolder.path("missing/second").c_str(), "w"));
    EXPECT_EQ(file.stream(), nullptr);
    EXPECT_FALSE(file.open(nullptr, "r"));
    EXPECT_FALSE(TextFile::canBeRead(nullptr));
}

TEST_F(TextLinesTest, TellsWhetherReadingFailed) {
    TextFile file;
    EXPECT_FALSE(file.hasReadFailed());
    file.open(mFolder.path("").c_str(), "r");
    LineReader reader(file.stream());
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(file.hasReadFailed()) << "a directory opens but cannot be read";
}

} // namespace
