// The XML description of a registry that a test fills by hand: filters, templates, categories, size protocol.

#include "appletwrappers-baselib/Category.h"
#include "appletwrappers-baselib/ParameterInfoBuilderXML.h"
#include "appletwrappers-baselib/XmlFilters.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"
#include "tests/support/CommaLocale.h"

#include <cstring>
#include <gtest/gtest.h>

namespace error = kavo::error;

namespace {

/// Answers the description query for one name.
class DescribedWrapper : public kavo::test::BareWrapper {
  public:
    std::vector<std::string> askedNames;

    int Fg_getParameter(int id, void* value, int port) override {
        auto* text = static_cast<char*>(value);
        askedNames.emplace_back(text);
        if (id != parameterDescriptionQuery || port != 2 || std::strcmp(text, "DESCRIBED") != 0) {
            return error::invalidParameter;
        }
        std::strcpy(text, "It's 1 < 2 & \"3\" > 0.");
        return error::ok;
    }
};

constexpr int port = 2;
constexpr const char* categoriesAndEnd = "<Port Name=\"DevicePort\"></Port>\n</RegisterDescription>\n";

class XmlDescription : public testing::Test {
  protected:
    /// The document behind its opening.
    std::string body() {
        const std::string text = document();
        const std::size_t end = text.find(".xsd\">\n");
        return text.substr(end + 7);
    }
    std::string document() { return ParameterInfoBuilderXML(registry, wrapper, port).build(); }
    /// What follows the nodes when a single category holds the named features.
    static std::string oneCategory(const std::string& name, const std::vector<std::string>& features) {
        std::string text = "<Category Name='Root' NameSpace='Standard' ><pFeature>" + name +
                           "</pFeature>\n</Category>\n<Category Name='" + name + "'  >";
        for (const std::string& feature : features) {
            text += "<pFeature>" + feature + "</pFeature>\n";
        }
        return text + "</Category>\n" + categoriesAndEnd;
    }
    static std::string registerPart(const std::string& address, const char* length, const char* access) {
        return (address.empty() ? "" : "<Address>" + address + "</Address>\n") + "<Length>" + length +
               "</Length>\n<AccessMode>" + access + "</AccessMode>\n<pPort>DevicePort</pPort>\n";
    }
    static std::string signedInteger(const std::string& address, const char* access,
                                     const std::string& limits) {
        return "<IntReg Name=\"P_Reg\">" + registerPart(address, "4", access) +
               "<Sign>Signed</Sign>\n<Endianess>LittleEndian</Endianess>\n</IntReg>\n"
               "<Integer Name='P'><pValue>P_Reg</pValue>\n" +
               limits + "</Integer>\n\n\r";
    }

    DescribedWrapper wrapper;
    Fg_ParameterInfo& registry = wrapper.parameterInfo();
    RegisterInfo* group = registry.addGroupInfo(port, nullptr, "G");
};

} // namespace

TEST(XmlFilters, TextsKeepEverythingButTheReservedCharacters) {
    EXPECT_EQ(xmlStringFilter("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e&apos;f");
    EXPECT_EQ(xmlStringFilter("&amp;"), "&amp;amp;");
    EXPECT_EQ(xmlStringFilter("\n\t\xC2\xB5s _-0"), "\n\t\xC2\xB5s _-0");
    EXPECT_EQ(xmlStringFilter(""), "");
}

TEST(XmlFilters, NamesKeepLettersDigitsAndUnderscores) {
    EXPECT_EQ(xmlNameFilter("Pulse Form-Generator_0 (\xC3\xA4)"), "PulseFormGenerator_0");
    EXPECT_EQ(xmlNameFilter("@AZ[`az{/09:^_"), "AZaz09_");
    EXPECT_EQ(xmlNameFilter("- \xC2\xB5"), "");
}

TEST(XmlCategory, KeepsChildrenAndFeaturesInOrder) {
    Category root("Root");
    Category& first = root.addChild("First");
    root.addChild("Second");
    first.addFeature("z");
    first.addFeature("a");
    EXPECT_EQ(root.getName(), "Root");
    EXPECT_EQ(root.getChildCount(), 2U);
    EXPECT_EQ(root.getChild(1).getName(), "Second");
    EXPECT_EQ(root.getChild("First"), &first);
    EXPECT_EQ(root.getChild("Third"), nullptr);
    EXPECT_TRUE(root.hasChild("Second"));
    EXPECT_FALSE(root.hasChild("second"));
    EXPECT_EQ(first.getFeatureCount(), 2U);
    EXPECT_EQ(first.getFeature(0), "z");
    EXPECT_TRUE(first.hasFeature("a"));
    EXPECT_FALSE(first.hasFeature("A"));
}

TEST_F(XmlDescription, OpensWithOneAttributeALine) {
    const std::string text = document();
    EXPECT_EQ(text.substr(0, text.find("<Category")),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
              "<RegisterDescription\n"
              "ModelName=\"A Type\"\n"
              "VendorName=\"Kavotronic\"\n"
              "StandardNameSpace=\"None\"\n"
              "SchemaMajorVersion=\"1\"\n"
              "SchemaMinorVersion=\"0\"\n"
              "SchemaSubMinorVersion=\"1\"\n"
              "MajorVersion=\"1\"\n"
              "MinorVersion=\"0\"\n"
              "SubMinorVersion=\"0\"\n"
              "ProductGuid=\"0\"\n"
              "VersionGuid=\"0\"\n"
              "xmlns=\"http://www.genicam.org/GenApi/Version_1_0\"\n"
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
              "xsi:schemaLocation=\"http://www.genicam.org/GenApi/Version_1_0 "
              "http://www.genicam.org/GenApi/GenApiSchema_Version_1_0.xsd\">\n");
}

TEST_F(XmlDescription, AnEmptyRegistryHasTheRootCategoryOnly) {
    EXPECT_EQ(body(),
              std::string("<Category Name='Root' NameSpace='Standard' ></Category>\n") + categoriesAndEnd);
}

TEST_F(XmlDescription, AnIntegerStandsBehindItsSignedRegister) {
    registry.addInfoUInt(group, "D", "P", 1, 4294967295U, 16, 7, 1, 1, nullptr, 77, port);
    EXPECT_EQ(body(), signedInteger("77", "RW", "<Min>1</Min>\n<Max>4294967295</Max>\n<Inc>16</Inc>\n") +
                          oneCategory("G", {"P"}));
}

TEST_F(XmlDescription, ASignedIntegerShowsNegativeLimits) {
    registry.addInfoInt(group, "D", "P", -5, 5, 1, 3, 1, 1, nullptr, 77, port);
    EXPECT_EQ(body(), signedInteger("77", "RW", "<Min>-5</Min>\n<Max>5</Max>\n<Inc>1</Inc>\n") +
                          oneCategory("G", {"P"}));
}

TEST_F(XmlDescription, AnIncrementAndAnAddressOfZeroAreLeftOut) {
    registry.addInfoUInt(group, "D", "P", 0, 9, 0, 1, 1, 1, nullptr, 0, port);
    EXPECT_EQ(body(), signedInteger("", "RO", "<Min>0</Min>\n<Max>9</Max>\n") + oneCategory("G", {"P"}));
}

TEST_F(XmlDescription, AccessFollowsTheLowestTwoBits) {
    RegisterInfo* record = registry.addInfoUInt(group, "D", "P", 0, 1, 1, 0, 1, 1, nullptr, 5, port);
    const std::pair<int, const char*> modes[] = {{0, ""}, {1, "RO"}, {2, "WO"}, {3, "RW"},
                                                 {4, ""}, {5, "RO"}, {6, "WO"}, {7, "RW"}};
    for (const auto& [flags, mode] : modes) {
        record->accessFlags = flags;
        EXPECT_NE(body().find(std::string("<AccessMode>") + mode + "</AccessMode>\n"), std::string::npos)
            << flags;
    }
}

TEST_F(XmlDescription, AFloatHasNoIncrementAndDecimalLimits) {
    registry.addInfoDouble(group, "D", "P", -0.5, 1e9, 0.016, 7, 1, 1, "s", 78, port);
    EXPECT_EQ(body(), "<FloatReg Name=\"P_Reg\">" + registerPart("78", "8", "RW") +
                          "<Endianess>LittleEndian</Endianess>\n</FloatReg>\n"
                          "<Float Name=\"P\"><pValue>P_Reg</pValue>\n<Min>-0.5</Min>\n<Max>1000000000</Max>\n"
                          "</Float>\n\n\r" +
                          oneCategory("G", {"P"}));
}

TEST_F(XmlDescription, AnEnumerationSortsItsEntriesAndStandsBeforeItsUnsignedRegister) {
    RegisterInfo* record = registry.addInfoEnum(group, "D", "P", 3, 7, 1, 1, nullptr, 79, port);
    registry.addEnumNameValue(record, 0, "Nine", 9, "NI<NE");
    registry.addEnumNameValue(record, 1, "Minus", -1, "MINUS");
    registry.addEnumNameValue(record, 2, "No 'symbol'", 4, nullptr);
    EXPECT_EQ(body(), "<Enumeration Name='P'>"
                      "<EnumEntry Name=\"MINUS\"><Value>-1</Value>\n</EnumEntry>\n"
                      "<EnumEntry Name=\"No &apos;symbol&apos;\"><Value>4</Value>\n</EnumEntry>\n"
                      "<EnumEntry Name=\"NI&lt;NE\"><Value>9</Value>\n</EnumEntry>\n"
                      "<pValue>P_Reg</pValue>\n</Enumeration>\n"
                      "<IntReg Name=\"P_Reg\">" +
                          registerPart("79", "4", "RW") +
                          "<Sign>Unsigned</Sign>\n<Endianess>LittleEndian</Endianess>\n</IntReg>\n\n\r" +
                          oneCategory("G", {"P"}));
}

TEST_F(XmlDescription, AStringIsARegisterOfItsOwn) {
    registry.addInfoString(group, "D", "P", "*.lut", 7, 1, 1, nullptr, 80, port);
    registry.addInfoString(group, "D", "DESCRIBED", nullptr, 1, 1, 1, nullptr, 81, port);
    EXPECT_EQ(body(), "<StringReg Name=\"P\">" + registerPart("80", "4096", "RW") + "</StringReg>\n\n\r" +
                          "<StringReg Name=\"DESCRIBED\">" + registerPart("81", "4096", "RO") +
                          "<Description>It&apos;s 1 &lt; 2 &amp; &quot;3&quot; &gt; 0.</Description>\n"
                          "</StringReg>\n\n\r" +
                          oneCategory("G", {"P", "DESCRIBED"}));
}

TEST_F(XmlDescription, DescriptionsComeBeforeTheValue) {
    RegisterInfo* record = registry.addInfoEnum(group, "D", "DESCRIBED", 1, 7, 1, 1, nullptr, 79, port);
    registry.addEnumNameValue(record, 0, "One", 1, "ONE");
    registry.addInfoUInt(group, "D", "DESCRIBED", 0, 1, 1, 7, 1, 1, nullptr, 5, port);
    registry.addInfoDouble(group, "D", "DESCRIBED", 0, 1, 1, 7, 1, 1, nullptr, 5, port);
    const std::string description =
        "<Description>It&apos;s 1 &lt; 2 &amp; &quot;3&quot; &gt; 0.</Description>\n";
    const std::string text = body();
    EXPECT_NE(text.find("<Enumeration Name='DESCRIBED'>" + description + "<EnumEntry"), std::string::npos);
    EXPECT_NE(text.find("<Integer Name='DESCRIBED'>" + description + "<pValue>"), std::string::npos);
    EXPECT_NE(text.find("<Float Name=\"DESCRIBED\">" + description + "<pValue>"), std::string::npos);
}

TEST_F(XmlDescription, NamesAreFilteredAsTextsInNodesAndAsNamesInCategories) {
    RegisterInfo* odd = registry.addGroupInfo(port, group, "Odd & Group");
    registry.addInfoUInt(odd, "D", "A&B", 0, 1, 1, 7, 1, 1, nullptr, 5, port);
    const std::string text = body();
    EXPECT_NE(text.find("<Integer Name='A&amp;B'><pValue>A&amp;B_Reg</pValue>"), std::string::npos);
    EXPECT_NE(text.find("<Category Name='OddGroup'  ><pFeature>AB</pFeature>\n</Category>"),
              std::string::npos);
}

TEST_F(XmlDescription, InvisibleParametersFieldsAndWideIntegersAreLeftOut) {
    registry.addInfoUInt(group, "D", "INVISIBLE", 0, 1, 1, 7, 1, 0, nullptr, 1, port);
    registry.addInfoUIntField(group, "D", "FIELD", 4, 0, 1, 1, 7, 1, 1, nullptr, 2, port);
    registry.addInfoUInt64(group, "D", "WIDE", 0, 1, 1, 7, 1, 1, nullptr, 3, port);
    registry.addInfoInt64(group, "D", "WIDER", 0, 1, 1, 7, 1, 1, nullptr, 4, port);
    registry.addInfoIntField(group, "D", "FIELDS", 4, 0, 1, 1, 7, 1, 1, nullptr, 5, port);
    EXPECT_EQ(body(),
              std::string("<Category Name='Root' NameSpace='Standard' ></Category>\n") + categoriesAndEnd);
}

TEST_F(XmlDescription, RegistersStayOutButTheInspectedParametersAreIn) {
    RegisterInfo* registers = registry.addGroupInfo(port, nullptr, "Direct Register Access");
    RegisterInfo* inspected = registry.addGroupInfo(port, nullptr, "Direct QX Access");
    registry.addInfoUInt(registers, "R", "DRA_R", 0, 1, 1, 7, 1, 1, nullptr, 1, port);
    registry.addInfoUInt(inspected, "Q", "DQXA_Q", 0, 1, 1, 7, 1, 1, nullptr, 2, port);
    const std::string text = body();
    EXPECT_EQ(text.find("DRA_R"), std::string::npos);
    EXPECT_EQ(text.find("DirectRegisterAccess"), std::string::npos);
    EXPECT_NE(text.find("<Category Name='DirectQXAccess'  ><pFeature>DQXA_Q</pFeature>\n"),
              std::string::npos);
}

TEST_F(XmlDescription, AParameterWithoutGroupIsLeftOut) {
    RegisterInfo alone = *registry.addInfoUInt(group, "D", "ALONE", 0, 1, 1, 7, 1, 1, nullptr, 1, port);
    alone.next = nullptr;
    group->next = &alone;
    const std::string text = body();
    group->next = nullptr;
    EXPECT_NE(text.find("<Integer Name='ALONE'>"), std::string::npos);
    EXPECT_EQ(text.find("<Integer Name='ALONE'>"), text.rfind("<Integer Name='ALONE'>"));
}

TEST_F(XmlDescription, AnEntryWithoutSymbolHasItsDisplayNameOrNone) {
    RegisterInfo* info = registry.addInfoEnum(group, "D", "CHOICE", 2, 7, 1, 1, nullptr, 1, port);
    registry.addEnumNameValue(info, 0, "Shown & Told", 4, nullptr);
    registry.addEnumNameValue(info, 1, nullptr, 5, nullptr);
    const std::string text = body();
    EXPECT_NE(text.find("<EnumEntry Name=\"Shown &amp; Told\""), std::string::npos) << text;
    EXPECT_NE(text.find("<EnumEntry Name=\"\""), std::string::npos) << text;
}

TEST_F(XmlDescription, AWrapperIsNotAskedToDescribeANameThatLeavesNoRoomForAnAnswer) {
    const std::string longest(4095, 'L');
    const std::string tooLong(4096, 'T');
    registry.addInfoString(group, "D", longest.c_str(), nullptr, 1, 1, 1, nullptr, 1, port);
    registry.addInfoString(group, "D", tooLong.c_str(), nullptr, 1, 1, 1, nullptr, 2, port);
    const std::string text = body();
    EXPECT_NE(text.find(longest), std::string::npos);
    EXPECT_NE(text.find(tooLong), std::string::npos);
    EXPECT_EQ(wrapper.askedNames, std::vector<std::string>{longest});
}

TEST_F(XmlDescription, CategoriesAreOneLevelDeepInTheOrderOfTheirFirstParameter) {
    const auto add = [&](RegisterInfo* parent, const char* name) {
        registry.addInfoString(parent, "D", name, nullptr, 1, 1, 1, nullptr, 0, port);
    };
    RegisterInfo* last = registry.addGroupInfo(port, nullptr, "Last Added");
    RegisterInfo* inner = registry.addGroupInfo(port, group, "Inner");
    RegisterInfo* innermost = registry.addGroupInfo(port, inner, "--");
    add(group, "A");
    add(innermost, "B");
    add(inner, "C");
    RegisterInfo* sameName = registry.addGroupInfo(port, last, "Inner");
    add(sameName, "D");
    add(last, "E");
    RegisterInfo* nameless = registry.addGroupInfo(port, last, "");
    add(nameless, "F");
    const std::string text = body();
    // The group added last comes first; an empty name means the root, a name of which nothing is left does
    // not.
    EXPECT_EQ(
        text.substr(text.find("<Category")),
        "<Category Name='Root' NameSpace='Standard' ><pFeature>F</pFeature>\n<pFeature>Inner</pFeature>\n"
        "<pFeature>LastAdded</pFeature>\n<pFeature></pFeature>\n<pFeature>G</pFeature>\n</Category>\n"
        "<Category Name='Inner'  ><pFeature>D</pFeature>\n<pFeature>C</pFeature>\n</Category>\n"
        "<Category Name='LastAdded'  ><pFeature>E</pFeature>\n</Category>\n"
        "<Category Name=''  ><pFeature>B</pFeature>\n</Category>\n"
        "<Category Name='G'  ><pFeature>A</pFeature>\n</Category>\n" +
            std::string(categoriesAndEnd));
}

TEST_F(XmlDescription, LimitsHaveADecimalPointUnderEveryLocale) {
    const kavo::test::CommaLocale locale;
    registry.addInfoDouble(group, "D", "P", 0.01455191522836685, 6.25e6, 1, 7, 1, 1, nullptr, 78, port);
    EXPECT_NE(body().find("<Min>0.01455191522836685</Min>\n<Max>6250000</Max>\n"), std::string::npos);
}
