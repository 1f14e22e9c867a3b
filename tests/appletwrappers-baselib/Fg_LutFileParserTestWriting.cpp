#include "tests/appletwrappers-baselib/LutFileTestBase.h"
#include "tests/grabber_basis/OpenLog.h"
#include "tests/support/CommaLocale.h"

#include <filesystem>

namespace {

class LutFileWriting : public kavo::test::LutFileTestBase {};

TEST_F(LutFileWriting, GrayTableByteForByte) {
    LookupTable_s table = tableOf({17, 0, 4095});
    table.format = 2;
    table.number = 255;
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), table), 0);
    EXPECT_EQ(saved(),
              "# Lut data file v1.1\n\n\n\n[gray]\n\nid=3;\nnrOfElements=3;\nformat=2;\nnumber=255;\n"
              "0,17;\n1,0;\n2,4095;\n");
}

TEST_F(LutFileWriting, EmptyTableHasHeaderSectionAndKeysOnly) {
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), LookupTable_s()), 0);
    EXPECT_EQ(saved(),
              "# Lut data file v1.1\n\n\n\n[gray]\n\nid=0;\nnrOfElements=0;\nformat=0;\nnumber=0;\n");
}

TEST_F(LutFileWriting, TableWithoutItsValuesWritesNoEntries) {
    LookupTable_s table;
    table.nrOfElements = 2;
    KneeLookupTable_s knees;
    knees.nrOfElements = 2;
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), table), 0);
    EXPECT_EQ(saved().find("0,"), std::string::npos);
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), knees, "[knee]"), 0);
    EXPECT_EQ(saved(), "# KneeLut data file v1.0\n\n[knee]\n\n");
}

TEST_F(LutFileWriting, ThreeChannelsByteForByteWithAHeaderThatHasNoLineEndOfItsOwn) {
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), tableOf({1}), tableOf({2, 3}), tableOf({})), 0);
    EXPECT_EQ(saved(), "# Lut data file v1.1"
                       "\n\n[red]\n\nid=3;\nnrOfElements=1;\nformat=0;\nnumber=0;\n0,1;\n"
                       "\n\n[green]\n\nid=3;\nnrOfElements=2;\nformat=0;\nnumber=0;\n0,2;\n1,3;\n"
                       "\n\n[blue]\n\nid=3;\nnrOfElements=0;\nformat=0;\nnumber=0;\n");
}

TEST_F(LutFileWriting, KneesByteForByteWithTheSectionAsGivenAndNoKeys) {
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({0.1, 0.25, -1000}), "[my knees]"), 0);
    EXPECT_EQ(saved(), "# KneeLut data file v1.0\n\n[my knees]\n\n"
                       "0,0.100000000000;\n1,0.250000000000;\n2,-1000.000000000000;\n");
}

TEST_F(LutFileWriting, KneesOfThreeChannelsByteForByte) {
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({0.5}), kneesOf({1}), kneesOf({2, 3})), 0);
    EXPECT_EQ(saved(), "# KneeLut data file v1.1"
                       "\n\n[red]\n\n0,0.500000000000;\n"
                       "\n\n[green]\n\n0,1.000000000000;\n"
                       "\n\n[blue]\n\n0,2.000000000000;\n1,3.000000000000;\n");
}

TEST_F(LutFileWriting, MatrixByteForByte) {
    const int values[] = {-1, 0, 2147483647};
    EXPECT_EQ(mParser.saveMatrixToFile(mPath.c_str(), "# my matrix\n", values, 3), 0);
    EXPECT_EQ(saved(), "# my matrix\nnrOfElements=3;\n0,-1;\n1,0;\n2,2147483647;\n");
}

TEST_F(LutFileWriting, UnsignedNumbersAbove31BitsStandAsNegativeOnes) {
    LookupTable_s table = tableOf({4294967295U});
    table.id = 2147483648U;
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), table), 0);
    EXPECT_NE(saved().find("id=-2147483648;\n"), std::string::npos);
    EXPECT_NE(saved().find("0,-1;\n"), std::string::npos);
}

TEST_F(LutFileWriting, NumbersHaveADecimalPointUnderACommaLocale) {
    const kavo::test::CommaLocale locale;
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({1234.5}), "[k]"), 0);
    EXPECT_EQ(saved(), "# KneeLut data file v1.0\n\n[k]\n\n0,1234.500000000000;\n");
    KneeLookupTable_s read = kneesOf({0});
    EXPECT_EQ(mParser.getLutFromFile(mPath.c_str(), read, "[k]"), 0);
    EXPECT_EQ(valuesOf(read), std::vector<double>{1234.5});
}

TEST_F(LutFileWriting, SingleLinesAreInTheFileAtOnce) {
    ASSERT_EQ(mParser.setSaveFile(mPath.c_str()), 1);
    mParser.writeLutFileHeader("# header");
    EXPECT_EQ(saved(), "# header");
    mParser.writeIntKey("k", -5);
    EXPECT_EQ(saved(), "# headerk=-5;\n");
    mParser.writeDoubleKey("d", 1.0 / 3.0);
    mParser.writeIntInt(7, 8);
    mParser.writeIntDouble(5, 0.25);
    mParser.writeLutFileValue("a", "b", "::");
    EXPECT_EQ(saved(), "# headerk=-5;\nd=0.333333333333;\n7,8;\n5,0.250000000000;\na::b;\n");
}

TEST_F(LutFileWriting, SavingEmptiesAFileThatExists) {
    mFolder.makeFile("saved.lut", std::string(10000, 'x'));
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), kneesOf({}), "[k]"), 0);
    EXPECT_EQ(saved(), "# KneeLut data file v1.0\n\n[k]\n\n");
}

TEST_F(LutFileWriting, FileThatCannotBeOpenedGivesMinusOneInEveryForm) {
    const LookupTable_s table = tableOf({1});
    const KneeLookupTable_s knees = kneesOf({1});
    const int matrix[] = {1};
    for (const std::string& path : {mFolder.path("missing/a.lut"), mFolder.path(""), std::string()}) {
        const char* const name = path.c_str();
        EXPECT_EQ(mParser.setSaveFile(name), 0);
        EXPECT_EQ(mParser.saveLutToFile(name, table), -1);
        EXPECT_EQ(mParser.saveLutToFile(name, table, table, table), -1);
        EXPECT_EQ(mParser.saveLutToFile(name, knees, "[k]"), -1);
        EXPECT_EQ(mParser.saveLutToFile(name, knees, knees, knees), -1);
        EXPECT_EQ(mParser.saveMatrixToFile(name, "", matrix, 1), -1);
    }
    EXPECT_EQ(mParser.saveLutToFile(nullptr, table), -1);
}

TEST_F(LutFileWriting, FullDiskIsDeliberatelyNoFailureOfTheCallButIsTold) {
    EXPECT_EQ(mParser.saveLutToFile("/dev/full", tableOf({1})), 0);
    EXPECT_TRUE(mParser.hasWriteFailed());
    EXPECT_EQ(mParser.saveLutToFile(mPath.c_str(), tableOf({1})), 0);
    EXPECT_FALSE(mParser.hasWriteFailed());
}

TEST_F(LutFileWriting, EveryNameIsOfTheRightType) {
    EXPECT_EQ(mParser.checkFileType("a.txt"), 1);
    EXPECT_EQ(mParser.checkFileType(""), 1);
    EXPECT_EQ(mParser.checkFileType(nullptr), 1);
}

TEST_F(LutFileWriting, LogTellsAFileThatCannotBeOpened) {
    {
        kavo::test::OpenLog log(mFolder.path("log"));
        Fg_LutFileParser parser(&log);
        parser.setSaveFile(mPath.c_str());
        parser.setSaveFile(mFolder.path("missing/a.lut").c_str());
    }
    EXPECT_EQ(kavo::test::fileContent(mFolder.path("log")), "lumacardIV::Error >> Lut File: fopen failed;\n");
}

} // namespace
