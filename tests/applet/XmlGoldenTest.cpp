// The XML description of both ports, byte for byte, after creation and after limits and access have moved.

#include "platform/ErrorCodes.h"
#include "tests/applet/CatalogueData.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/XmlDescription.h"

#include <algorithm>
#include <cstdlib>

using kavo::test::fileContent;
using kavo::test::xmlDescription;

namespace {

std::string goldenFile(int port) {
    return fileContent(std::string(GOLDEN_FILES) + "/description-port" + std::to_string(port) + ".xml");
}

/// The text with what stands behind `start` up to `end` replaced, at the first place behind `from`.
std::string replaced(std::string text, const std::string& from, const std::string& tag,
                     const std::string& value) {
    const std::size_t place = text.find("<" + tag + ">", text.find(from)) + tag.size() + 2;
    return text.replace(place, text.find("</" + tag + ">", place) - place, value);
}

std::string integerNode(const char* name) { return std::string("<Integer Name='") + name + "'>"; }

/// Equality of two documents; a difference is shown with its surroundings only.
testing::AssertionResult same(const std::string& text, const std::string& expected) {
    if (text == expected) {
        return testing::AssertionSuccess();
    }
    const auto place = static_cast<std::size_t>(
        std::mismatch(text.begin(), text.end(), expected.begin(), expected.end()).first - text.begin());
    const std::size_t start = place > 80 ? place - 80 : 0;
    return testing::AssertionFailure() << "from byte " << place << "\n"
                                       << text.substr(start, 160) << "\ninstead of\n"
                                       << expected.substr(start, 160);
}

class XmlGolden : public OnBothPorts {
  protected:
    std::string xml() { return xmlDescription(applet.handle(), port()); }
    std::string golden = goldenFile(port());
};
FOR_BOTH_PORTS(XmlGolden);

} // namespace

TEST_P(XmlGolden, TheStateAfterCreationIsByteForByteTheGoldenFile) {
    ASSERT_FALSE(golden.empty());
    EXPECT_TRUE(same(xml(), golden));
}

TEST_P(XmlGolden, BuildingItChangesNothing) {
    xml();
    AppletOnBoard::forgetCalls();
    EXPECT_TRUE(same(xml(), golden));
    EXPECT_TRUE(simulator::hostCalls().calls().empty());
    EXPECT_EQ(applet.lastError(), 0);
}

TEST_P(XmlGolden, MovedLimitsAreShownOnTheirPortOnly) {
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, port()), 0);
    EXPECT_EQ(applet.set(FG_XOFFSET, 1600U, port()), 0);
    EXPECT_EQ(applet.set(FG_YOFFSET, 100U, port()), 0);
    EXPECT_EQ(applet.set(FG_TRIGGERIN_DOWNSCALE, 4294967295U, port()), 0);
    EXPECT_EQ(applet.set(FG_TRIGGERIN_DOWNSCALE_PHASE, 6U, port()), 0);
    std::string expected = replaced(golden, integerNode("FG_XOFFSET"), "Max", "3584");
    expected = replaced(expected, integerNode("FG_WIDTH"), "Max", "2496");
    expected = replaced(expected, integerNode("FG_HEIGHT"), "Max", "3996");
    expected = replaced(expected, integerNode("FG_TRIGGERIN_DOWNSCALE_PHASE"), "Max", "4294967294");
    expected = replaced(expected, integerNode("FG_TRIGGERIN_DOWNSCALE"), "Min", "7");
    EXPECT_TRUE(same(xml(), expected));
    EXPECT_TRUE(same(xmlDescription(applet.handle(), otherPort()), goldenFile(otherPort())));
}

TEST_P(XmlGolden, TheControlsOfTheOtherLookupTableTypeAreReadOnly) {
    EXPECT_EQ(applet.set(FG_LUT_TYPE, 0U, port()), 0);
    std::string expected = replaced(golden, "<StringReg Name=\"FG_LUT_CUSTOM_FILE\">", "AccessMode", "RW");
    for (const char* name : {"OFFSET", "GAIN", "GAMMA", "INVERT"}) {
        expected = replaced(expected, std::string("Reg Name=\"FG_PROCESSING_") + name + "_Reg\">",
                            "AccessMode", "RO");
    }
    EXPECT_TRUE(same(xml(), expected));
}

TEST_P(XmlGolden, MovedAccessIsShown) {
    EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, 2U, port()), 0);
    EXPECT_TRUE(
        same(xml(), replaced(golden, "<IntReg Name=\"FG_SENDSOFTWARETRIGGER_Reg\">", "AccessMode", "RO")));
    EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, 1U, port()), 0);
    EXPECT_TRUE(same(xml(), golden));
}

TEST_P(XmlGolden, EveryParameterWithATemplateIsAFeatureOnce) {
    for (const auto& row : kavo::test::documentedCatalogue()) {
        const std::string feature = "<pFeature>" + row.name + "</pFeature>\n";
        const std::size_t first = golden.find(feature);
        const bool isShown = !row.type.empty() && row.type != "uint field";
        EXPECT_EQ(first != std::string::npos, isShown) << row.name;
        EXPECT_EQ(golden.find(feature, first + 1), std::string::npos) << row.name;
    }
}

TEST_P(XmlGolden, ItIsWellFormed) {
    const kavo::test::TemporaryFolder folder;
    const std::string file = folder.makeFile("description.xml", xml());
    EXPECT_EQ(std::system(("xmllint --noout --nonet '" + file + "'").c_str()), 0);
}

TEST_P(XmlGolden, RegistersStayOutOfIt) {
    const kavo::test::ScopedEnvironment registers("KAVO_ENABLE_DRA", "1");
    kavo::test::Creation creation;
    EXPECT_TRUE(same(xmlDescription(creation.handle(), port()), golden));
}

TEST_P(XmlGolden, InspectedParametersComeFirst) {
    const kavo::test::ScopedEnvironment inspected("KAVO_ENABLE_DQXA", "1");
    kavo::test::Creation creation;
    const std::string text = xmlDescription(creation.handle(), port());
    const std::size_t opening = golden.find(".xsd\">\n") + 7;
    EXPECT_EQ(text.substr(0, opening), golden.substr(0, opening));
    EXPECT_EQ(text.find("<IntReg Name=\"DQXA_"), opening);
    EXPECT_NE(text.find("<Category Name='DirectQXAccess'  ><pFeature>DQXA_"), std::string::npos);
}

TEST_P(XmlGolden, PortsBehindTheSecondHaveNone) {
    for (const int nowhere : {2, 3, 4, -1}) {
        unsigned size = 0;
        EXPECT_EQ(Fg_getParameterInfoXML(applet.handle(), nowhere, nullptr, &size),
                  kavo::error::noDescription);
        EXPECT_EQ(applet.lastError(), kavo::error::noDescription);
        EXPECT_EQ(Fg_getParameterInfo(applet.handle(), nowhere), nullptr);
    }
}
