#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

using kavo::test::fileContent;

class ConfigurationCommands : public ::testing::Test {
  protected:
    /// Saves a configuration that differs from the defaults and gives its content.
    std::string savedContent(const std::vector<std::string>& settings = {}) const {
        std::vector<std::string> words;
        for (const std::string& setting : settings)
            words.insert(words.end(), {"--set", setting});
        words.insert(words.end(), {"save", mFile});
        EXPECT_EQ(orbctl(words).status, 0);
        return fileContent(mFile);
    }

    /// The content with a text replaced wherever it stands, as a file.
    std::string changed(const std::string& content, const std::string& from, const std::string& to) const {
        std::string result = content;
        EXPECT_NE(result.find(from), std::string::npos) << from;
        for (std::size_t place = 0; (place = result.find(from, place)) != std::string::npos;
             place += to.size())
            result.replace(place, from.size(), to);
        return mFolder.makeFile("changed.mcf", result);
    }

    const kavo::test::TemporaryFolder mFolder;
    const std::string mFile = mFolder.path("a.mcf");
};

} // namespace

TEST_F(ConfigurationCommands, SaveWritesBothPortsAndSaysSo) {
    const ProgramResult result = orbctl({"--set", "1:FG_WIDTH=640", "save", mFile});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "106 values of both ports are in " + mFile + "\n");
    const std::string content = fileContent(mFile);
    EXPECT_LT(content.find("FG_WIDTH=1024;"), content.find("[Port B]"));
    EXPECT_GT(content.find("FG_WIDTH=640;"), content.find("[Port B]"));
}

TEST_F(ConfigurationCommands, SaveNamesAFileThatCannotBeWritten) {
    const std::string file = mFolder.path("missing/a.mcf");
    const ProgramResult result = orbctl({"save", file});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages,
              "orbctl: " + file + " cannot be saved: the file could not be read or written (-5001)\n");
    const ProgramResult wrongName = orbctl({"save", "a.cfg"});
    EXPECT_EQ(wrongName.status, 2);
    EXPECT_EQ(wrongName.messages, "orbctl: a.cfg: the name of a configuration file holds \".mcf\"\n");
}

TEST_F(ConfigurationCommands, LoadTellsWhatChanged) {
    savedContent({"FG_WIDTH=640", "1:FG_PROCESSING_GAIN=2"});
    const ProgramResult result = orbctl({"load", mFile});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "port 0: FG_WIDTH = 640 (was 1024)\n"
                             "port 1: FG_WIDTH = 640 (was 1024)\n"
                             "port 1: FG_LUT_VALUE: 4094 of 4096 elements changed\n"
                             "port 1: FG_PROCESSING_GAIN = 2 (was 1)\n");
    EXPECT_EQ(result.messages, mFile + " is loaded: 4 parameters changed\n");
}

TEST_F(ConfigurationCommands, LoadTellsWhatWasRefusedAndWhy) {
    const std::string file =
        changed(savedContent({"FG_HEIGHT=512"}), "FG_TRIGGERIN_POLARITY=0", "FG_TRIGGERIN_POLARITY=9");
    const ProgramResult result = orbctl({"load", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "port 0: FG_HEIGHT = 512 (was 1024)\nport 1: FG_HEIGHT = 512 (was 1024)\n");
    const std::string refusal =
        "FG_TRIGGERIN_POLARITY: 9 is none of LOW_ACTIVE (1), HIGH_ACTIVE (0); it keeps HIGH_ACTIVE (0)\n";
    EXPECT_EQ(result.messages, "orbctl: port 0: " + refusal + "orbctl: port 1: " + refusal + file +
                                   " is loaded: 2 parameters changed, 2 values refused\n");
}

TEST_F(ConfigurationCommands, LoadTellsAValueThatOnlyOtherValuesForbid) {
    const std::string file = changed(savedContent(), "FG_TRIGGER_PULSEFORMGEN1_WIDTH=4;",
                                     "FG_TRIGGER_PULSEFORMGEN1_WIDTH=900000;");
    const ProgramResult result = orbctl({"load", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(
        result.messages.find("port 0: FG_TRIGGER_PULSEFORMGEN1_WIDTH: 900000 was not taken; it keeps 4\n"),
        std::string::npos)
        << result.messages;
}

TEST_F(ConfigurationCommands, LoadTellsWhatTheBoardRounds) {
    const std::string file =
        changed(savedContent(), "FG_TRIGGERIN_DEBOUNCE=1.008", "FG_TRIGGERIN_DEBOUNCE=2");
    const ProgramResult result = orbctl({"load", file});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(result.output, "port 0: FG_TRIGGERIN_DEBOUNCE = 2.016 µs (was 1.008 µs), the nearest to 2\n"
                             "port 1: FG_TRIGGERIN_DEBOUNCE = 2.016 µs (was 1.008 µs), the nearest to 2\n");
}

TEST_F(ConfigurationCommands, LoadNamesAKeyThatIsMissingAndOneThatIsUnknown) {
    const std::string content = savedContent({"FG_WIDTH=640"});
    const std::string file = changed(content, "FG_AREATRIGGERMODE=1;\n", "");
    const ProgramResult result = orbctl({"load", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "port 0: FG_WIDTH = 640 (was 1024)\n");
    EXPECT_NE(result.messages.find("orbctl: " + file +
                                   " was not loaded to its end: FG_AREATRIGGERMODE of port "
                                   "0 is missing (-5000)\n"),
              std::string::npos)
        << result.messages;
    const std::string misspelled = changed(content, "FG_MTU_SIZE=7204;", "FG_MTU_SIZE=7204;\nFG_WITDH=16;");
    EXPECT_NE(orbctl({"load", misspelled})
                  .messages.find("port 0: the applet has no FG_WITDH; it was passed over\n"),
              std::string::npos);
}

TEST_F(ConfigurationCommands, LoadOfAnotherAppletsFileChangesNothing) {
    const std::string file = changed(savedContent({"FG_WIDTH=640"}), "Orbelline", "Other");
    const ProgramResult result = orbctl({"load", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.messages, "orbctl: " + file +
                                   " was not loaded: it is for the applet \"Other\", not for \"Orbelline\" "
                                   "(-5000)\n");
}

TEST_F(ConfigurationCommands, FilesThatCannotBeReadAreNotFound) {
    for (const char* const command : {"load", "diff"}) {
        const ProgramResult missing = orbctl({command, "missing.mcf"});
        EXPECT_EQ(missing.status, 3);
        EXPECT_EQ(missing.messages, "orbctl: missing.mcf cannot be read\n");
    }
}

TEST_F(ConfigurationCommands, DiffOfAFileThatWasLoadedIsSilent) {
    changed(savedContent({"FG_WIDTH=640", "FG_PROCESSING_GAMMA=0.3", "FG_TRIGGER_FRAMESPERSECOND=7.7777777"}),
            "FG_TRIGGERIN_DEBOUNCE=1.008", "FG_TRIGGERIN_DEBOUNCE=1.1");
    const std::string file = mFolder.path("changed.mcf");
    const ProgramResult result = console().input("load " + file + "\ndiff " + file + "\n").run({"run"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.find("in the file"), std::string::npos) << result.output;
}

TEST_F(ConfigurationCommands, DiffTellsBothValues) {
    const std::string content = savedContent({"1:FG_FORMAT=FG_GRAY16"});
    const ProgramResult result = orbctl({"diff", mFile});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "port 1: FG_FORMAT: FG_GRAY16 (1) in the file, FG_GRAY (3) on the board\n");
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(orbctl({"--set", "1:FG_FORMAT=FG_GRAY16", "diff", mFile}).status, 0);
}

TEST_F(ConfigurationCommands, DiffTellsWhatWouldKeepTheFileFromLoading) {
    const std::string content = savedContent();
    const std::size_t last = content.rfind("FG_TIMEOUT=1000000;\n");
    const std::string file = mFolder.makeFile("cut.mcf", std::string(content).erase(last, 20));
    const ProgramResult result = orbctl({"diff", file});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "port 1: FG_TIMEOUT: missing in the file, 1000000 seconds on the board\n");
    EXPECT_EQ(result.messages, file + " cannot be loaded: FG_TIMEOUT of port 1 is missing\n");
}

TEST_F(ConfigurationCommands, DiffWritesJson) {
    savedContent({"0:FG_FORMAT=FG_GRAY16"});
    const ProgramResult result = orbctl({"diff", mFile, "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        evaluated(result.output, "data"),
        "{'equal': False, 'differences': [{'name': 'FG_FORMAT', 'id': 700, 'port': 0, 'file': {'value': "
        "1, 'symbol': 'FG_GRAY16'}, 'board': {'value': 3, 'symbol': 'FG_GRAY'}}]}\n");
    const ProgramResult equal = orbctl({"--set", "0:FG_FORMAT=FG_GRAY16", "diff", mFile, "--json"});
    EXPECT_EQ(equal.status, 0);
    EXPECT_EQ(evaluated(equal.output, "data"), "{'equal': True, 'differences': []}\n");
}

TEST_F(ConfigurationCommands, ATemporaryFolderThatIsMissingIsNamed) {
    savedContent();
    const ProgramResult result =
        console().environment("TMPDIR", mFolder.path("missing")).run({"diff", mFile});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.messages, "orbctl: there is no folder for temporary files; TMPDIR names one\n");
}

} // namespace orbctl::test
