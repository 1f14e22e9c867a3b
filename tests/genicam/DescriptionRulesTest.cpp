// The XML description of either port against the rules of GenApi 1.0, with the places where it deliberately breaks
// them; and the rules themselves, each against a document that breaks it.

#include "tests/genicam/DescriptionRules.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/XmlDescription.h"

#include <gmock/gmock.h>

#include <stdexcept>

using namespace kavo::test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// Both identifiers are "0", and a string's description stands behind its register part.
const auto onlyTheDeliberateOnes =
    ElementsAre(HasSubstr("'ProductGuid': [facet 'pattern'] The value '0' is not accepted"),
                HasSubstr("'VersionGuid': [facet 'pattern'] The value '0' is not accepted"),
                "FG_QEL_FILE: Element 'Description': This element is not expected.",
                "FG_LUT_CUSTOM_FILE: Element 'Description': This element is not expected.",
                "FG_LUT_SAVE_FILE: Element 'Description': This element is not expected.");

class DescriptionKeepsTheRules : public OnBothPorts {};
FOR_BOTH_PORTS(DescriptionKeepsTheRules);

} // namespace

TEST_P(DescriptionKeepsTheRules, AfterCreation) {
    EXPECT_THAT(brokenRules(xmlDescription(applet.handle(), port())), onlyTheDeliberateOnes);
}

TEST_P(DescriptionKeepsTheRules, WithMovedLimitsAndAccess) {
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, port()), 0);
    EXPECT_EQ(applet.set(FG_TRIGGERIN_DOWNSCALE, 4294967295U, port()), 0);
    EXPECT_EQ(applet.set(FG_AREATRIGGERMODE, 2U, port()), 0);
    EXPECT_EQ(applet.set(FG_LUT_TYPE, 0U, port()), 0);
    EXPECT_THAT(brokenRules(xmlDescription(applet.handle(), port())), onlyTheDeliberateOnes);
}

TEST_P(DescriptionKeepsTheRules, WithTheRegistersOfTheDesign) {
    const ScopedEnvironment registers("KAVO_ENABLE_DRA", "1");
    Creation creation;
    EXPECT_THAT(brokenRules(xmlDescription(creation.handle(), port())), onlyTheDeliberateOnes);
}

TEST_P(DescriptionKeepsTheRules, WithTheParametersOfTheInnerHandle) {
    const ScopedEnvironment inspected("KAVO_ENABLE_DQXA", "1");
    Creation creation;
    EXPECT_THAT(brokenRules(xmlDescription(creation.handle(), port())), onlyTheDeliberateOnes);
}

namespace {

/// A change of the description that breaks one rule, and the words by which the rule is known.
struct Breach {
    const char* name;
    const char* text;
    const char* instead;
    const char* words;
};

void PrintTo(const Breach& breach, std::ostream* out) { *out << breach.name; }

/// The description of port 0 without its deliberate breaches.
std::string faultless() {
    AppletOnBoard applet;
    std::string xml = xmlDescription(applet.handle(), 0);
    for (const char* attribute : {"ProductGuid=\"", "VersionGuid=\""}) {
        xml.replace(xml.find(attribute) + 13, 1, "01234567-89ab-cdef-0123-456789abcdef");
    }
    for (std::size_t node = 0; (node = xml.find("<StringReg", node + 1)) != std::string::npos;) {
        const std::size_t start = xml.find("<Description>", node);
        xml.erase(start, xml.find("</StringReg>", start) - start);
    }
    return xml;
}

std::string breaking(const Breach& breach) {
    const std::string xml = faultless();
    const std::string text = breach.text;
    const std::size_t place = xml.find(text);
    if (place == std::string::npos) {
        throw std::runtime_error("not in the description: " + text);
    }
    return std::string(xml).replace(place, text.size(), breach.instead);
}

class DescriptionRule : public testing::TestWithParam<Breach> {};

const Breach breaches[] = {
    {"Balance", "</Integer>", "</Float>", "not well-formed"},
    {"EscapedTexts", "&apos;", "&", "not well-formed"},
    {"NodeNames", "<Category Name='ROI'", "<Category Name='R O I'",
     "'R O I' is not a valid value of the atomic type 'NodeName'"},
    {"NamesOfEntries", "<EnumEntry Name=\"FG_GRAY\"", "<EnumEntry Name=\"Gray 8bit\"",
     "'Gray 8bit' is not a valid value of the atomic type 'NodeName'"},
    {"NoNodeTwice", "<Integer Name='FG_HEIGHT'>", "<Integer Name='FG_WIDTH'>", "key identity-constraint"},
    {"NoEntryTwice", "<EnumEntry Name=\"FG_GRAY\"", "<EnumEntry Name=\"FG_GRAY16\"",
     "unique identity-constraint 'EntryNames'"},
    {"NoEntryValueTwice", "<Value>3</Value>", "<Value>1</Value>", "unique identity-constraint 'EntryValues'"},
    {"NoAddressTwice", "<Address>100</Address>", "<Address>200</Address>",
     "unique identity-constraint 'Addresses'"},
    {"ValueIsARegister", "<pValue>FG_WIDTH_Reg", "<pValue>FG_WIDE_Reg", "keyref 'RegisterOfFeature'"},
    {"ValueIsNoFeature", "<pValue>FG_WIDTH_Reg", "<pValue>FG_HEIGHT", "keyref 'RegisterOfFeature'"},
    {"FeatureExists", "<pFeature>FG_WIDTH<", "<pFeature>FG_WIDE<", "keyref 'FeatureOfCategory'"},
    {"FeatureIsNoRegister", "<pFeature>FG_WIDTH<", "<pFeature>FG_WIDTH_Reg<", "keyref 'FeatureOfCategory'"},
    {"FeatureInOneCategory", "<pFeature>FG_WIDTH<", "<pFeature>FG_HEIGHT<",
     "unique identity-constraint 'FeatureInOneCategory'"},
    {"PortExists", "<pPort>DevicePort<", "<pPort>Device<", "keyref 'PortOfRegister'"},
    {"Address", "<Address>100</Address>", "",
     "Expected is one of ( ToolTip, Description, DisplayName, Address )"},
    {"Length", "<Length>4</Length>", "", "Expected is ( Length )"},
    {"PositiveLength", "<Length>4</Length>", "<Length>0</Length>", "'Length': [facet 'pattern']"},
    {"AccessMode", "<AccessMode>RO</AccessMode>", "", "Expected is ( AccessMode )"},
    {"KnownAccessMode", "<AccessMode>RO</AccessMode>", "<AccessMode></AccessMode>",
     "'AccessMode': [facet 'enumeration']"},
    {"Port", "<pPort>DevicePort</pPort>", "", "Expected is ( pPort )"},
    {"ByteOrder", "<Endianess>LittleEndian</Endianess>", "", "Missing child element(s)"},
    {"Limits", "<Min>16</Min>", "<Min>1.5</Min>", "'Min': [facet 'pattern']"},
    {"FloatLimits", "<Max>6250000</Max>", "<Max>6,25</Max>",
     "not a valid value of the atomic type 'xs:double'"},
    {"PositiveStep", "<Inc>16</Inc>", "<Inc>0</Inc>", "'Inc': [facet 'pattern']"},
    {"OrderOfLimits", "<Min>16</Min>\n<Max>4096</Max>", "<Max>4096</Max>\n<Min>16</Min>",
     "Element 'Min': This element is not expected"},
    {"EntriesBeforeValue", "<Enumeration Name='FG_FORMAT'>",
     "<Enumeration Name='FG_FORMAT'><pValue>FG_FORMAT_Reg</pValue>",
     "Element 'pValue': This element is not expected"},
    {"KnownNameSpace", "NameSpace='Standard'", "NameSpace='Root'", "'NameSpace': [facet 'enumeration']"},
    {"KnownNodes", "<Port Name=\"DevicePort\">",
     "<Socket Name=\"Other\"></Socket>\n<Port Name=\"DevicePort\">",
     "Element 'Socket': This element is not expected"},
    {"SchemaVersion", "SchemaMajorVersion=\"1\"", "SchemaMajorVersion=\"2\"",
     "does not match the fixed value constraint"},
};

INSTANTIATE_TEST_SUITE_P(Breaches, DescriptionRule, testing::ValuesIn(breaches),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.name); });

} // namespace

TEST(DescriptionRules, AreKeptByADescriptionWithoutItsDeliberateBreaches) {
    EXPECT_THAT(brokenRules(faultless()), testing::IsEmpty());
}

TEST_P(DescriptionRule, IsHeld) {
    EXPECT_THAT(brokenRules(breaking(GetParam())), testing::Contains(HasSubstr(GetParam().words)));
}
