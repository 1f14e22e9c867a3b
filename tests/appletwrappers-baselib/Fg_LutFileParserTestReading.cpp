#include "tests/appletwrappers-baselib/LutFileTestBase.h"
#include "tests/support/CommaLocale.h"

#include <chrono>
#include <filesystem>
#include <numeric>

namespace {

using namespace std::string_literals;
using Values = std::vector<std::uint32_t>;
using Knees = std::vector<double>;

class LutFileReading : public kavo::test::LutFileTestBase {
  protected:
    /// The values of a gray table with this many elements, whose entry lines are given.
    Values grayValues(int nrOfElements, const std::string& entries) {
        LookupTable_s table;
        const std::string content = "[gray]\nnrOfElements=" + std::to_string(nrOfElements) + ";\n" + entries;
        EXPECT_EQ(mParser.getLutFromFile(fileOf(content).c_str(), table, "[gray]"), 0);
        return valuesOf(table);
    }
};

TEST_F(LutFileReading, GrayTableOf4096EntriesComesBackAsItWasSaved) {
    Values values(4096);
    std::iota(values.rbegin(), values.rend(), 0U);
    LookupTable_s table = tableOf(values);
    table.format = 5;
    table.number = 9;
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), table), 0);
    LookupTable_s read = tableOf({1, 2, 3});
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), read, "[gray]"), 0);
    EXPECT_EQ(valuesOf(read), values);
    EXPECT_EQ(read.id, 3U);
    EXPECT_EQ(read.nrOfElements, 4096U);
    EXPECT_EQ(read.format, 5U);
    EXPECT_EQ(read.number, 9);
}

TEST_F(LutFileReading, UnsignedValuesAbove31BitsComeBack) {
    const Values values = {4294967295U, 2147483648U, 2147483647U};
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), tableOf(values)), 0);
    LookupTable_s read;
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), read, "[gray]"), 0);
    EXPECT_EQ(valuesOf(read), values);
}

TEST_F(LutFileReading, ThreeChannelsComeBack) {
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), tableOf({1, 2}), tableOf({3, 4}), tableOf({5, 6})), 0);
    LookupTable_s red;
    LookupTable_s green;
    LookupTable_s blue;
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), red, green, blue), 0);
    EXPECT_EQ(valuesOf(red), (Values{1, 2}));
    EXPECT_EQ(valuesOf(green), (Values{3, 4}));
    EXPECT_EQ(valuesOf(blue), (Values{5, 6}));
}

TEST_F(LutFileReading, KeysOfTheFirstChannelDeliberatelyCountForAllThree) {
    LookupTable_s first = tableOf({1});
    LookupTable_s other = tableOf({3, 4, 5});
    other.id = 8;
    other.format = 8;
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), first, other, other), 0);
    LookupTable_s red;
    LookupTable_s green;
    LookupTable_s blue;
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), red, green, blue), 0);
    EXPECT_EQ(valuesOf(green), Values{3});
    EXPECT_EQ(green.id, 3U);
    EXPECT_EQ(blue.format, 0U);
}

TEST_F(LutFileReading, ShortChannelRunsIntoTheNextOne) {
    const std::string content = "nrOfElements=3;\n[red]\n0,1;\n[green]\n0,7;\n1,8;\n[blue]\n";
    LookupTable_s red;
    ASSERT_EQ(mParser.getLutFromFile(fileOf(content).c_str(), red, "[red]"), 0);
    EXPECT_EQ(valuesOf(red), (Values{1, 8, 0}));
}

TEST_F(LutFileReading, ThreeChannelReadStopsAtTheFirstFailure) {
    LookupTable_s red = tableOf({1});
    LookupTable_s green = tableOf({2});
    LookupTable_s blue = tableOf({3});
    EXPECT_EQ(mParser.getLutFromFile(mFolder.path("missing.lut").c_str(), red, green, blue), -1);
    EXPECT_EQ(red.lut, nullptr);
    EXPECT_EQ(valuesOf(green), Values{2});
    KneeLookupTable_s knees[3] = {kneesOf({1}), kneesOf({2}), kneesOf({3})};
    EXPECT_EQ(mParser.getLutFromFile(mFolder.path("missing.lut").c_str(), knees[0], knees[1], knees[2]), -1);
    EXPECT_EQ(knees[0].value, nullptr);
    EXPECT_EQ(valuesOf(knees[1]), Knees{2});
}

TEST_F(LutFileReading, KneesComeBackInTheNumberThatTheRecordTells) {
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({0.1, -2, 3e10}), "[knee]"), 0);
    KneeLookupTable_s read = kneesOf({9, 9});
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), read, "[knee]"), 0);
    EXPECT_EQ(valuesOf(read), (Knees{0.1, -2}));
    read.nrOfElements = 5;
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), read, "[knee]"), 0);
    EXPECT_EQ(valuesOf(read), (Knees{0.1, -2, 3e10, 0, 0}));
}

TEST_F(LutFileReading, KneesOfThreeChannelsComeBack) {
    ASSERT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({1.5}), kneesOf({2.5}), kneesOf({3.5})), 0);
    KneeLookupTable_s read[3] = {kneesOf({0}), kneesOf({0}), kneesOf({0})};
    ASSERT_EQ(mParser.getLutFromFile(mPath.c_str(), read[0], read[1], read[2]), 0);
    EXPECT_EQ(valuesOf(read[0]), Knees{1.5});
    EXPECT_EQ(valuesOf(read[1]), Knees{2.5});
    EXPECT_EQ(valuesOf(read[2]), Knees{3.5});
}

TEST_F(LutFileReading, MatrixDeliberatelyCannotBeRead) {
    int values[] = {7};
    EXPECT_EQ(mParser.saveMatrixToFile(mPath.c_str(), "# m\n", values, 1), 0);
    EXPECT_EQ(mParser.getMatrixFromFile(mPath.c_str(), values, 1), -1);
    EXPECT_EQ(values[0], 7);
}

TEST_F(LutFileReading, FileThatIsMissingOrNoFileGivesMinusOneAndReleasesTheTable) {
    for (const std::string& path : {mFolder.path("missing.lut"), mFolder.path(""), "/dev/zero"s, ""s,
                                    mFolder.path(std::string(1100, 'a'))}) {
        LookupTable_s table = tableOf({1});
        EXPECT_EQ(mParser.getLutFromFile(path.c_str(), table, "[gray]"), -1) << path;
        EXPECT_EQ(table.lut, nullptr);
        KneeLookupTable_s knees = kneesOf({1});
        EXPECT_EQ(mParser.getLutFromFile(path.c_str(), knees, "[knee]"), -1) << path;
        EXPECT_EQ(knees.value, nullptr);
    }
    LookupTable_s table;
    EXPECT_EQ(mParser.getLutFromFile(nullptr, table, "[gray]"), -1);
}

TEST_F(LutFileReading, FileWhoseReadingFailsGivesMinusOne) {
    LookupTable_s table;
    EXPECT_EQ(mParser.getLutFromFile("/proc/self/mem", table, "[gray]"), -1);
    EXPECT_EQ(table.lut, nullptr);
    KneeLookupTable_s knees = kneesOf({1});
    EXPECT_EQ(mParser.getLutFromFile("/proc/self/mem", knees, "[knee]"), -1);
    EXPECT_EQ(knees.value, nullptr);
}

TEST_F(LutFileReading, CountThatNoTableHasIsRefusedBeforeMemoryIsTaken) {
    for (const char* count : {"4294967295", "-1", "16777217", "2147483647", "99999999999999999999"}) {
        LookupTable_s table = tableOf({1});
        const std::string path = fileOf("[gray]\nnrOfElements="s + count + ";\n0,5;\n");
        EXPECT_EQ(mParser.getLutFromFile(path.c_str(), table, "[gray]"), -1) << count;
        EXPECT_EQ(table.lut, nullptr);
    }
    KneeLookupTable_s knees;
    knees.nrOfElements = Fg_LutFileParser::mostElements + 1;
    EXPECT_EQ(mParser.getLutFromFile(fileOf("[k]\n").c_str(), knees, "[k]"), -1);
}

TEST_F(LutFileReading, LargestCountIsAccepted) {
    LookupTable_s table;
    const std::string path = fileOf("[gray]\nnrOfElements=16777216;\n0,5;\n");
    ASSERT_EQ(mParser.getLutFromFile(path.c_str(), table, "[gray]"), 0);
    EXPECT_EQ(table.nrOfElements, Fg_LutFileParser::mostElements);
    EXPECT_EQ(table.lut[0], 5U);
    EXPECT_EQ(table.lut[Fg_LutFileParser::mostElements - 1], 0U);
}

TEST_F(LutFileReading, FileWithoutACountIsAnEmptyTable) {
    LookupTable_s table = tableOf({1});
    EXPECT_EQ(mParser.getLutFromFile(fileOf("[gray]\n0,5;\n").c_str(), table, "[gray]"), 0);
    EXPECT_EQ(table.nrOfElements, 0U);
    EXPECT_NE(table.lut, nullptr);
    EXPECT_EQ(table.id, 0U);
    EXPECT_EQ(mParser.getLutFromFile(fileOf("").c_str(), table, "[gray]"), 0);
    EXPECT_EQ(table.nrOfElements, 0U);
}

TEST_F(LutFileReading, FileWithoutTheSectionLeavesAllEntriesZero) {
    LookupTable_s table;
    EXPECT_EQ(mParser.getLutFromFile(fileOf("[red]\nnrOfElements=2;\n0,5;\n").c_str(), table, "[gray]"), 0);
    EXPECT_EQ(valuesOf(table), (Values{0, 0}));
}

TEST_F(LutFileReading, MissingEntriesAreZero) {
    EXPECT_EQ(grayValues(3, "0,5;\n1,6;\n"), (Values{5, 6, 0}));
    EXPECT_EQ(grayValues(3, ""), (Values{0, 0, 0}));
}

TEST_F(LutFileReading, EntriesBehindTheCountAreNotRead) {
    EXPECT_EQ(grayValues(1, "0,5;\n1,6;\n"), Values{5});
}

TEST_F(LutFileReading, EntriesOutOfOrderAreLostWhenTheyComeBeforeTheirTurn) {
    EXPECT_EQ(grayValues(3, "1,6;\n0,5;\n2,7;\n1,8;\n"), (Values{5, 8, 0}));
}

TEST_F(LutFileReading, OtherLinesBetweenEntriesAreSkipped) {
    EXPECT_EQ(grayValues(2, "# note\n0,5;\n\n\nanything\n1,6;\n"), (Values{5, 6}));
}

TEST_F(LutFileReading, IndexIsDeliberatelyFoundAnywhereInALine) {
    EXPECT_EQ(grayValues(2, "0,5;\n11,6;\n"), (Values{5, 6}));
    EXPECT_EQ(grayValues(1, "abc0,7;\n"), Values{7});
}

TEST_F(LutFileReading, MalformedValuesConvertTheirLongestNumber) {
    EXPECT_EQ(grayValues(6, "0,12abc;\n1,abc;\n2,;\n3,\n4, 7;\n5,0x10;\n"), (Values{12, 0, 0, 0, 7, 0}));
    EXPECT_EQ(grayValues(1, "0,"), Values{0}) << "no second piece";
    EXPECT_EQ(grayValues(2, "0,5,9;\n1,6"), (Values{5, 6}));
}

TEST_F(LutFileReading, AbsurdValuesAreTakenAsTheNearest32BitNumber) {
    EXPECT_EQ(grayValues(3, "0,99999999999;\n1,-99999999999;\n2,-1;\n"),
              (Values{2147483647U, 2147483648U, 4294967295U}));
}

TEST_F(LutFileReading, CarriageReturnsAndAMissingLastNewlineDoNotMatter) {
    LookupTable_s table;
    const std::string content =
        "[gray]\r\n\r\nid=3;\r\nnrOfElements=2;\r\nformat=1;\r\nnumber=4;\r\n0,5;\r\n1,6;";
    EXPECT_EQ(mParser.getLutFromFile(fileOf(content).c_str(), table, "[gray]"), 0);
    EXPECT_EQ(valuesOf(table), (Values{5, 6}));
    EXPECT_EQ(table.id, 3U);
    EXPECT_EQ(table.number, 4);
}

TEST_F(LutFileReading, NulsCutTheirLine) { EXPECT_EQ(grayValues(2, "0,5\0006;\n1,7;\n"s), (Values{5, 7})); }

TEST_F(LutFileReading, LineOver255CharactersIsReadAsSeveral) {
    EXPECT_EQ(grayValues(2, "0,5;" + std::string(251, ' ') + "1,6;\n"), (Values{5, 6}));
    EXPECT_EQ(grayValues(1, "0," + std::string(400, '1') + ";\n"), Values{2147483647});
}

TEST_F(LutFileReading, KeyIsDeliberatelyFoundInsideLongerWordsAndAtItsFirstOccurrence) {
    LookupTable_s table;
    const std::string content = "# width=7\nid=3;\n[gray]\nnrOfElements=0;\n";
    EXPECT_EQ(mParser.getLutFromFile(fileOf(content).c_str(), table, "[gray]"), 0);
    EXPECT_EQ(table.id, 7U);
}

TEST_F(LutFileReading, NumberKeepsItsLowestEightBits) {
    LookupTable_s table;
    EXPECT_EQ(mParser.getLutFromFile(fileOf("number=258;\n").c_str(), table, "[gray]"), 0);
    EXPECT_EQ(table.number, 2);
}

TEST_F(LutFileReading, NotANumberIsZeroAmongKnees) {
    KneeLookupTable_s read = kneesOf({9, 9, 9});
    EXPECT_EQ(mParser.getLutFromFile(fileOf("[k]\n0,nan;\n1,1.5e3x;\n2,inf;\n").c_str(), read, "[k]"), 0);
    EXPECT_EQ(valuesOf(read), (Knees{0, 1500, 0}));
}

class LutFileLookups : public LutFileReading {
  protected:
    void open(const std::string& content) {
        ASSERT_EQ(mParser.setOpenFile(fileOf(content).c_str(), true), 1);
    }
};

TEST_F(LutFileLookups, FileMustExistToBeOpened) {
    EXPECT_EQ(mParser.setOpenFile(mFolder.path("missing.lut").c_str(), true), 0);
    EXPECT_EQ(mParser.setOpenFile(mFolder.path("missing.lut").c_str(), false), 0);
    EXPECT_FALSE(std::filesystem::exists(mFolder.path("missing.lut")));
    EXPECT_EQ(mParser.setOpenFile(nullptr, true), 0);
    EXPECT_EQ(mParser.checkFileExist(mFolder.path("missing.lut").c_str()), 0);
    EXPECT_EQ(mParser.checkFileExist(fileOf("").c_str()), 1);
}

TEST_F(LutFileLookups, FileOpenForWritingTooKeepsItsContent) {
    ASSERT_EQ(mParser.setOpenFile(fileOf("abc\ndef\n").c_str(), false), 1);
    mParser.writeLutFileHeader("A");
    EXPECT_FALSE(mParser.hasWriteFailed());
    EXPECT_EQ(kavo::test::fileContent(mFolder.path("read.lut")), "Abc\ndef\n");
    ASSERT_EQ(mParser.setOpenFile(mFolder.path("read.lut").c_str(), true), 1);
    mParser.writeLutFileHeader("B");
    EXPECT_TRUE(mParser.hasWriteFailed());
}

TEST_F(LutFileLookups, KeyGivesTheSecondPieceOfItsLine) {
    open("a='text';\nb=5;\n");
    char text[Fg_LutFileParser::valueBytes];
    EXPECT_EQ(mParser.parseKeyFromLine("a", text, "='"), 0);
    EXPECT_STREQ(text, "text");
    int number = 0;
    EXPECT_EQ(mParser.parseIntKey("b", &number, "='"), 0);
    EXPECT_EQ(number, 5);
    double real = 0;
    EXPECT_EQ(mParser.parseDoubleKey("b", &real, "="), 0);
    EXPECT_EQ(real, 5.0);
}

TEST_F(LutFileLookups, MissingKeyWritesErrorWithoutATerminatorAndGivesZero) {
    open("a=1;\n");
    char text[] = "0123456789";
    EXPECT_EQ(mParser.parseKeyFromLine("missing", text, "="), -1);
    EXPECT_STREQ(text, "Error56789");
    int number = 7;
    EXPECT_EQ(mParser.parseIntKey("missing", &number, "="), -1);
    EXPECT_EQ(number, 0);
    double real = 7;
    EXPECT_EQ(mParser.parseDoubleKey("missing", &real, "="), -1);
    EXPECT_EQ(real, 0.0);
}

TEST_F(LutFileLookups, KeyWhoseTextIsErrorCountsAsMissing) {
    open("a=Error");
    int number = 7;
    EXPECT_EQ(mParser.parseIntKey("a", &number, "="), -1);
    EXPECT_EQ(number, 0);
}

TEST_F(LutFileLookups, RunLeavesEntriesThatAreNotFound) {
    open("[s]\n0;1\n1;2\n");
    std::uint32_t values[] = {9, 9, 9};
    EXPECT_EQ(mParser.parseIntInt(values, 3, ";", "[s]"), 0);
    EXPECT_EQ(values[0], 1U);
    EXPECT_EQ(values[1], 2U);
    EXPECT_EQ(values[2], 9U);
    double knees[] = {9};
    EXPECT_EQ(mParser.parseIntDouble(knees, 1, ",", "[t]"), 0);
    EXPECT_EQ(knees[0], 9.0);
    EXPECT_EQ(mParser.parseIntInt(values, 0, ";", "[s]"), 0);
    EXPECT_EQ(values[0], 1U);
}

TEST_F(LutFileLookups, SectionsOwnLineCanHoldTheFirstEntry) {
    open("[s]0,4;\n1,5;\n");
    std::uint32_t values[] = {9, 9};
    EXPECT_EQ(mParser.parseIntInt(values, 2, ",", "[s]"), 0);
    EXPECT_EQ(values[0], 4U);
    EXPECT_EQ(values[1], 5U);
}

TEST_F(LutFileLookups, WithoutAFileNothingIsFound) {
    int number = 7;
    EXPECT_EQ(mParser.parseIntKey("a", &number, "="), -1);
    std::uint32_t values[] = {9};
    EXPECT_EQ(mParser.parseIntInt(values, 1, ",", ""), 0);
    EXPECT_EQ(values[0], 9U);
}

TEST_F(LutFileLookups, ConversionsAloneAnswerZero) {
    int number = 0;
    double real = 0;
    EXPECT_EQ(mParser.getIntValue("12;\n", &number), 0);
    EXPECT_EQ(mParser.getDoubleValue("0.5;\n", &real), 0);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(real, 0.5);
}

TEST_F(LutFileLookups, ParserLeavesNoDescriptorBehind) {
    const auto countDescriptors = [] {
        const std::filesystem::directory_iterator entries("/proc/self/fd");
        return std::distance(begin(entries), end(entries));
    };
    const std::string path = fileOf("[red]\n");
    const auto before = countDescriptors();
    {
        Fg_LutFileParser parser;
        LookupTable_s table[3];
        parser.getLutFromFile(path.c_str(), table[0], table[1], table[2]);
        parser.saveLutToFile(mPath.c_str(), table[0]);
        EXPECT_GT(countDescriptors(), before);
    }
    EXPECT_EQ(countDescriptors(), before);
}

TEST_F(LutFileReading, TimeGrowsWithTheFileAndNotWithItsSquare) {
    constexpr std::uint32_t count = 500000;
    std::string entries;
    for (std::uint32_t i = 0; i < count; ++i) {
        entries += std::to_string(i) + "," + std::to_string(count - i) + ";\n";
    }
    const auto start = std::chrono::steady_clock::now();
    const Values values = grayValues(count, entries);
    EXPECT_EQ(values[count - 1], 1U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(LutFileReading, RecordsOfBothKindsStartEmpty) {
    const LookupTable_s table;
    const KneeLookupTable_s knees;
    EXPECT_EQ(table.lut, nullptr);
    EXPECT_EQ(knees.value, nullptr);
    EXPECT_EQ(knees.reserved, nullptr);
    for (const std::uint32_t field :
         {table.id, table.nrOfElements, table.format, std::uint32_t{table.number}, knees.id,
          knees.nrOfElements, knees.format, std::uint32_t{knees.number}}) {
        EXPECT_EQ(field, 0U);
    }
}

} // namespace
