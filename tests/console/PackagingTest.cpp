#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>

namespace orbctl::test {

namespace {

using Names = std::set<std::string>;

/// What bash completes a line to, the last word being the one under the cursor.
Names completions(const std::vector<std::string>& words) {
    std::string script = "source '" ORBELLINE_COMPLETION_FILE "'; compopt() { :; }; COMP_WORDS=(orbctl";
    for (const std::string& word : words)
        script += " '" + word + "'";
    script +=
        "); COMP_CWORD=" + std::to_string(words.size()) + "; _orbctl; printf '%s\\n' \"${COMPREPLY[@]}\"";
    std::istringstream lines(Program("/bin/bash").run({"-c", script}).output);
    Names names;
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            names.insert(line);
    return names;
}

Names matches(const std::string& text, const std::string& pattern) {
    Names names;
    const std::regex expression(pattern);
    for (std::sregex_iterator found(text.begin(), text.end(), expression), end; found != end; ++found)
        names.insert((*found)[1]);
    return names;
}

Names commands() {
    const std::string help = orbctl({"--help"}).output;
    return matches(help.substr(help.find("Subcommands:")), "\n  ([a-z]+) ");
}

Names longOptionsOf(const std::string& command) {
    Names names = matches(orbctl({command, "--help"}).output, "(--[a-z-]+)[ \n]");
    names.erase("--help");
    return names;
}

} // namespace

TEST(Packaging, CompletionKnowsEveryCommand) { EXPECT_EQ(completions({""}), commands()); }

TEST(Packaging, CompletionKnowsEveryOptionOfEveryCommand) {
    for (const std::string& command : commands()) {
        Names offered = completions({command, "--"});
        for (const char* const global :
             {"--help", "--version", "--runtime", "--applet", "--board", "--slave", "--set"})
            EXPECT_EQ(offered.erase(global), 1U) << command << global;
        EXPECT_EQ(offered, longOptionsOf(command)) << command;
    }
}

TEST(Packaging, CompletionOffersTheParametersThatTheAppletHas) {
    const Names listed = matches(orbctl({"list"}).output, "\n  (FG_[A-Z0-9_]+)");
    EXPECT_EQ(completions({"get", "FG_"}), listed);
}

TEST(Packaging, CompletionOffersSettingsAndPorts) {
    EXPECT_EQ(completions({"set", "FG_WI"}), Names{"FG_WIDTH="});
    EXPECT_EQ(completions({"--set", "FG_WI"}), Names{"FG_WIDTH="});
    EXPECT_EQ(completions({"list", "--port", ""}), (Names{"0", "1", "both"}));
    EXPECT_EQ(completions({"set", "FG_WIDTH", "=", ""}), Names{});
    EXPECT_EQ(completions({"registers", "r"}), Names{"read"});
}

TEST(Packaging, ManualPageTellsEveryCommandAndOption) {
    std::string page = kavo::test::fileContent(ORBELLINE_MANUAL_PAGE);
    page.erase(std::remove(page.begin(), page.end(), '\\'), page.end());
    for (const std::string& command : commands()) {
        EXPECT_NE(page.find(".B " + command), std::string::npos) << command;
        for (const std::string& option : longOptionsOf(command)) {
            const std::string shortForm = option == "--port" ? "-fIport" : option;
            const bool isShownShort = option == "--port" || option == "--category" || option == "--count" ||
                                      option == "--out" || option == "--format" || option == "--value" ||
                                      option == "--keep-going";
            if (!isShownShort) {
                EXPECT_NE(page.find(option), std::string::npos) << command << " " << option;
            }
        }
    }
}

} // namespace orbctl::test
