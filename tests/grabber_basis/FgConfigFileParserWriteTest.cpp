#include "tests/grabber_basis/ConfigFileTestBase.h"
#include "tests/grabber_basis/OpenLog.h"
#include "tests/support/CommaLocale.h"

#include <filesystem>
#include <limits>
#include <string>

namespace {

using kavo::test::fileContent;

class FgConfigFileParserWriteTest : public kavo::test::ConfigFileTestBase {
  protected:
    FgConfigFileParserWriteTest() { EXPECT_TRUE(mParser.setSaveFile(mPath.c_str())); }
    std::string content() const { return fileContent(mPath); }

    std::string mPath = mFolder.path("saved.mcf");
    Fg_ConfigFileParser mParser{nullptr, nullptr, true};
};

TEST_F(FgConfigFileParserWriteTest, HeaderIsSectionEmptyLineAndVersion) {
    mParser.writeConfigFileHeader();
    EXPECT_EQ(content(), "[Kamerasektion]\n\nConfigFileVersion=2.0;\n");
}

TEST_F(FgConfigFileParserWriteTest, WholeFileByteForByte) {
    mParser.writeConfigFileHeader();
    mParser.writeConfigFile("Hersteller", "Kavotronic GmbH");
    mParser.writeConfigFile("Typ", "Orbelline");
    mParser.writeConfigFile("Version", "2.2");
    mParser.writeConfigFileIntKey("LoadAppletId", 0);
    mParser.writeConfigFileIntKey("AktivePort", 0);
    mParser.writeConfigFilePortA();
    mParser.writeConfigFileIntKey("FG_WIDTH", 1024);
    mParser.writeConfigFile("FG_LUT_CUSTOM_FILE", "");
    mParser.writeConfigFileDoubleKey("FG_PROCESSING_GAIN", 1.5);
    mParser.writeConfigFilePortB();
    mParser.writeConfigFileValue("FG_WIDTH", "16");
    EXPECT_EQ(content(), "[Kamerasektion]\n"
                         "\n"
                         "ConfigFileVersion=2.0;\n"
                         "Hersteller='Kavotronic GmbH';\n"
                         "Typ='Orbelline';\n"
                         "Version='2.2';\n"
                         "LoadAppletId=0;\n"
                         "AktivePort=0;\n"
                         "\n"
                         "[Port A]\n"
                         "FG_WIDTH=1024;\n"
                         "FG_LUT_CUSTOM_FILE='';\n"
                         "FG_PROCESSING_GAIN=1.5;\n"
                         "\n"
                         "[Port B]\n"
                         "FG_WIDTH=16;\n");
}

TEST_F(FgConfigFileParserWriteTest, EveryEntryIsInTheFileAtOnce) {
    mParser.writeConfigFileIntKey("a", 1);
    EXPECT_EQ(content(), "a=1;\n");
    mParser.writeConfigFilePortA();
    EXPECT_EQ(content(), "a=1;\n\n[Port A]\n");
}

TEST_F(FgConfigFileParserWriteTest, NumbersAtTheirLimits) {
    mParser.writeConfigFileIntKey("least", std::numeric_limits<int>::min());
    mParser.writeConfigFileIntKey("most", std::numeric_limits<int>::max());
    mParser.writeConfigFileUInt64Key("long", std::numeric_limits<std::uint64_t>::max());
    mParser.writeConfigFileDoubleKey("width", 4000.0);
    mParser.writeConfigFileDoubleKey("third", 1.0 / 3.0);
    mParser.writeConfigFileDoubleKey("small", -1.7976931348623157e-308);
    EXPECT_EQ(content(), "least=-2147483648;\nmost=2147483647;\nlong=18446744073709551615;\nwidth=4000;\n"
                         "third=0.333333333333;\nsmall=-1.79769313486e-308;\n");
}

TEST_F(FgConfigFileParserWriteTest, NumbersHaveADecimalPointUnderACommaLocale) {
    const kavo::test::CommaLocale locale;
    mParser.writeConfigFileIntKey("rate", 1234567);
    mParser.writeConfigFileDoubleKey("debounce", 1234.5);
    EXPECT_EQ(content(), "rate=1234567;\ndebounce=1234.5;\n");
    Fg_ConfigFileParser& reader = parserOf("[Port A]\ndebounce=1234.5;\n");
    double value = 0;
    EXPECT_EQ(reader.parseDoubleKeySection(0, "debounce", &value), 0);
    EXPECT_EQ(value, 1234.5);
}

TEST_F(FgConfigFileParserWriteTest, PortsAreLettersFromA) {
    EXPECT_EQ(Fg_ConfigFileParser::getPortString(0), "[Port A]");
    EXPECT_EQ(Fg_ConfigFileParser::getPortString(1), "[Port B]");
    EXPECT_EQ(Fg_ConfigFileParser::getPortString(3), "[Port D]");
    mParser.writeConfigFileByPort(2);
    EXPECT_EQ(content(), "\n[Port C]\n");
}

TEST_F(FgConfigFileParserWriteTest, NullTextsAreEmpty) {
    mParser.writeConfigFile("key", nullptr);
    mParser.writeConfigFileValue(nullptr, nullptr);
    EXPECT_EQ(content(), "key='';\n=;\n");
}

TEST_F(FgConfigFileParserWriteTest, SaveFileEmptiesAFileThatExists) {
    const std::string path = mFolder.makeFile("old.mcf", "old content");
    EXPECT_TRUE(mParser.setSaveFile(path.c_str()));
    EXPECT_EQ(fileContent(path), "");
}

TEST_F(FgConfigFileParserWriteTest, SaveFileOfTheWrongTypeIsRefusedAndLeftAlone) {
    const std::string path = mFolder.makeFile("kept.MCF", "kept");
    EXPECT_FALSE(mParser.setSaveFile(path.c_str()));
    EXPECT_FALSE(mParser.setSaveFile(nullptr));
    EXPECT_EQ(fileContent(path), "kept");
    mParser.writeConfigFileIntKey("a", 1);
    EXPECT_EQ(content(), "a=1;\n") << "the file before stays open";
}

TEST_F(FgConfigFileParserWriteTest, SaveFileThatCannotBeOpenedLeavesNoFile) {
    EXPECT_FALSE(mParser.setSaveFile(mFolder.path("missing/a.mcf").c_str()));
    std::filesystem::create_directory(mFolder.path("folder.mcf"));
    EXPECT_FALSE(mParser.setSaveFile(mFolder.path("folder.mcf").c_str()));
    EXPECT_EQ(mParser.getFile(), nullptr);
    mParser.writeConfigFileIntKey("a", 1);
    EXPECT_TRUE(mParser.hasWriteFailed());
    EXPECT_EQ(content(), "");
}

TEST_F(FgConfigFileParserWriteTest, ReplacedFileIsDeliberatelyNotClosedBeforeTheParserEnds) {
    std::FILE* const first = mParser.getFile();
    EXPECT_TRUE(mParser.setSaveFile(mFolder.path("second.mcf").c_str()));
    EXPECT_NE(mParser.getFile(), first);
    std::fputs("late", first);
    std::fflush(first);
    EXPECT_EQ(content(), "late");
}

TEST_F(FgConfigFileParserWriteTest, ParserLeavesNoDescriptorBehind) {
    const auto countDescriptors = [] {
        const std::filesystem::directory_iterator entries("/proc/self/fd");
        return std::distance(begin(entries), end(entries));
    };
    const auto before = countDescriptors();
    {
        Fg_ConfigFileParser parser(nullptr, mPath.c_str(), true);
        parser.setSaveFile(mFolder.path("second.mcf").c_str());
        parser.setSaveFile(mFolder.path("third.mcf").c_str());
        EXPECT_EQ(countDescriptors(), before + 3);
    }
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(FgConfigFileParserWriteTest, FullDiskIsTold) {
    std::filesystem::create_symlink("/dev/full", mFolder.path("full.mcf"));
    EXPECT_TRUE(mParser.setSaveFile(mFolder.path("full.mcf").c_str()));
    EXPECT_FALSE(mParser.hasWriteFailed());
    mParser.writeConfigFileHeader();
    EXPECT_TRUE(mParser.hasWriteFailed());
}

TEST_F(FgConfigFileParserWriteTest, SuccessfulWritesAreNoFailure) {
    mParser.writeConfigFileHeader();
    EXPECT_FALSE(mParser.hasWriteFailed());
}

TEST_F(FgConfigFileParserWriteTest, WritesAreSeenByTheNextLookup) {
    const std::string path = mFolder.makeFile("update.mcf", "[Port A]\n");
    Fg_ConfigFileParser parser(nullptr, path.c_str(), false);
    int value = 0;
    EXPECT_EQ(parser.parseIntKeySection(0, "FG_WIDTH", &value), -1);
    parser.writeConfigFileIntKey("FG_WIDTH", 32);
    EXPECT_EQ(parser.parseIntKeySection(0, "FG_WIDTH", &value), 0);
    EXPECT_EQ(value, 32);
    std::fputs("FG_HEIGHT=8;\n", parser.getFile());
    EXPECT_EQ(parser.parseIntKeySection(0, "FG_HEIGHT", &value), 0);
    EXPECT_EQ(value, 8);
}

class FgConfigFileParserLogTest : public kavo::test::ConfigFileTestBase {
  protected:
    std::string logOfSaving(const std::string& path) {
        kavo::test::OpenLog log(mFolder.path("log"));
        Fg_ConfigFileParser parser(&log, nullptr, true);
        const std::size_t before = fileContent(mFolder.path("log")).size();
        parser.setSaveFile(path.c_str());
        return fileContent(mFolder.path("log")).substr(before);
    }
};

TEST_F(FgConfigFileParserLogTest, SuccessIsInformationOnly) {
    EXPECT_EQ(logOfSaving(mFolder.path("a.mcf")), "");
}

TEST_F(FgConfigFileParserLogTest, FileThatCannotBeOpenedIsAnError) {
    EXPECT_EQ(logOfSaving(mFolder.path("missing/a.mcf")),
              "lumacardIV::Error >> Config File: fopen failed;\n");
}

TEST_F(FgConfigFileParserLogTest, FileOfTheWrongTypeIsAnError) {
    EXPECT_EQ(logOfSaving(mFolder.path("a.txt")), "lumacardIV::Error >> File type not ok;\n"
                                                  "lumacardIV::Error >> Config File is Invalid;\n");
}

TEST_F(FgConfigFileParserLogTest, MissingFileIsAnError) {
    {
        kavo::test::OpenLog log(mFolder.path("log"));
        Fg_ConfigFileParser parser(&log, mFolder.path("missing.mcf").c_str(), true);
    }
    EXPECT_EQ(fileContent(mFolder.path("log")), "lumacardIV::Error >> Config File don't exist;\n");
}

} // namespace
