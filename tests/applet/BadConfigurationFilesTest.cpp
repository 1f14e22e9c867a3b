#include "tests/applet/ConfigurationOnBoard.h"

#include <filesystem>

// Files that are no configuration, or one that was edited by hand.

class BadConfigurationFiles : public ConfigurationOnBoard {
  protected:
    void expectUntouched() {
        EXPECT_TRUE(AppletOnBoard::writes().empty());
        expectTold(freshSection(), 0);
        expectTold(freshSection(), 1);
    }

    /// A file that is refused before any of its settings is looked at.
    void expectRefused(const std::string& path, int code) {
        SCOPED_TRACE(path);
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(loadFrom(path), code);
        EXPECT_EQ(applet.lastError(), -5000);
        expectUntouched();
    }
    void expectTextRefused(const std::string& text) {
        SCOPED_TRACE(text.substr(0, 200));
        expectRefused(folder.makeFile("bad.mcf", text), -5000);
    }
    void expectLoaded(const std::string& text, const Section& portA, const Section& portB) {
        ASSERT_EQ(load(freshConfiguration()), 0);
        EXPECT_EQ(load(text), 0);
        EXPECT_EQ(applet.lastError(), 0);
        expectTold(portA, 0);
        expectTold(portB, 1);
    }

    std::string good() { return configurationText(other(), other()); }
};

TEST_F(BadConfigurationFiles, AMissingFileIsToldByResultAndLastErrorInTheirOwnWays) {
    expectRefused(folder.path("missing.mcf"), -2076);
    expectRefused(folder.path("missing.txt"), -2076);
    expectRefused(folder.path("missing/folder.mcf"), -2076);
    expectRefused("", -2076);
    expectRefused(std::string(5000, 'n') + ".mcf", -2076);
    std::filesystem::create_symlink("loop.mcf", folder.path("loop.mcf"));
    expectRefused(folder.path("loop.mcf"), -2076);
    EXPECT_EQ(Fg_loadConfig(applet.handle(), nullptr), -2076);
    EXPECT_EQ(applet.lastError(), -5000);
}

TEST_F(BadConfigurationFiles, AnotherNameIsRefused) {
    expectRefused(folder.makeFile("settings.txt", good()), -5000);
    expectRefused(folder.makeFile("settings.MCF", good()), -5000);
    EXPECT_EQ(loadFrom(folder.makeFile("a.mcf.old", good())), 0);
    std::filesystem::create_directory(folder.path("all.mcf.d"));
    EXPECT_EQ(loadFrom(folder.makeFile("all.mcf.d/settings", freshConfiguration())), 0);
}

TEST_F(BadConfigurationFiles, AFolderIsNoConfiguration) {
    std::filesystem::create_directory(folder.path("folder.mcf"));
    expectRefused(folder.path("folder.mcf"), -5000);
}

TEST_F(BadConfigurationFiles, TheHeaderMustNameMakerTypeAndPort) {
    expectTextRefused("");
    expectTextRefused("\n");
    expectTextRefused(std::string(10, '\0'));
    expectTextRefused(replaced(good(), "Hersteller='Kavotronic GmbH';\n", ""));
    expectTextRefused(replaced(good(), "Typ='Orbelline';\n", ""));
    expectTextRefused(replaced(good(), "AktivePort=0;\n", ""));
    expectTextRefused(replaced(good(), "[Kamerasektion]\n", ""));
    for (const char* type :
         {"'orbelline'", "'Orbelline2'", "'Orbellin'", "'Orbelline '", "''", "Orbelline", "'Error'"}) {
        // Without quotes the semicolon belongs to the type.
        expectTextRefused(replaced(good(), "'Orbelline'", type));
    }
}

TEST_F(BadConfigurationFiles, OtherHeaderEntriesAreNotCompared) {
    std::string text = replaced(good(), "'Kavotronic GmbH'", "'Somebody'");
    text = replaced(text, "Version='2.2';\n", "");
    text = replaced(text, "LoadAppletId=0;\n", "");
    text = replaced(text, "AktivePort=0", "AktivePort=77");
    text = replaced(text, "ConfigFileVersion=2.0;\n", "");
    expectLoaded(text, other(), other());
}

TEST_F(BadConfigurationFiles, WithoutSectionsNothingIsFound) {
    expectTextRefused(good().substr(0, good().find("[Port A]")));
    expectTextRefused(replaced(good(), "[Port A]", "[Port a]"));
    ASSERT_EQ(load(replaced(good(), "[Port B]", "[Port C]")), -5000);
    expectTold(other(), 0);
    EXPECT_EQ(valueIn(told(1), "FG_WIDTH"), "1024");
}

TEST_F(BadConfigurationFiles, AFileCutAnywhereIsRefusedOrComplete) {
    const std::string whole = good();
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        ASSERT_EQ(load(freshConfiguration()), 0);
        ASSERT_EQ(load(whole.substr(0, length)), -5000) << length;
    }
    // The last line's end and its semicolon can be missing.
    expectLoaded(whole.substr(0, whole.size() - 1), other(), other());
    expectLoaded(whole.substr(0, whole.size() - 2), other(), other());
}

TEST_F(BadConfigurationFiles, CarriageReturnsHideTheHeadersSection) {
    std::string text;
    for (const char letter : good()) {
        text += letter == '\n' ? "\r\n" : std::string(1, letter);
    }
    expectTextRefused(text);
    // Only this line must end as it was written; elsewhere they are of no matter.
    expectLoaded(replaced(text, "[Kamerasektion]\r\n", "[Kamerasektion]\n"), other(), other());
}

TEST_F(BadConfigurationFiles, ALongLineIsReadAsSeveral) {
    const std::string filler(255, 'x');
    // What stands at the 256th place begins a line, and the first line of a key counts.
    const std::string text = replaced(good(), "FG_WIDTH=3072;\n", filler + "FG_WIDTH=16;\nFG_WIDTH=3072;\n");
    expectLoaded(text, with(other(), "FG_WIDTH", "16"), other());
    expectLoaded(replaced(good(), "FG_WIDTH=3072;\n", filler + "xFG_WIDTH=16;\nFG_WIDTH=3072;\n"), other(),
                 other());
    expectLoaded(replaced(good(), "[Port A]\n", std::string(100000, '=') + "\n[Port A]\n"), other(), other());
}

TEST_F(BadConfigurationFiles, AKeyMustBeginItsLineAndBeWhole) {
    const std::string text =
        replaced(good(), "FG_WIDTH=3072;\n",
                 " FG_WIDTH=16;\nFG_WIDTH_MAX=16;\nFG_WIDTH =16;\nfg_width=16;\nFG_WIDTH=3072;\n");
    expectLoaded(text, other(), other());
}

TEST_F(BadConfigurationFiles, AnEmptyValueIsZero) {
    expectLoaded(replaced(good(), "FG_XOFFSET=1008;", "FG_XOFFSET=;"), with(other(), "FG_XOFFSET", "0"),
                 other());
    // Zero is no width.
    expectLoaded(replaced(good(), "FG_WIDTH=3072;", "FG_WIDTH=;"), with(other(), "FG_WIDTH", "1024"),
                 other());
}

TEST_F(BadConfigurationFiles, BytesThatAreNoTextDoNotMatter) {
    std::string text = replaced(good(), "[Port A]\n", "\xff\xfe\x80\n[Port A]\n");
    text = replaced(text, "FG_WIDTH=3072;", std::string("FG_WIDTH=3072\0;99", 17));
    expectLoaded(text, other(), other());
    const std::string path = folder.makeFile("\xe9\xff.lut", "[gray]\nnrOfElements=1;\n0,9;\n");
    const Section section = with(other(), "FG_LUT_CUSTOM_FILE", "'" + path + "'");
    expectLoaded(configurationText(section, section), section, section);
}

TEST_F(BadConfigurationFiles, APathIsCutWhereItsLineIsCut) {
    const std::string path(1023, 'p');
    const Section section = with(with(other(), "FG_LUT_TYPE", "3"), "FG_LUT_CUSTOM_FILE", "'" + path + "'");
    // A line holds 255 characters, the key and the quote among them.
    const Section expected =
        with(section, "FG_LUT_CUSTOM_FILE",
             "'" + std::string(255 - std::string("FG_LUT_CUSTOM_FILE='").size(), 'p') + "'");
    expectLoaded(configurationText(section, section), expected, expected);
}
