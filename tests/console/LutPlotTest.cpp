#include "console/LutPlotPicture.h"
#include "console/LutPlotSvg.h"
#include "console/LutPlotText.h"

#include <gtest/gtest.h>
#include <sstream>

namespace orbctl {

namespace {

LookupTable ramp(unsigned port, bool falling) {
    LookupTable table;
    table.port = port;
    table.isInverted = falling;
    for (std::uint32_t input = 0; input < 4096; ++input)
        table.values.push_back(falling ? 4095 - input : input);
    return table;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace

TEST(LutPlot, DrawsARampWithBrailleDots) {
    const auto lines = linesOf(textOf({ramp(0, false)}, 22, 4, Terminal::plain()));
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[0], "4095 │            ⣀⡤⠖⠋");
    EXPECT_EQ(lines[1], "     │        ⣀⡤⠖⠋⠁");
    EXPECT_EQ(lines[2], "     │   ⢀⣠⠴⠚⠉");
    EXPECT_EQ(lines[3], "   0 │⣠⠴⠚⠉");
    EXPECT_EQ(lines[4], "     └────────────────");
    EXPECT_EQ(lines[5], "      0           4095");
    EXPECT_EQ(lines[6], "⣀⣀⣀  port 0: offset 0, gain 1, gamma 1, invert off");
}

TEST(LutPlot, DrawsTheSecondCurveWithBlocks) {
    const auto lines = linesOf(textOf({ramp(0, false), ramp(1, true)}, 22, 4, Terminal::plain()));
    EXPECT_EQ(lines[0], "4095 │▀▙▄▖        ⣀⡤⠖⠋");
    EXPECT_EQ(lines.back(), "▄▄▄  port 1: offset 0, gain 1, gamma 1, invert on");
}

TEST(LutPlot, SaysThatACurveLiesBelowTheOther) {
    const std::string text = textOf({ramp(0, false), ramp(1, false)}, 22, 4, Terminal::plain());
    EXPECT_NE(text.find("port 1: offset 0, gain 1, gamma 1, invert off (the same curve)\n"),
              std::string::npos)
        << text;
}

TEST(LutPlot, KeepsALeastWidth) {
    EXPECT_EQ(textOf({ramp(0, false)}, 1, 4, Terminal::plain()),
              textOf({ramp(0, false)}, 22, 4, Terminal::plain()));
}

TEST(LutPlot, SvgHasACurveAndALegendForEachPort) {
    LookupTable file = ramp(1, true);
    file.isProcessed = false;
    file.file = "a<b>&c.lut";
    const std::string svg = svgOf({ramp(0, false), file});
    EXPECT_NE(svg.find("<path d=\"M70 690L710 50\""), std::string::npos) << "two points make a straight line";
    EXPECT_NE(svg.find("<path d=\"M70 50L710 690\""), std::string::npos);
    EXPECT_NE(svg.find(">port 0: offset 0, gain 1, gamma 1, invert off</text>"), std::string::npos);
    EXPECT_NE(svg.find(">port 1: file a&lt;b&gt;&amp;c.lut</text>"), std::string::npos);
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST(LutPlot, PictureShowsBothCurvesAndTheLegend) {
    const PictureCanvas canvas = pictureOf({ramp(0, false), ramp(1, true)});
    const GrayPicture picture = canvas.picture();
    // The curves begin and end in the corners of a square of 1024 pixels.
    constexpr unsigned left = 90;
    constexpr unsigned top = 50;
    constexpr unsigned last = 1023;
    EXPECT_EQ(canvas.at(left, top + last), 0) << "port 0 begins at the bottom";
    EXPECT_EQ(canvas.at(left + last, top), 0);
    EXPECT_EQ(canvas.at(left, top), 140) << "port 1 begins at the top";
    EXPECT_EQ(canvas.at(left + 300, top + 600), 255);
    unsigned dark = 0;
    for (unsigned y = top + last + 60; y < picture.height; ++y)
        for (unsigned x = left + 80; x < picture.width; ++x)
            dark += canvas.at(x, y) < 100 ? 1 : 0;
    EXPECT_GT(dark, 1000U) << "letters of the legend";
}

} // namespace orbctl
