#include "tests/grabber_basis/ConfigFileTestBase.h"
#include "tests/support/CommaLocale.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

namespace {

using namespace std::string_literals;

class FgConfigFileParserReadTest : public kavo::test::ConfigFileTestBase {};

TEST_F(FgConfigFileParserReadTest, TypeIsASubstringTestWithCase) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, true);
    EXPECT_TRUE(parser.checkFileType("a.mcf"));
    EXPECT_TRUE(parser.checkFileType("a.mcf.old")) << "deliberately not a test of the end";
    EXPECT_TRUE(parser.checkFileType("folder.mcf/a.txt"));
    EXPECT_FALSE(parser.checkFileType("a.MCF"));
    EXPECT_FALSE(parser.checkFileType("amcf"));
    EXPECT_FALSE(parser.checkFileType(""));
    EXPECT_FALSE(parser.checkFileType(nullptr));
}

TEST_F(FgConfigFileParserReadTest, FileExistsWhenItCanBeOpenedForReading) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, true);
    EXPECT_TRUE(parser.checkFileExist(mFolder.makeFile("any.name", "").c_str()));
    EXPECT_FALSE(parser.checkFileExist(mFolder.path("missing.mcf").c_str()));
    EXPECT_FALSE(parser.checkFileExist((mFolder.path("a") + std::string(5000, 'a')).c_str()));
    EXPECT_FALSE(parser.checkFileExist(nullptr));
}

TEST_F(FgConfigFileParserReadTest, FileOfTheWrongTypeOrMissingIsNotOpened) {
    const std::string wrongType = mFolder.makeFile("a.txt", "[Port A]\nk=1;\n");
    for (const std::string& path : {wrongType, mFolder.path("missing.mcf"), ""s}) {
        Fg_ConfigFileParser parser(nullptr, path.c_str(), true);
        EXPECT_EQ(parser.getFile(), nullptr);
        EXPECT_EQ(textInSection(parser, "[Port A]", "k"), notFound);
        EXPECT_EQ(textFromLine(parser, "k"), notFound);
    }
}

TEST_F(FgConfigFileParserReadTest, ReadOnlyParserCannotWriteAndTheOtherCan) {
    const std::string path = mFolder.makeFile("a.mcf", "");
    Fg_ConfigFileParser readOnly(nullptr, path.c_str(), true);
    readOnly.writeConfigFileIntKey("a", 1);
    EXPECT_TRUE(readOnly.hasWriteFailed());
    Fg_ConfigFileParser updating(nullptr, path.c_str(), false);
    updating.writeConfigFileIntKey("a", 1);
    EXPECT_FALSE(updating.hasWriteFailed());
    EXPECT_EQ(kavo::test::fileContent(path), "a=1;\n");
}

TEST_F(FgConfigFileParserReadTest, WriteThatFailedDoesNotKeepKeysFromBeingFound) {
    Fg_ConfigFileParser parser(nullptr, mFolder.makeFile("a.mcf", "[Port A]\nk=1;\n").c_str(), true);
    parser.writeConfigFileIntKey("k", 2);
    ASSERT_TRUE(parser.hasWriteFailed());
    EXPECT_EQ(textInSection(parser, "[Port A]", "k"), "1");
}

TEST_F(FgConfigFileParserReadTest, SectionTextIsLookedForInOneLineNotAcrossTwo) {
    Fg_ConfigFileParser& parser = parserOf("k=1;\n[Port\n A]\nk=2;\nx[Port\n A]y\nk=3;\n");
    EXPECT_EQ(textInSection(parser, "[Port\n", "k"), "2");
    EXPECT_EQ(textInSection(parser, "[Port\n A]", "k"), notFound);
}

TEST_F(FgConfigFileParserReadTest, LineThatEndsInTheMiddleOfAReadIsWhole) {
    std::string content = "[Port A]\n";
    for (int i = 0; i < 2000; ++i) {
        content +=
            "key" + std::to_string(i) + "=" + std::string(static_cast<std::size_t>(i % 200), 'v') + ";\n";
    }
    Fg_ConfigFileParser& parser = parserOf(content);
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(textInSection(parser, "[Port A]", ("key" + std::to_string(i)).c_str()),
                  std::string(static_cast<std::size_t>(i % 200), 'v'));
    }
}

TEST_F(FgConfigFileParserReadTest, DirectoryIsAFileWithoutKeys) {
    std::filesystem::create_directory(mFolder.path("folder.mcf"));
    Fg_ConfigFileParser parser(nullptr, mFolder.path("folder.mcf").c_str(), true);
    EXPECT_TRUE(parser.checkFileExist(mFolder.path("folder.mcf").c_str()));
    EXPECT_EQ(textFromLine(parser, "Typ"), notFound);
}

TEST_F(FgConfigFileParserReadTest, QuotedEntryGivesTheTextBetweenItsQuotes) {
    EXPECT_EQ(textFromLine(parserOf("[x]\nTyp='Orbelline';\n"), "Typ"), "Orbelline");
    EXPECT_EQ(textFromLine(parserOf("Typ='Orbelline';\r\n"), "Typ"), "Orbelline");
    EXPECT_EQ(textFromLine(parserOf("Typ='Orbelline"), "Typ"), "Orbelline");
}

TEST_F(FgConfigFileParserReadTest, UnquotedEntryDeliberatelyKeepsSemicolonAndLineEnd) {
    EXPECT_EQ(textFromLine(parserOf("Typ=Orbelline;\r\n"), "Typ"), "Orbelline;\r\n");
}

TEST_F(FgConfigFileParserReadTest, HeaderKeyIsFoundAnywhereInALineFirstOccurrenceFirst) {
    EXPECT_EQ(textFromLine(parserOf("MyTypes='first';\nTyp='second';\n"), "Typ"), "first");
    EXPECT_EQ(textFromLine(parserOf("a='Typ';\nTyp='second';\n"), "Typ"), "Typ");
    EXPECT_EQ(textFromLine(parserOf("typ='first';\n"), "Typ"), notFound);
}

TEST_F(FgConfigFileParserReadTest, HeaderLineWithoutASecondPieceGivesTheEmptyText) {
    EXPECT_EQ(textFromLine(parserOf("Typ"), "Typ"), "");
    EXPECT_EQ(textFromLine(parserOf("='Typ'="), "Typ"), "");
}

TEST_F(FgConfigFileParserReadTest, KeyIsFoundBehindItsSection) {
    Fg_ConfigFileParser& parser = parserOf("FG_WIDTH=1;\n[Port A]\nFG_WIDTH=2;\n[Port B]\nFG_WIDTH=3;\n");
    EXPECT_EQ(textInSection(parser, "[Port A]", "FG_WIDTH"), "2");
    EXPECT_EQ(textInSection(parser, "[Port B]", "FG_WIDTH"), "3");
    EXPECT_EQ(textInSection(parser, "[Port C]", "FG_WIDTH"), notFound);
    EXPECT_EQ(textInSection(parser, "Port", "FG_WIDTH"), "2") << "a section is found by part of its line";
}

TEST_F(FgConfigFileParserReadTest, KeyMissingInItsSectionIsDeliberatelyTakenFromALaterOne) {
    Fg_ConfigFileParser& parser = parserOf("[Port A]\nFG_HEIGHT=1;\n\n[Port B]\nFG_WIDTH=64;\n");
    int value = 0;
    EXPECT_EQ(parser.parseIntKeySection(0, "FG_WIDTH", &value), 0);
    EXPECT_EQ(value, 64);
    EXPECT_EQ(parser.parseIntKeySection(1, "FG_HEIGHT", &value), -1) << "never from an earlier one";
}

TEST_F(FgConfigFileParserReadTest, FirstOfTwoEqualKeysCounts) {
    EXPECT_EQ(textInSection(parserOf("[Port A]\nk=1;\nk=2;\n"), "[Port A]", "k"), "1");
}

TEST_F(FgConfigFileParserReadTest, KeyOnTheSectionsOwnLineIsNotSeen) {
    EXPECT_EQ(textInSection(parserOf("k=[Port A];\nk=2;\n"), "[Port A]", "k"), "2");
    EXPECT_EQ(textInSection(parserOf("k=[Port A];\n"), "[Port A]", "k"), notFound);
}

TEST_F(FgConfigFileParserReadTest, KeyStandsAtTheBeginningAndAnEqualsSignRightBehind) {
    for (const char* line : {"FG_WIDTH_MAX=5;", " FG_WIDTH=5;", "FG_WIDTH =5;", "FG_WIDTH", "XFG_WIDTH=5;"}) {
        EXPECT_EQ(textInSection(parserOf("[Port A]\n"s + line + "\n"), "[Port A]", "FG_WIDTH"), notFound)
            << line;
    }
}

TEST_F(FgConfigFileParserReadTest, KeyWithAnEqualsSignIsComparedWhole) {
    Fg_ConfigFileParser& parser = parserOf("s\na=c=1;\na=b=2;\na=b;\n");
    EXPECT_EQ(textInSection(parser, "s", "a=b"), "b");
    EXPECT_EQ(textInSection(parser, "s", "a=x"), notFound);
    EXPECT_EQ(textInSection(parserOf("s\n=5;\n"), "s", ""), "");
}

TEST_F(FgConfigFileParserReadTest, ValueEndsAtASeparator) {
    EXPECT_EQ(textInSection(parserOf("s\nk=a;b\n"), "s", "k"), "a");
    EXPECT_EQ(textInSection(parserOf("s\nk='/a b/c.lut';\n"), "s", "k"), "/a b/c.lut");
    EXPECT_EQ(textInSection(parserOf("s\nk=a=b;\n"), "s", "k"), "a");
    EXPECT_EQ(textInSection(parserOf("s\nk=5\n"), "s", "k"), "5\n") << "no separator: the line end stays";
    EXPECT_EQ(textInSection(parserOf("s\nk=5"), "s", "k"), "5");
    EXPECT_EQ(textInSection(parserOf("s\r\nk=5;\r\n"), "s", "k"), "5");
}

TEST_F(FgConfigFileParserReadTest, EmptyValueGivesTheEmptyTextAndTheNumberZero) {
    for (const char* line : {"k=;\n", "k='';\n", "k=\n", "k=\r\n", "k=;\r\n", "k=", "k=;"}) {
        Fg_ConfigFileParser& parser = parserOf("[Port A]\n"s + line);
        EXPECT_EQ(textInSection(parser, "[Port A]", "k"), "") << line;
        int value = 7;
        EXPECT_EQ(parser.parseIntKeySection(0, "k", &value), 0) << line;
        EXPECT_EQ(value, 0) << line;
    }
}

TEST_F(FgConfigFileParserReadTest, MissingKeyDeliberatelyWritesErrorWithoutATerminator) {
    Fg_ConfigFileParser& parser = parserOf("[Port A]\n");
    char value[] = "0123456789";
    EXPECT_EQ(parser.parseKey("[Port A]", "k", value), -8000);
    EXPECT_STREQ(value, "Error56789");
    char other[] = "abcdefghij";
    EXPECT_EQ(parser.parseKey("[Port B]", "k", other), -8000);
    EXPECT_STREQ(other, "Errorfghij");
    char third[] = "abcdefghij";
    EXPECT_EQ(parser.parseKeyFromLine("Typ", third), -8000);
    EXPECT_STREQ(third, "Errorfghij");
}

TEST_F(FgConfigFileParserReadTest, NullTextsAreNotFound) {
    Fg_ConfigFileParser& parser = parserOf("[Port A]\nk=1;\n");
    EXPECT_EQ(textInSection(parser, nullptr, "k"), notFound);
    EXPECT_EQ(textInSection(parser, "[Port A]", nullptr), notFound);
    EXPECT_EQ(textFromLine(parser, nullptr), notFound);
    char text[] = "kept";
    int number = 7;
    std::uint64_t big = 7;
    double real = 7;
    EXPECT_EQ(parser.parseKeySection(0, nullptr, text), -1);
    EXPECT_EQ(parser.parseIntKeySection(0, nullptr, &number), -1);
    EXPECT_EQ(parser.parseUInt64KeySection(0, nullptr, &big), -1);
    EXPECT_EQ(parser.parseDoubleKeySection(0, nullptr, &real), -1);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(number, 7);
}

TEST_F(FgConfigFileParserReadTest, TypedLookups) {
    Fg_ConfigFileParser& parser =
        parserOf("[Kamerasektion]\n\nAktivePort=3;\n[Port A]\ni=-5;\nu=18446744073709551615;\n"
                 "d=0.25;\nt='text';\n");
    int number = 0;
    EXPECT_EQ(parser.parseIntKeyFromHeader("AktivePort", &number), 0);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(parser.parseIntKey("[Port A]", "i", &number), 0);
    EXPECT_EQ(number, -5);
    std::uint64_t big = 0;
    EXPECT_EQ(parser.parseUInt64Key("[Port A]", "u", &big), 0);
    EXPECT_EQ(big, 18446744073709551615ULL);
    EXPECT_EQ(parser.parseUInt64KeySection(0, "u", &big), 0);
    double real = 0;
    EXPECT_EQ(parser.parseDoubleKey("[Port A]", "d", &real), 0);
    EXPECT_EQ(real, 0.25);
    char text[Fg_ConfigFileParser::valueBytes];
    EXPECT_EQ(parser.parseKeySection(0, "t", text), 0);
    EXPECT_STREQ(text, "text");
}

TEST_F(FgConfigFileParserReadTest, HeaderSectionIsFoundWithASingleLineFeedOnly) {
    int number = 0;
    EXPECT_EQ(parserOf("[Kamerasektion]\r\nAktivePort=0;\r\n").parseIntKeyFromHeader("AktivePort", &number),
              -1);
    EXPECT_EQ(parserOf("[Kamerasektion]").parseIntKeyFromHeader("AktivePort", &number), -1);
}

TEST_F(FgConfigFileParserReadTest, TextWithErrorInItIsDeliberatelyAMissingNumber) {
    Fg_ConfigFileParser& parser = parserOf("[Port A]\nk=5 Errors;\n");
    int number = 7;
    EXPECT_EQ(parser.parseIntKeySection(0, "k", &number), -1);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(textInSection(parser, "[Port A]", "k"), "5 Errors");
}

TEST_F(FgConfigFileParserReadTest, MissingNumberLeavesTheOutputUntouched) {
    Fg_ConfigFileParser& parser = parserOf("[Port A]\n");
    int number = 7;
    std::uint64_t big = 7;
    double real = 7;
    EXPECT_EQ(parser.parseIntKeySection(0, "k", &number), -1);
    EXPECT_EQ(parser.parseUInt64KeySection(0, "k", &big), -1);
    EXPECT_EQ(parser.parseDoubleKeySection(0, "k", &real), -1);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(big, 7U);
    EXPECT_EQ(real, 7.0);
}

TEST_F(FgConfigFileParserReadTest, TextThatIsNoNumberIsZero) {
    for (const char* text : {"abc", "nan", "-", "\xc3\xa4", "true"}) {
        Fg_ConfigFileParser& parser = parserOf("[Port A]\nk="s + text + ";\n");
        int number = 7;
        double real = 7;
        EXPECT_EQ(parser.parseIntKeySection(0, "k", &number), 0) << text;
        EXPECT_EQ(parser.parseDoubleKeySection(0, "k", &real), 0) << text;
        EXPECT_EQ(number, 0) << text;
        EXPECT_EQ(real, 0.0) << text;
    }
}

TEST_F(FgConfigFileParserReadTest, ConversionsAloneAnswerZero) {
    const Fg_ConfigFileParser parser(nullptr, nullptr, true);
    int number = 0;
    std::uint64_t big = 0;
    double real = 0;
    EXPECT_EQ(parser.getIntValue("12;", &number), 0);
    EXPECT_EQ(parser.getUInt64Value("13;", &big), 0);
    EXPECT_EQ(parser.getDoubleValue("1.5;", &real), 0);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(big, 13U);
    EXPECT_EQ(real, 1.5);
}

TEST_F(FgConfigFileParserReadTest, DecimalPointIsReadUnderACommaLocale) {
    const kavo::test::CommaLocale locale;
    double real = 0;
    EXPECT_EQ(parserOf("[Port A]\nk=1.5;\n").parseDoubleKeySection(0, "k", &real), 0);
    EXPECT_EQ(real, 1.5);
}

TEST_F(FgConfigFileParserReadTest, LineOver255CharactersIsReadAsSeveral) {
    const std::string padding(255, 'x');
    EXPECT_EQ(textInSection(parserOf("s\n" + padding + "k=1;\n"), "s", "k"), "1")
        << "the second piece begins with the key";
    EXPECT_EQ(textInSection(parserOf("s\nk=" + std::string(400, 'v') + ";\n"), "s", "k"),
              std::string(253, 'v'));
    EXPECT_EQ(textFromLine(parserOf("Typ='" + std::string(400, 'v') + "';\n"), "Typ"), std::string(250, 'v'));
}

TEST_F(FgConfigFileParserReadTest, LongestValueFitsItsBuffer) {
    std::string value(Fg_ConfigFileParser::valueBytes + 1, '#');
    EXPECT_EQ(parserOf("s\nk=" + std::string(300, 'v')).parseKey("s", "k", value.data()), 0);
    EXPECT_EQ(value.back(), '#') << "nothing behind the buffer is written";
    EXPECT_EQ(std::string(value.c_str()).size(), 253U);
}

TEST_F(FgConfigFileParserReadTest, NulsCutTheirLine) {
    EXPECT_EQ(textInSection(parserOf("s\nk=1\0002;\nj=3;\n"s), "s", "k"), "1");
    EXPECT_EQ(textInSection(parserOf("s\nk=1\0002;\nj=3;\n"s), "s", "j"), "3");
    EXPECT_EQ(textInSection(parserOf("\0s\nk=1;\n"s), "s", "k"), notFound);
}

TEST_F(FgConfigFileParserReadTest, EmptyFileHasNothing) {
    Fg_ConfigFileParser& parser = parserOf("");
    EXPECT_EQ(textInSection(parser, "", ""), notFound);
    EXPECT_EQ(textFromLine(parser, ""), notFound);
}

TEST_F(FgConfigFileParserReadTest, EndlessFileIsCutAndNothingIsFound) {
    std::filesystem::create_symlink("/dev/zero", mFolder.path("endless.mcf"));
    Fg_ConfigFileParser parser(nullptr, mFolder.path("endless.mcf").c_str(), true);
    EXPECT_EQ(textInSection(parser, "[Port A]", "k"), notFound);
}

/// The answer that reading the whole file anew for each lookup gives.
std::string answerByRescanning(const std::string& content, const std::string& section,
                               const std::string& key) {
    bool isBehindSection = false;
    std::size_t begin = 0;
    while (begin < content.size()) {
        const std::size_t newline = content.find('\n', begin);
        const std::size_t end =
            std::min({begin + 255, newline == std::string::npos ? newline : newline + 1, content.size()});
        const std::string line = content.substr(begin, end - begin);
        begin = end;
        if (isBehindSection && line.compare(0, key.size() + 1, key + "=") == 0) {
            return line;
        }
        isBehindSection = isBehindSection || line.find(section) != std::string::npos;
    }
    return "";
}

TEST_F(FgConfigFileParserReadTest, IndexAnswersAsRescanningWould) {
    const char* const words[] = {"[A]", "[B]", "a", "b", "ab", "=", "=", "\n", "\n", "[A]\n"};
    unsigned state = 1;
    for (int file = 0; file < 300; ++file) {
        std::string content;
        for (int i = 0; i < 60; ++i) {
            state = state * 1664525U + 1013904223U;
            content += words[(state >> 16) % std::size(words)];
        }
        kavo::text::TextFile text;
        ASSERT_TRUE(text.open(mFolder.makeFile("random", content).c_str(), "r"));
        ConfigFileIndex index(text.stream());
        for (const char* section : {"[A]", "[B]", "b", ""}) {
            for (const char* key : {"a", "b", "ab", "", "a=b", "[A]a"}) {
                ASSERT_EQ(index.findKeyLine(section, key).value_or(""),
                          answerByRescanning(content, section, key))
                    << content << "\nsection " << section << " key " << key;
            }
        }
    }
}

TEST_F(FgConfigFileParserReadTest, LookupsDoNotReadTheFileAgain) {
    std::string content = "[Port A]\n";
    constexpr int keyCount = 20000;
    for (int i = 0; i < keyCount; ++i) {
        content += "key" + std::to_string(i) + "=" + std::to_string(i) + ";\n";
    }
    Fg_ConfigFileParser& parser = parserOf(content);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < keyCount; ++i) {
        int value = -1;
        ASSERT_EQ(parser.parseIntKeySection(0, ("key" + std::to_string(i)).c_str(), &value), 0);
        ASSERT_EQ(value, i);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20))
        << "rescanning would take minutes";
}

} // namespace
