#include "console/TriggerDiagram.h"
#include "console/DiagramSvg.h"
#include "console/DiagramText.h"
#include "console/Duration.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orbctl {

namespace {

const DiagramSignal& named(const TriggerDiagram& diagram, const std::string& name) {
    return *std::find_if(diagram.signals.begin(), diagram.signals.end(),
                         [&](const DiagramSignal& signal) { return signal.name == name; });
}

bool hasSignal(const TriggerDiagram& diagram, const std::string& name) {
    return std::any_of(diagram.signals.begin(), diagram.signals.end(),
                       [&](const DiagramSignal& signal) { return signal.name == name; });
}

TriggerDiagram diagramWith(std::vector<BoardSignalSample> samples, std::vector<unsigned> ports = {0}) {
    return diagramOf(samples, {"title", 100, 140, std::move(ports)});
}

/// One signal over ticks 0 to 40, drawn with a column for each two ticks.
std::string lineOf(const DiagramSignal& signal) {
    TriggerDiagram diagram{"title", 0, 40, {signal}};
    diagram.signals[0].name = "s";
    const std::string text = textOf(diagram, 23);
    return text.substr(text.find("s  ") + 3, 20);
}

} // namespace

TEST(TriggerDiagram, TakesTheLevelsOfItsFirstTickAsTheStart) {
    const TriggerDiagram diagram =
        diagramWith({{100, boardSignalOutput, 0, 2, 1}, {120, boardSignalOutput, 0, 2, 0}});
    const DiagramSignal& output = named(diagram, "output 2");
    EXPECT_EQ(output.initialValue, 1U);
    ASSERT_EQ(output.changes.size(), 1U);
    EXPECT_EQ(output.changes[0].tick, 120U);
}

TEST(TriggerDiagram, KeepsAPulseInItsFirstTick) {
    const TriggerDiagram diagram = diagramWith({{100, boardSignalGeneratorPulse, 0, 0, 1}});
    EXPECT_EQ(named(diagram, "generator pulse").changes.size(), 1U);
}

TEST(TriggerDiagram, LeavesQuietInputsAndOtherPortsOut) {
    const TriggerDiagram diagram = diagramWith({{100, boardSignalInput, 0, 0, 0},
                                                {100, boardSignalInput, 0, 3, 0},
                                                {110, boardSignalInput, 0, 3, 1},
                                                {110, boardSignalExposure, 1, 0, 1}});
    EXPECT_FALSE(hasSignal(diagram, "input 0"));
    EXPECT_TRUE(hasSignal(diagram, "input 3"));
    EXPECT_TRUE(named(diagram, "exposure").changes.empty());
}

TEST(TriggerDiagram, NamesThePortsWhereThereAreTwo) {
    const TriggerDiagram diagram = diagramWith({{110, boardSignalExposure, 1, 0, 1}}, {0, 1});
    EXPECT_TRUE(named(diagram, "exposure, port 0").changes.empty());
    EXPECT_EQ(named(diagram, "exposure, port 1").changes.size(), 1U);
}

TEST(TriggerDiagram, DropsLevelsThatAreToldAgainAndWhatComesAfterItsEnd) {
    const TriggerDiagram diagram = diagramWith({{100, boardSignalPulseForm, 0, 0, 0},
                                                {110, boardSignalPulseForm, 0, 0, 0},
                                                {120, boardSignalPulseForm, 0, 0, 1},
                                                {141, boardSignalPulseForm, 0, 0, 0}});
    EXPECT_EQ(named(diagram, "pulse form 0").changes.size(), 1U);
}

TEST(TriggerDiagram, SetsItsMarksAtRoundTimes) {
    TriggerDiagram diagram;
    diagram.end = static_cast<std::uint64_t>(0.5 * ticksPerSecond);
    EXPECT_NEAR(markDistance(diagram, 10), 0.05 * ticksPerSecond, 1);
    EXPECT_NEAR(markDistance(diagram, 9), 0.1 * ticksPerSecond, 1);
    EXPECT_NEAR(markDistance(diagram, 4), 0.2 * ticksPerSecond, 1);
}

TEST(DiagramText, DrawsLevelsAndEdges) {
    EXPECT_EQ(lineOf({"", boardSignalOutput, SignalShape::level, 0, {{4, 1}, {20, 0}}}),
              "__|~~~~~~~|_________");
    EXPECT_EQ(lineOf({"", boardSignalOutput, SignalShape::level, 1, {}}), "~~~~~~~~~~~~~~~~~~~~");
}

TEST(DiagramText, KeepsPulsesThatAreShorterThanAColumn) {
    EXPECT_EQ(lineOf({"", boardSignalOutput, SignalShape::level, 0, {{8, 1}, {9, 0}}}),
              "____|_______________");
    EXPECT_EQ(lineOf({"", boardSignalOutput, SignalShape::level, 0, {{8, 1}, {8, 0}, {9, 1}}}),
              "____#~~~~~~~~~~~~~~~");
}

TEST(DiagramText, DrawsInstantsAndTheirCrowds) {
    EXPECT_EQ(lineOf({"", boardSignalFrameEnd, SignalShape::instant, 0, {{0, 1}, {10, 1}, {11, 1}, {40, 1}}}),
              "|____#_____________|");
}

TEST(DiagramText, DrawsAQueueByItsFillLevel) {
    EXPECT_EQ(lineOf({"", boardSignalQueueFillLevel, SignalShape::count, 0, {{4, 3}, {8, 12}, {12, 0}}}),
              "__33+++_____________");
}

TEST(DiagramText, NamesTimesBelow) {
    const TriggerDiagram diagram{"title", 0, 6250000, {{"s", boardSignalOutput, SignalShape::level, 0, {}}}};
    const std::string text = textOf(diagram, 53);
    EXPECT_EQ(text.rfind("title\ns  ____", 0), 0U);
    EXPECT_NE(text.find("\n   '0 s                     '50 ms"), std::string::npos) << text;
    EXPECT_EQ(text.find(" \n"), std::string::npos);
}

TEST(DiagramSvg, DrawsStepsOverTheWholeTime) {
    const TriggerDiagram diagram{
        "a < b", 0, 1000, {{"output 0", boardSignalOutput, SignalShape::level, 0, {{250, 1}, {500, 0}}}}};
    const std::string svg = svgOf(diagram);
    EXPECT_NE(svg.find("a &lt; b"), std::string::npos);
    EXPECT_NE(svg.find("M170 61H420V45H670V61H1170"), std::string::npos) << svg;
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST(DiagramSvg, NamesTheLargestFillLevel) {
    const TriggerDiagram diagram{
        "t", 0, 1000, {{"queue", boardSignalQueueFillLevel, SignalShape::count, 0, {{250, 7}}}}};
    EXPECT_NE(svgOf(diagram).find(">max 7</text>"), std::string::npos);
}

} // namespace orbctl
