#include "tests/applet/LookupTableOnBoard.h"
#include "tests/support/CommaLocale.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

// The table loaded from a user's file and saved to one.

namespace {

constexpr unsigned processing = 3;
constexpr unsigned userFile = 0;
constexpr int processingValues[] = {FG_PROCESSING_OFFSET, FG_PROCESSING_GAIN, FG_PROCESSING_GAMMA,
                                    FG_PROCESSING_INVERT};

/// A gray table as a file holds it.
std::string tableFile(const Table& table) {
    std::string text =
        "# Lut data file v1.1\n\n\n\n[gray]\n\nid=3;\nnrOfElements=" + std::to_string(table.size()) +
        ";\nformat=0;\nnumber=0;\n";
    for (std::size_t index = 0; index < table.size(); ++index) {
        text += std::to_string(index) + "," + std::to_string(table[index]) + ";\n";
    }
    return text;
}

Table reversed() {
    Table table = straight();
    std::reverse(table.begin(), table.end());
    return table;
}

} // namespace

class LookupTableFiles : public LookupTableOnBoard {
  protected:
    int setType(unsigned type) { return applet.set(FG_LUT_TYPE, type, port()); }
    int load(const std::string& path) { return applet.set(FG_LUT_CUSTOM_FILE, path.c_str(), port()); }
    int save(const std::string& path) { return applet.set(FG_LUT_SAVE_FILE, path.c_str(), port()); }
    std::string customFile() { return applet.getText(FG_LUT_CUSTOM_FILE, port()); }

    void expectRefused(const std::string& path, int code) {
        const std::string previous = customFile();
        const Table before = onBoard(port());
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(load(path), code) << path;
        EXPECT_EQ(applet.lastError(), code);
        EXPECT_EQ(customFile(), previous);
        EXPECT_TRUE(AppletOnBoard::writes().empty());
        expectTable(before);
    }

    kavo::test::TemporaryFolder folder;
};
FOR_BOTH_PORTS(LookupTableFiles);

TEST_P(LookupTableFiles, APathIsOnlyRememberedWhileTheTableIsComputed) {
    const std::string path = folder.makeFile("reversed.lut", tableFile(reversed()));
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(load(path), 0);
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    EXPECT_EQ(customFile(), path);
    EXPECT_EQ(applet.getText(FG_LUT_CUSTOM_FILE, otherPort()), "");
    expectTable(straight());
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(setType(userFile), 0);
    expectWholeTableWritten(reversed());
    expectTable(reversed());
    ASSERT_EQ(setType(processing), 0);
    expectTable(straight());
}

TEST_P(LookupTableFiles, APathIsLoadedAtOnceUnderTheUserFile) {
    ASSERT_EQ(setType(userFile), 0);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(load(folder.makeFile("reversed.lut", tableFile(reversed()))), 0);
    expectWholeTableWritten(reversed());
    expectTable(reversed());
}

TEST_P(LookupTableFiles, WithoutAPathNothingIsLoaded) {
    ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, 1U, port()), 0);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(""), 0);
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    expectTable(reversed());
}

TEST_P(LookupTableFiles, AShortFileChangesOnlyItsEntries) {
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(folder.makeFile("short.lut", tableFile(Table(100, 7)))), 0);
    Table expected = straight();
    std::fill_n(expected.begin(), 100, 7U);
    expectTable(expected);
}

TEST_P(LookupTableFiles, ALongFileGivesItsFirstEntries) {
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(folder.makeFile("long.lut", tableFile(Table(5000, 7)))), 0);
    expectTable(Table(tableSize, 7));
}

TEST_P(LookupTableFiles, AFileWithoutACountWritesTheTableAsItIs) {
    ASSERT_EQ(setType(userFile), 0);
    for (const std::string& content :
         {std::string(), std::string("no table"), std::string("\xff\xfe\0[gray]", 9),
          std::string(100000, 'x'), std::string(100000, '\0')}) {
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(load(folder.makeFile("other.lut", content)), 0);
        expectWholeTableWritten(straight());
    }
}

TEST_P(LookupTableFiles, LineEndsAreOfNoMatter) {
    std::string text = tableFile(reversed());
    text.pop_back();
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2)) {
        text.replace(at, 1, "\r\n");
    }
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(folder.makeFile("carriage-returns.lut", text)), 0);
    expectTable(reversed());
}

TEST_P(LookupTableFiles, FilesThatAreMissingOrUnreadableAreRefused) {
    ASSERT_EQ(load(folder.makeFile("good.lut", tableFile(reversed()))), 0);
    ASSERT_EQ(setType(userFile), 0);
    expectRefused(folder.path("missing.lut"), -2076);
    expectRefused(folder.path("missing/folder.lut"), -2076);
    std::filesystem::create_symlink("loop.lut", folder.path("loop.lut"));
    expectRefused(folder.path("loop.lut"), -2076);
    expectRefused(std::string(5000, 'a'), -2076);
    std::filesystem::create_directory(folder.path("folder.lut"));
    expectRefused(folder.path("folder.lut"), -5001);
    for (const char* count : {"4294967295", "-1", "99999999999999999999", "16777217"}) {
        const std::string text = std::string("[gray]\n\nid=3;\nnrOfElements=") + count + ";\n0,1;\n";
        expectRefused(folder.makeFile("absurd.lut", text), -5001);
    }
}

TEST_P(LookupTableFiles, AFileThatCannotBeLoadedLeavesTheTypeAsItWas) {
    ASSERT_EQ(load(folder.path("missing.lut")), 0);
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(setType(userFile), -2076);
    EXPECT_EQ(applet.get(FG_LUT_TYPE, port()), processing);
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    EXPECT_EQ(access(FG_LUT_CUSTOM_FILE), 1);
    EXPECT_EQ(access(FG_PROCESSING_GAIN), 7);
    std::filesystem::create_directory(folder.path("folder.lut"));
    ASSERT_EQ(load(folder.path("folder.lut")), 0);
    EXPECT_EQ(setType(userFile), -5001);
    EXPECT_EQ(applet.get(FG_LUT_TYPE, port()), processing);
    expectTable(straight());
}

TEST_P(LookupTableFiles, AFailedWriteLeavesTypePathAndTableAsTheyWere) {
    const std::string good = folder.makeFile("reversed.lut", tableFile(reversed()));
    ASSERT_EQ(load(good), 0);
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(setType(userFile), runtimeFailure);
    EXPECT_EQ(applet.get(FG_LUT_TYPE, port()), processing);
    EXPECT_EQ(access(FG_LUT_CUSTOM_FILE), 1);
    expectTable(straight());
    ASSERT_EQ(setType(userFile), 0);
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(load(folder.makeFile("flat.lut", tableFile(Table(tableSize, 1)))), runtimeFailure);
    EXPECT_EQ(customFile(), good);
    expectTable(reversed());
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(setType(processing), runtimeFailure);
    EXPECT_EQ(applet.get(FG_LUT_TYPE, port()), userFile);
    EXPECT_EQ(access(FG_LUT_CUSTOM_FILE), 7);
    expectTable(reversed());
}

TEST_P(LookupTableFiles, OnlyTheControlsOfTheActiveMethodCanBeChanged) {
    const auto expectAccess = [&](int file, int values) {
        EXPECT_EQ(access(FG_LUT_CUSTOM_FILE), file);
        for (const int id : processingValues) {
            EXPECT_EQ(access(id), values);
        }
        EXPECT_EQ(access(FG_LUT_VALUE), 7);
        EXPECT_EQ(access(FG_LUT_SAVE_FILE), 7);
        EXPECT_EQ(access(FG_LUT_TYPE), 7);
    };
    expectAccess(1, 7);
    ASSERT_EQ(setType(userFile), 0);
    expectAccess(7, 1);
    for (const unsigned type : {1U, 2U, 4U}) {
        EXPECT_EQ(setType(type), -6000);
        EXPECT_EQ(applet.get(FG_LUT_TYPE, port()), userFile);
    }
    expectAccess(7, 1);
    EXPECT_EQ(applet.record(FG_LUT_CUSTOM_FILE, otherPort())->accessFlags, 1);
    ASSERT_EQ(setType(processing), 0);
    expectAccess(1, 7);
}

TEST_P(LookupTableFiles, LongPathsWork) {
    const std::string path = folder.makeDeepPath(1023, "table.lut");
    ASSERT_EQ(path.size(), 1023U);
    ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, 1U, port()), 0);
    ASSERT_EQ(save(path), 0);
    ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, 0U, port()), 0);
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(path), 0);
    EXPECT_EQ(customFile(), path);
    expectTable(reversed());
}

TEST_P(LookupTableFiles, ALongLineCountsAsSeveral) {
    ASSERT_EQ(setType(userFile), 0);
    const std::string text = tableFile({5, 6});
    const std::size_t last = text.find("1,6;");
    const std::string filler(255, 'x');
    ASSERT_EQ(load(folder.makeFile("long.lut", text.substr(0, last) + filler + text.substr(last))), 0);
    Table expected = straight();
    expected[0] = 5;
    expected[1] = 6;
    expectTable(expected);
}

TEST_P(LookupTableFiles, SavedBytesAreTheSameUnderEveryLocale) {
    ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, 1U, port()), 0);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(save(folder.path("saved.lut")), 0);
    EXPECT_EQ(kavo::test::fileContent(folder.path("saved.lut")), tableFile(reversed()));
    EXPECT_EQ(applet.getText(FG_LUT_SAVE_FILE, port()), folder.path("saved.lut"));
    const kavo::test::CommaLocale locale;
    ASSERT_EQ(save(folder.path("comma.lut")), 0);
    EXPECT_EQ(kavo::test::fileContent(folder.path("comma.lut")), tableFile(reversed()));
    // What is saved is what was last written, not what the design tells.
    EXPECT_TRUE(AppletOnBoard::reads().empty());
    EXPECT_TRUE(AppletOnBoard::writes().empty());
}

TEST_P(LookupTableFiles, ASavedTableLoadsBack) {
    ASSERT_EQ(applet.set(FG_PROCESSING_GAMMA, 2.2, port()), 0);
    const Table curve = onBoard(port());
    ASSERT_EQ(save(folder.path("curve.lut")), 0);
    ASSERT_EQ(applet.set(FG_PROCESSING_GAMMA, 1.0, port()), 0);
    ASSERT_EQ(setType(userFile), 0);
    ASSERT_EQ(load(folder.path("curve.lut")), 0);
    expectTable(curve);
}

TEST_P(LookupTableFiles, ATableThatCannotBeSavedIsReportedAndItsPathForgotten) {
    ASSERT_EQ(save(folder.path("good.lut")), 0);
    std::filesystem::create_directory(folder.path("folder.lut"));
    std::filesystem::create_symlink("/dev/full", folder.path("full.lut"));
    for (const std::string& path :
         {folder.path("missing/folder.lut"), folder.path("folder.lut"), folder.path("full.lut")}) {
        EXPECT_EQ(save(path), -5001) << path;
        EXPECT_EQ(applet.lastError(), -5001);
        EXPECT_EQ(applet.getText(FG_LUT_SAVE_FILE, port()), folder.path("good.lut"));
    }
}

TEST_P(LookupTableFiles, AnEmptySavePathIsOnlyRemembered) {
    ASSERT_EQ(save(folder.path("good.lut")), 0);
    EXPECT_EQ(save(""), 0);
    EXPECT_EQ(applet.getText(FG_LUT_SAVE_FILE, port()), "");
}

TEST_P(LookupTableFiles, NullPathsAreRefused) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    EXPECT_EQ(thrownBy([&] { wrapper.set_sdk_param_FG_LUT_CUSTOM_FILE_P0(nullptr, true); }), -6000);
    EXPECT_EQ(thrownBy([&] { wrapper.set_sdk_param_FG_LUT_SAVE_FILE_P1(nullptr, true); }), -6000);
    wrapper.loadLutFile_P0(nullptr);
    wrapper.saveLutFile_P0(nullptr);
    wrapper.saveLutFile_P1("");
}
