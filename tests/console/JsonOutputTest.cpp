#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>

namespace orbctl::test {

namespace {

using Words = std::vector<std::string>;

class JsonOutput : public ::testing::TestWithParam<Words> {};

} // namespace

TEST_P(JsonOutput, IsReadByAnotherParser) {
    const ProgramResult result = orbctl(GetParam());
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(evaluated(result.output, "len(data) > 0"), "True\n");
}

INSTANTIATE_TEST_SUITE_P(
    Console, JsonOutput,
    ::testing::Values(Words{"info", "--json"}, Words{"list", "--json"},
                      Words{"list", "--json", "--port", "both"}, Words{"list", "--json", "-c", "Trigger"},
                      Words{"status", "--json"}, Words{"events", "--json"},
                      Words{"lut", "show", "--json", "--port", "both"}, Words{"defaults", "--json"},
                      Words{"get", "--json", "FG_WIDTH", "FG_QEL_FILE", "FG_LUT_VALUE[7]"},
                      Words{"describe", "--json", "FG_WIDTH", "FG_LUT_VALUE", "FG_FORMAT"}));

TEST(JsonOutput, OfGetCarriesValueSymbolAndPort) {
    const std::string json = orbctl({"get", "--json", "--port", "1", "FG_FORMAT"}).output;
    EXPECT_EQ(evaluated(json, "data"),
              "[{'name': 'FG_FORMAT', 'id': 700, 'port': 1, 'value': 3, 'symbol': 'FG_GRAY'}]\n");
}

TEST(JsonOutput, OfDescribeCarriesLimitsUnitAndDescription) {
    const std::string json = orbctl({"describe", "--json", "FG_MTU_SIZE"}).output;
    EXPECT_EQ(
        evaluated(json,
                  "[data[0][key] for key in ('from','to','step','unit','writable','changeable','category')]"),
        "[44, 9036, 4, 'byte', True, False, ['Camera']]\n");
}

TEST(JsonOutput, OfListKeepsDoublesExactly) {
    const std::string json = orbctl({"list", "--json", "-c", "Trigger"}).output;
    EXPECT_EQ(evaluated(json, "[p['from'] for p in data if p['name']=='FG_TRIGGER_FRAMESPERSECOND']"),
              "[0.01455191522836685]\n");
}

TEST(JsonOutput, OfInfoCarriesIdentityAndConstants) {
    const std::string json = orbctl({"info", "--json"}).output;
    EXPECT_EQ(
        evaluated(json,
                  "data['name'], data['version'], data['constants']['FG_GRAY16'], len(data['constants'])"),
        "Orbelline 2.4.2.2 1 49\n");
    EXPECT_EQ(evaluated(json, "[s['result'] for s in data['selectors'] if s['selector']==4704]"), "[9, 8]\n");
}

} // namespace orbctl::test
