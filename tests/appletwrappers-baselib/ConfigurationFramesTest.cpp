// The frames around an applet's configuration keys, and the buffer protocol of the XML description.

#include "platform/ErrorCodes.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"
#include "tests/support/LibraryCalls.h"
#include "tests/support/TemporaryFolder.h"

#include <clocale>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>

namespace error = kavo::error;
using kavo::test::BareWrapper;
using kavo::test::fileContent;

namespace {

constexpr const char* goodHeader = "[Kamerasektion]\n\nConfigFileVersion=2.0;\nHersteller='Anyone';\n"
                                   "Typ='A Type';\nVersion='1.0';\nLoadAppletId=0;\nAktivePort=3;\n";

class ConfigurationFrames : public testing::Test {
  protected:
    int load(const std::string& content, const char* name = "a.mcf") {
        return wrapper.Fg_loadConfig(nullptr, folder.makeFile(name, content).c_str());
    }
    [[nodiscard]] bool keysWereRead() const {
        return std::find(wrapper.calls.begin(), wrapper.calls.end(), "loadConfig()") != wrapper.calls.end();
    }
    static std::string without(std::string text, const std::string& part) {
        return text.erase(text.find(part), part.size());
    }
    static std::string with(std::string text, const std::string& part, const std::string& other) {
        return text.replace(text.find(part), part.size(), other);
    }

    kavo::test::TemporaryFolder folder;
    BareWrapper wrapper;
};

} // namespace

TEST_F(ConfigurationFrames, SavingWritesTheHeaderThenTheApplet) {
    wrapper.onSave = [](Fg_ConfigFileParser& parser) { parser.writeConfigFileIntKey("KEY", 5); };
    wrapper.setError(-99);
    const std::string path = folder.path("saved.mcf");
    EXPECT_EQ(wrapper.Fg_saveConfig(nullptr, path.c_str()), 0);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), 0);
    EXPECT_EQ(fileContent(path), "[Kamerasektion]\n\nConfigFileVersion=2.0;\nHersteller='A Manufacturer';\n"
                                 "Typ='A Type';\nVersion='7.8';\nLoadAppletId=42;\nAktivePort=0;\nKEY=5;\n");
}

TEST_F(ConfigurationFrames, SavingNeedsTheFileTypeInTheName) {
    const std::string path = folder.path("saved.txt");
    EXPECT_EQ(wrapper.Fg_saveConfig(nullptr, path.c_str()), error::fileAccessFailed);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::fileAccessFailed);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(wrapper.calls.size(), 0U);
}

TEST_F(ConfigurationFrames, SavingNeedsAFileThatCanBeOpened) {
    for (const std::string& path : {folder.path("no/folder/saved.mcf"), folder.path("")}) {
        EXPECT_EQ(wrapper.Fg_saveConfig(nullptr, path.c_str()), error::fileAccessFailed);
    }
    EXPECT_EQ(wrapper.Fg_saveConfig(nullptr, nullptr), error::fileAccessFailed);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::fileAccessFailed);
}

TEST_F(ConfigurationFrames, BothFramesAskForTheNamedLocaleOfAllCategories) {
    const std::string request = "locale " + std::to_string(LC_ALL) + " English";
    kavo::test::libraryCalls().clear();
    wrapper.Fg_saveConfig(nullptr, folder.path("saved.txt").c_str());
    EXPECT_EQ(kavo::test::libraryCalls(), std::vector<std::string>{request});
    wrapper.Fg_loadConfig(nullptr, folder.path("missing.mcf").c_str());
    EXPECT_EQ(kavo::test::libraryCalls(), (std::vector<std::string>{request, request}));
}

TEST_F(ConfigurationFrames, AnExceptionWhileSavingPassesAndTheFileIsClosed) {
    wrapper.onSave = [](Fg_ConfigFileParser&) { throw std::runtime_error("no"); };
    const std::string path = folder.path("saved.mcf");
    EXPECT_THROW(wrapper.Fg_saveConfig(nullptr, path.c_str()), std::runtime_error);
    EXPECT_NE(fileContent(path).find("AktivePort=0;\n"), std::string::npos);
}

TEST_F(ConfigurationFrames, LoadingReadsTheApplet) {
    wrapper.setError(-99);
    wrapper.onLoad = [](Fg_ConfigFileParser& parser) {
        int value = 0;
        return parser.parseIntKeySection(1, "KEY", &value) == 0 && value == 6;
    };
    EXPECT_EQ(load(std::string(goodHeader) + "\n[Port B]\nKEY=6;\n"), 0);
    EXPECT_TRUE(keysWereRead());
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), 0);
}

TEST_F(ConfigurationFrames, AMissingFileStoresAnotherCodeThanItReturns) {
    EXPECT_EQ(wrapper.Fg_loadConfig(nullptr, folder.path("missing.mcf").c_str()), error::fileNotFound);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::configurationLoadFailed);
    EXPECT_EQ(wrapper.Fg_loadConfig(nullptr, folder.path("missing.txt").c_str()), error::fileNotFound);
    EXPECT_EQ(wrapper.Fg_loadConfig(nullptr, nullptr), error::fileNotFound);
    EXPECT_FALSE(keysWereRead());
}

TEST_F(ConfigurationFrames, WhatIsWrongInTheHeaderStopsLoading) {
    const std::vector<std::string> headers{
        "",
        without(goodHeader, "Hersteller='Anyone';\n"),
        without(goodHeader, "Typ='A Type';\n"),
        with(goodHeader, "'A Type'", "'a type'"),
        with(goodHeader, "'A Type'", "'A Type 2'"),
        without(goodHeader, "AktivePort=3;\n"),
        without(goodHeader, "[Kamerasektion]\n"),
    };
    for (const std::string& header : headers) {
        wrapper.setError(0);
        EXPECT_EQ(load(header), error::configurationLoadFailed) << header;
        EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::configurationLoadFailed) << header;
        EXPECT_FALSE(keysWereRead()) << header;
    }
}

TEST_F(ConfigurationFrames, LoadingNeedsTheFileTypeAnywhereInTheName) {
    EXPECT_EQ(load(goodHeader, "a.MCF"), error::configurationLoadFailed);
    EXPECT_FALSE(keysWereRead());
    EXPECT_EQ(load(goodHeader, "a.mcf.old"), 0);
}

TEST_F(ConfigurationFrames, VersionAndAppletIdMayBeMissing) {
    EXPECT_EQ(load(without(without(goodHeader, "Version='1.0';\n"), "LoadAppletId=0;\n")), 0);
}

TEST_F(ConfigurationFrames, ARefusalByTheAppletIsALoadFailure) {
    wrapper.onLoad = [](Fg_ConfigFileParser&) { return false; };
    EXPECT_EQ(load(goodHeader), error::configurationLoadFailed);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::configurationLoadFailed);
}

TEST_F(ConfigurationFrames, AnExceptionWhileLoadingPasses) {
    wrapper.onLoad = [](Fg_ConfigFileParser&) -> bool { throw std::logic_error("no"); };
    EXPECT_THROW(load(goodHeader), std::logic_error);
}
