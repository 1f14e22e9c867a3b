#include "console/ErrorText.h"
#include "platform/BoardErrorCodes.h"
#include "platform/ErrorCodes.h"
#include "tests/console/ExampleParameters.h"

#include <gtest/gtest.h>
#include <set>

namespace orbctl {

using namespace kavo::error;
using test::doubleParameter;
using test::formatParameter;
using test::unsignedParameter;

namespace {

std::string width(std::uint64_t value, int code) {
    return refusedWrite(unsignedParameter("FG_WIDTH", 16, 4096, 16), value, code);
}

} // namespace

TEST(ErrorText, NamesTheStepThatAValueMisses) {
    EXPECT_EQ(width(20, offStep), "FG_WIDTH: 20 is off its step of 16 (-7080)");
}

TEST(ErrorText, NamesTheRangeThatAValueLeaves) {
    EXPECT_EQ(width(5000, outOfRange), "FG_WIDTH: 5000 is outside 16 .. 4096 (-6000)");
    EXPECT_EQ(width(0, outOfRange), "FG_WIDTH: 0 is outside 16 .. 4096 (-6000)");
}

TEST(ErrorText, NamesTheUnitBehindRangeAndStep) {
    Parameter debounce = doubleParameter("FG_TRIGGERIN_DEBOUNCE", 0.096, 3.024, 0.048);
    debounce.unit = "µs";
    EXPECT_EQ(refusedWrite(debounce, 4.5, outOfRange),
              "FG_TRIGGERIN_DEBOUNCE: 4.5 is outside 0.096 .. 3.024 µs (-6000)");
}

TEST(ErrorText, SaysThatAParameterCannotBeWritten) {
    EXPECT_EQ(refusedWrite(unsignedParameter("FG_PIXELDEPTH", 0, 128, 1), std::uint64_t{8}, notAvailable),
              "FG_PIXELDEPTH cannot be written (-12)");
}

TEST(ErrorText, NamesTheEntriesOfAnEnumeration) {
    EXPECT_EQ(refusedWrite(formatParameter(), std::int64_t{2}, outOfRange),
              "FG_FORMAT: 2 is none of FG_GRAY (3), FG_GRAY16 (1) (-6000)");
}

TEST(ErrorText, DoesNotBlameARangeThatHoldsTheValue) {
    EXPECT_EQ(width(1024, outOfRange), "FG_WIDTH: 1024 is out of range with the present settings (-6000)");
    EXPECT_EQ(refusedWrite(formatParameter(), std::int64_t{3}, outOfRange),
              "FG_FORMAT: FG_GRAY is out of range with the present settings (-6000)");
}

TEST(ErrorText, DoesNotBlameAStepThatTheValueKeeps) {
    EXPECT_EQ(refusedWrite(unsignedParameter("FG_MTU_SIZE", 44, 9036, 4), std::uint64_t{1496}, offStep),
              "FG_MTU_SIZE: 1496 is off its step, which is not the one that its description names (-7080)");
}

TEST(ErrorText, ExplainsRefusalsOfTheTrigger) {
    const Parameter pulses = unsignedParameter("FG_SENDSOFTWARETRIGGER", 1, 2040, 1);
    EXPECT_EQ(refusedWrite(pulses, std::uint64_t{5}, notSoftwareMode),
              "FG_SENDSOFTWARETRIGGER: 5 was refused: the trigger mode is not Software (-2140)");
}

TEST(ErrorText, PassesCodesOfTheHostOnWithTheirNumber) {
    EXPECT_EQ(withCode(-4711), "the host answered with an error (-4711)");
    EXPECT_EQ(refusedRead(unsignedParameter("FG_FILLLEVEL", 0, 100, 1), -4711),
              "FG_FILLLEVEL cannot be read: the host answered with an error (-4711)");
}

TEST(ErrorText, HasDifferentWordsForEveryCode) {
    std::set<std::string> texts{meaningOf(-4711)};
    for (const int code : {ok,
                           notAvailable,
                           triggerBusy,
                           initialisationFailed,
                           bufferTooSmall,
                           noHandle,
                           runtimeMissing,
                           invalidParameter,
                           noDescription,
                           fileNotFound,
                           downscaleReachesPeriod,
                           pulseReachesPeriod,
                           notSupported,
                           notSoftwareMode,
                           triggerNotActive,
                           configurationLoadFailed,
                           fileAccessFailed,
                           outOfRange,
                           offStep,
                           keyNotFound,
                           board::noRegister,
                           board::timeout,
                           board::notAcquiring,
                           board::busy,
                           board::noApplet,
                           board::appletThrew,
                           board::noBoard,
                           board::noScene})
        EXPECT_TRUE(texts.insert(meaningOf(code)).second) << code;
}

TEST(ErrorText, TellsHowAValueContradictsTheDescription) {
    const Parameter width = unsignedParameter("FG_WIDTH", 16, 4096, 16);
    EXPECT_EQ(contradictionOf(width, std::uint64_t{20}), "20 is off its step of 16");
    EXPECT_EQ(contradictionOf(width, std::uint64_t{5000}), "5000 is outside 16 .. 4096");
    EXPECT_EQ(contradictionOf(width, std::uint64_t{640}), "");
    EXPECT_EQ(contradictionOf(formatParameter(), std::int64_t{2}), "2 is none of FG_GRAY (3), FG_GRAY16 (1)");
    EXPECT_EQ(contradictionOf(formatParameter(), std::int64_t{3}), "");
    EXPECT_EQ(contradictionOf(doubleParameter("FG_DELAY", 0, 10, 0.016), 0.5), "")
        << "the step of a double rounds";
}

TEST(ErrorText, FilesThatCannotBeReachedCountAsNotFound) {
    EXPECT_EQ(statusOfFileError(fileNotFound), ExitStatus::notFound);
    EXPECT_EQ(statusOfFileError(fileAccessFailed), ExitStatus::notFound);
    EXPECT_EQ(statusOfFileError(notSupported), ExitStatus::refused);
}

} // namespace orbctl
