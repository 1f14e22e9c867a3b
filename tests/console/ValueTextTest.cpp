#include "console/ValueText.h"
#include "console/Failure.h"
#include "tests/console/ExampleParameters.h"

#include <gtest/gtest.h>
#include <limits>

namespace orbctl {

using test::doubleParameter;
using test::fieldParameter;
using test::formatParameter;
using test::textParameter;
using test::unsignedParameter;

namespace {

std::string refusal(const Parameter& parameter, const char* text) {
    try {
        valueFrom(parameter, text);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status(), ExitStatus::usage);
        return failure.what();
    }
    return "accepted";
}

} // namespace

TEST(ValueText, TakesAnEnumerationEntryBySymbolDisplayNameOrNumber) {
    for (const char* const text : {"FG_GRAY16", "Gray 16bit", "1", "0x1"})
        EXPECT_EQ(valueFrom(formatParameter(), text), ParameterValue(std::int64_t{1})) << text;
}

TEST(ValueText, LeavesANumberThatIsNoEntryToTheApplet) {
    EXPECT_EQ(valueFrom(formatParameter(), "2"), ParameterValue(std::int64_t{2}));
}

TEST(ValueText, NamesTheEntriesWhereASymbolIsUnknown) {
    EXPECT_EQ(refusal(formatParameter(), "FG_GREY"),
              "FG_FORMAT: \"FG_GREY\" is no entry of the enumeration (FG_GRAY, FG_GRAY16)");
}

TEST(ValueText, RefusesWhatDoesNotFitTheWidthOfTheKind) {
    const Parameter width = unsignedParameter("FG_WIDTH", 16, 4096, 16);
    EXPECT_EQ(valueFrom(width, "4294967295"), ParameterValue(std::uint64_t{4294967295}));
    EXPECT_EQ(refusal(width, "4294967296"),
              "FG_WIDTH: \"4294967296\" is no unsigned 32-bit number (16 .. 4096, step 16)");
    EXPECT_NE(refusal(width, "-1"), "accepted");
    EXPECT_NE(refusal(width, "wide"), "accepted");
    Parameter number = width;
    number.kind = ValueKind::signed32;
    EXPECT_EQ(valueFrom(number, "-2147483648"), ParameterValue(std::int64_t{-2147483648LL}));
    EXPECT_NE(refusal(number, "2147483648"), "accepted");
}

TEST(ValueText, TakesDoublesAndTexts) {
    EXPECT_EQ(valueFrom(doubleParameter("FG_PROCESSING_GAIN", 0, 4096, 0), "1e3"), ParameterValue(1000.0));
    EXPECT_EQ(valueFrom(textParameter("FG_LUT_SAVE_FILE"), ""), ParameterValue(std::string()));
    EXPECT_EQ(valueFrom(textParameter("FG_LUT_SAVE_FILE"), "a b"), ParameterValue(std::string("a b")));
}

TEST(ValueText, RefusesAKindThatItDoesNotKnow) {
    Parameter parameter = textParameter("STRANGE");
    parameter.kind = ValueKind::unsupported;
    EXPECT_NE(refusal(parameter, "1"), "accepted");
}

TEST(ValueText, ShowsAnEnumerationValueWithItsNumber) {
    EXPECT_EQ(readableText(formatParameter(), ParameterValue(std::int64_t{3})), "FG_GRAY (3)");
    EXPECT_EQ(plainText(formatParameter(), std::int64_t{3}), "FG_GRAY");
    EXPECT_EQ(readableText(formatParameter(), ParameterValue(std::int64_t{9})), "9");
}

TEST(ValueText, UsesTheDisplayNameOfAnEntryWithoutASymbol) {
    Parameter parameter = formatParameter();
    parameter.entries[0].symbol.clear();
    EXPECT_EQ(plainText(parameter, std::int64_t{3}), "Gray 8bit");
}

TEST(ValueText, ShowsAnEmptyTextAsQuotes) {
    EXPECT_EQ(readableText(textParameter("FG_LUT_CUSTOM_FILE"), ParameterValue(std::string())), "\"\"");
    EXPECT_EQ(plainText(textParameter("FG_LUT_CUSTOM_FILE"), std::string()), "");
}

TEST(ValueText, ShowsTheCodeOfAFailedRead) {
    EXPECT_EQ(readableText(formatParameter(), Reading{-2070, {}}), "error -2070");
}

TEST(ValueText, NamesTheStepOnlyWhereItNarrowsTheValues) {
    EXPECT_EQ(rangeText(unsignedParameter("FG_WIDTH", 16, 4096, 16)), "16 .. 4096, step 16");
    EXPECT_EQ(rangeText(unsignedParameter("FG_HEIGHT", 2, 4096, 1)), "2 .. 4096");
    EXPECT_EQ(rangeText(unsignedParameter("FG_APPLET_ID", 0, 0, 0)), "");
    const double continuous = std::numeric_limits<double>::epsilon();
    EXPECT_EQ(rangeText(doubleParameter("FG_PROCESSING_OFFSET", -1, 1, continuous)), "-1 .. 1");
    EXPECT_EQ(rangeText(doubleParameter("FG_TRIGGERIN_DEBOUNCE", 0.096, 3.024, 0.048)),
              "0.096 .. 3.024, step 0.048");
    EXPECT_EQ(rangeText(fieldParameter("FG_LUT_VALUE", 4096)), "4096 elements, 0 .. 4095");
    EXPECT_EQ(rangeText(formatParameter()), "FG_GRAY, FG_GRAY16");
}

TEST(ValueText, ShowsAFileFilterInPlaceOfARange) {
    Parameter parameter = textParameter("FG_LUT_CUSTOM_FILE");
    EXPECT_EQ(rangeText(parameter), "");
    parameter.fileFilter = "*.lut";
    EXPECT_EQ(rangeText(parameter), "*.lut");
}

TEST(ValueText, SpellsOutTheAccessFlags) {
    Parameter parameter = formatParameter();
    const struct {
        int flags;
        const char* text;
        const char* shortText;
    } rows[] = {
        {7, "read, write, change", "rwc"}, {3, "read, write", "rw-"}, {1, "read", "r--"}, {0, "none", "---"}};
    for (const auto& row : rows) {
        parameter.accessFlags = row.flags;
        EXPECT_EQ(accessText(parameter), row.text);
        EXPECT_EQ(shortAccessText(parameter), row.shortText);
    }
    parameter.isDescribed = false;
    EXPECT_EQ(shortAccessText(parameter), "?");
}

} // namespace orbctl
