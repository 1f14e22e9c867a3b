#include "tests/build/BuiltLibrary.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orbelline::tests {

namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::string singleLine(const std::string& options, const std::string& text) {
    const std::vector<std::string> lines = linesWith(readelf(options), text);
    EXPECT_THAT(lines, SizeIs(1)) << "lines with " << text;
    return lines.empty() ? "" : lines.front();
}

#if defined(ORBELLINE_FORTIFIED)
/// The compiler's calls for the objects that the library is made of; other programs compile some of its
/// sources again, in their own way.
std::vector<std::string> productCommands() {
    std::vector<std::string> commands;
    for (const std::string& line : linesWith(fileLines(ORBELLINE_COMPILE_COMMANDS), "\"command\":")) {
        for (const std::string folder : {"applet", "appletwrappers-baselib", "grabber_basis", "templates"}) {
            const bool isCPlusPlus = line.find(" -std=c++17 ") != std::string::npos;
            if (isCPlusPlus && line.find(" -o " + folder + "/CMakeFiles/") != std::string::npos) {
                commands.push_back(line);
            }
        }
    }
    return commands;
}

/// The last word of a command that starts in one of two ways: the one that counts.
std::string lastOption(const std::string& command, const std::string& oneStart,
                       const std::string& otherStart) {
    std::string last;
    for (const std::string& word : words(command)) {
        if (word.rfind(oneStart, 0) == 0 || word.rfind(otherStart, 0) == 0) {
            last = word;
        }
    }
    return last;
}
#endif

} // namespace

TEST(LibraryHardening, IsASharedLibraryOfTheAskedArchitecture) {
    const bool isProduct = std::string(ORBELLINE_ARCHITECTURE_NAME) == "i386";
    EXPECT_THAT(singleLine("--file-header", "Class:"), HasSubstr(isProduct ? "ELF32" : "ELF64"));
    EXPECT_THAT(singleLine("--file-header", "Machine:"), HasSubstr(isProduct ? "Intel 80386" : "X86-64"));
    EXPECT_THAT(singleLine("--file-header", "Type:"), HasSubstr("DYN"));
}

TEST(LibraryHardening, ResolvesEveryNameWhenItIsLoaded) {
    EXPECT_THAT(singleLine("--dynamic", "(FLAGS_1)"), HasSubstr("NOW"));
}

TEST(LibraryHardening, ProtectsItsRelocatedDataAfterwards) {
    EXPECT_THAT(singleLine("--program-headers", "  GNU_RELRO"), HasSubstr(" R "));
}

TEST(LibraryHardening, HasNoExecutableStack) {
    EXPECT_THAT(singleLine("--program-headers", "  GNU_STACK"), HasSubstr(" RW "));
}

TEST(LibraryHardening, HasNoSegmentThatIsWritableAndExecutable) {
    EXPECT_THAT(linesWith(readelf("--program-headers"), " RWE "), IsEmpty());
}

TEST(LibraryHardening, HasNoRelocationInItsCode) {
    EXPECT_THAT(linesWith(readelf("--dynamic"), "TEXTREL"), IsEmpty());
}

TEST(LibraryHardening, GuardsItsStackFrames) {
    const std::vector<DynamicName> names = neededNames();
    EXPECT_TRUE(std::any_of(names.begin(), names.end(), [](const DynamicName& entry) {
        return entry.name == "__stack_chk_fail";
    })) << "no function of the library checks its stack frame";
}

#if defined(ORBELLINE_FORTIFIED)
TEST(LibraryHardening, CompilesEverySourceWithCheckedBuffers) {
    const std::vector<std::string> commands = productCommands();
    EXPECT_THAT(commands, Not(IsEmpty()));
    for (const std::string& command : commands) {
        EXPECT_EQ(lastOption(command, "-D_FORTIFY_SOURCE", "-U_FORTIFY_SOURCE"), "-D_FORTIFY_SOURCE=2")
            << command;
        EXPECT_THAT(lastOption(command, "-O", "-O"), AnyOf("-O1", "-O2", "-O3")) << command;
    }
}
#endif

} // namespace orbelline::tests
