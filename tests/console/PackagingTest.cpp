#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iterator>
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

/// Words of a command line: "lut plot" gives two.
std::vector<std::string> wordsOf(const std::string& command) {
    std::istringstream stream(command);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string helpOf(const std::string& command) {
    std::vector<std::string> words = wordsOf(command);
    words.push_back("--help");
    return orbctl(words).output;
}

/// Every command, those below another too.
Names allCommands() {
    Names all = commands();
    for (const std::string& command : commands()) {
        const std::string help = helpOf(command);
        const std::size_t below = help.find("\nSubcommands:");
        if (below != std::string::npos)
            for (const std::string& name : matches(help.substr(below + 1), "\n  ([a-z]+) "))
                all.insert(command + " " + name);
    }
    return all;
}

Names longOptionsOf(const std::string& command) {
    Names names = matches(helpOf(command), "(--[a-z-]+)[ \n]");
    names.erase("--help");
    return names;
}

/// Each option as the help page begins its line: "-p,--port" or "--json".
Names optionsOf(const std::string& command) {
    Names names = matches(helpOf(command), "\n  ((?:-[a-z],)?--[a-z-]+)");
    names.erase("-h,--help");
    return names;
}

} // namespace

TEST(Packaging, CompletionKnowsEveryCommand) { EXPECT_EQ(completions({""}), commands()); }

TEST(Packaging, CompletionKnowsTheCommandsBelowACommand) {
    EXPECT_EQ(completions({"registers", ""}), (Names{"read", "write"}));
    EXPECT_EQ(completions({"trigger", ""}), (Names{"plot", "send"}));
    EXPECT_EQ(completions({"lut", ""}), (Names{"load", "plot", "save", "set", "show"}));
}

TEST(Packaging, CompletionKnowsEveryOptionOfEveryCommand) {
    for (const std::string& command : allCommands()) {
        std::vector<std::string> words = wordsOf(command);
        words.push_back("--");
        Names offered = completions(words);
        for (const char* const global :
             {"--help", "--version", "--runtime", "--applet", "--scene", "--board", "--slave", "--set"})
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
    for (const std::string& command : allCommands()) {
        const bool isAlone = page.find(".B " + command + " ") != std::string::npos;
        const bool isAbove = page.find(".B " + command + "\n") != std::string::npos;
        EXPECT_TRUE(isAlone || isAbove) << command;
        for (const std::string& option : optionsOf(command)) {
            const bool hasShortForm = option[1] != '-';
            EXPECT_NE(page.find("fB" + option.substr(0, hasShortForm ? 2 : std::string::npos) + "fR"),
                      std::string::npos)
                << command << " " << option;
        }
    }
}

} // namespace orbctl::test
