#include "console/ConfigurationComparison.h"
#include "console/Failure.h"
#include "tests/console/ExampleParameters.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl {

using test::doubleParameter;
using test::formatParameter;
using test::textParameter;
using test::unsignedParameter;

namespace {

const std::string header = "[Kamerasektion]\n\nConfigFileVersion=2.0;\nHersteller='Somebody';\n"
                           "Typ='Orbelline';\nVersion='2.2';\nLoadAppletId=0;\nAktivePort=0;\n";

class Configuration : public ::testing::Test {
  protected:
    ConfigurationFile file(const std::string& content) const {
        return ConfigurationFile(mFolder.makeFile("a.mcf", content));
    }
    ExitStatus statusOfOpening(const std::string& path) const {
        try {
            const ConfigurationFile opened(path);
        } catch (const Failure& failure) {
            return failure.status();
        }
        return ExitStatus::done;
    }

    kavo::test::TemporaryFolder mFolder;
    const ConfigurationFile mReference = ConfigurationFile(
        mFolder.makeFile("reference.mcf", header + "\n[Port A]\nFG_WIDTH=1;\n\n[Port B]\nFG_WIDTH=2;\n"));
};

Agreement agreementOfDoubles(const std::string& text, double value) {
    const Parameter delay = doubleParameter("FG_DELAY", 0, 100, 0.016);
    return agreementOf(delay, configuredValue(delay, text), {0, value});
}

} // namespace

TEST_F(Configuration, ListsTheKeysOfEachPortInTheirOrder) {
    const ConfigurationFile config =
        file(header + "\n[Port A]\nFG_WIDTH=1;\r\nFG_GAIN=2;\nno key\n=5;\n\n[Port B]\nFG_HEIGHT=3;\n");
    EXPECT_EQ(config.keys(0), (std::vector<std::string>{"FG_WIDTH", "FG_GAIN"}));
    EXPECT_EQ(config.keys(1), (std::vector<std::string>{"FG_HEIGHT"}));
}

TEST_F(Configuration, FindsValuesAsLoadingDoes) {
    const ConfigurationFile config =
        file(header + "\n[Port A]\nFG_NAME='a b.lut';\n\n[Port B]\nFG_WIDTH=640;\n");
    EXPECT_EQ(config.text(0, "FG_NAME"), "a b.lut");
    EXPECT_EQ(config.text(0, "FG_WIDTH"), "640") << "a key may stand in a later section";
    EXPECT_EQ(config.text(1, "FG_NAME"), std::nullopt);
    EXPECT_EQ(config.headerText("Typ"), "Orbelline");
    EXPECT_EQ(config.headerText("Nothing"), std::nullopt);
}

TEST_F(Configuration, RefusesWhatCannotBeRead) {
    EXPECT_EQ(statusOfOpening(mFolder.path("missing.mcf")), ExitStatus::notFound);
    EXPECT_EQ(statusOfOpening(mFolder.makeFile("config.txt", header)), ExitStatus::usage);
    const std::string folder = mFolder.path("folder.mcf");
    std::filesystem::create_directory(folder);
    EXPECT_EQ(statusOfOpening(folder), ExitStatus::notFound);
    EXPECT_EQ(statusOfOpening(mFolder.makeFile("empty.mcf", "")), ExitStatus::done);
}

TEST_F(Configuration, TellsWhatKeepsAFileFromLoading) {
    EXPECT_EQ(obstacleTo(file(""), mReference), "its header has no Hersteller");
    EXPECT_EQ(obstacleTo(file("Hersteller='A';\n"), mReference), "its header has no Typ");
    EXPECT_EQ(obstacleTo(file("Hersteller='A';\nTyp='Other';\nAktivePort=0;\n"), mReference),
              "it is for the applet \"Other\", not for \"Orbelline\"");
    EXPECT_EQ(obstacleTo(file(header + "[Port A]\nFG_WIDTH=1;\n"), mReference),
              "FG_WIDTH of port 1 is missing");
    EXPECT_EQ(obstacleTo(file(header + "[Port A]\n[Port B]\nFG_WIDTH=1;\n"), mReference), "")
        << "port 0 takes it from the later section";
}

TEST_F(Configuration, NamesKeysThatTheAppletDoesNotHave) {
    const auto unknown =
        unknownKeys(file(header + "[Port A]\nFG_WIDTH=1;\n[Port B]\nFG_WIDTH=1;\nFG_WITDH=2;\n"), mReference);
    ASSERT_EQ(unknown.size(), 1U);
    EXPECT_EQ(unknown[0].port, 1U);
    EXPECT_EQ(unknown[0].key, "FG_WITDH");
}

TEST(ConfiguredValue, IsUnderstoodAsLoadingUnderstandsIt) {
    const Parameter width = unsignedParameter("FG_WIDTH", 0, 0, 0);
    EXPECT_EQ(configuredValue(width, "640"), ParameterValue(std::uint64_t{640}));
    EXPECT_EQ(configuredValue(width, "-1"), ParameterValue(std::uint64_t{4294967295U}));
    EXPECT_EQ(configuredValue(width, "12 pixels"), ParameterValue(std::uint64_t{12}));
    EXPECT_EQ(configuredValue(width, "wide"), ParameterValue(std::uint64_t{0}));
    EXPECT_EQ(configuredValue(formatParameter(), "-3"), ParameterValue(std::int64_t{-3}));
    EXPECT_EQ(configuredValue(doubleParameter("FG_GAIN", 0, 0, 0), "1.5e2"), ParameterValue(150.0));
    EXPECT_EQ(configuredValue(textParameter("FG_FILE"), "a.lut"), ParameterValue(std::string("a.lut")));
}

TEST(Agreement, OfDoublesAllowsTheDigitsOfAFile) {
    EXPECT_EQ(agreementOfDoubles("8.12345678901", 8.123456789012345), Agreement::same);
    EXPECT_EQ(agreementOfDoubles("0", 0), Agreement::same);
}

TEST(Agreement, IsRoundedWithinAStep) {
    EXPECT_EQ(agreementOfDoubles("1", 1.008), Agreement::rounded);
    EXPECT_EQ(agreementOfDoubles("1", 1.016), Agreement::different);
    EXPECT_EQ(agreementOfDoubles("-0.01", 0), Agreement::different) << "outside the range";
    const Parameter continuous = doubleParameter("FG_GAIN", 0, 100, 0);
    EXPECT_EQ(agreementOf(continuous, 1.0, {0, 1.0001}), Agreement::different);
}

TEST(Agreement, OfOtherKindsIsExact) {
    const Parameter width = unsignedParameter("FG_WIDTH", 16, 4096, 16);
    EXPECT_EQ(agreementOf(width, std::uint64_t{640}, {0, std::uint64_t{640}}), Agreement::same);
    EXPECT_EQ(agreementOf(width, std::uint64_t{640}, {0, std::uint64_t{641}}), Agreement::different);
    EXPECT_EQ(agreementOf(width, std::uint64_t{0}, {-2070, {}}), Agreement::different)
        << "what cannot be read agrees with nothing";
}

} // namespace orbctl
