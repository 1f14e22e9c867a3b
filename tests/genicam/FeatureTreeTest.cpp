// What Aravis finds in the XML description of either port, beside what is documented about each parameter.

#include "tests/genicam/DescribedFeatures.h"
#include "tests/genicam/GenicamClient.h"
#include "tests/support/AppletOnBoard.h"

#include <algorithm>
#include <cctype>
#include <set>

using namespace kavo::test;

namespace {

std::string featureKind(const CatalogueRow& row) {
    static const std::map<std::string, std::string> kinds{
        {"uint", "Integer"}, {"double", "Float"}, {"enum", "Enumeration"}, {"string", "String"}};
    return kinds.at(row.type);
}

/// A category is named after the parameter's own group, without what is no letter, digit or underscore.
std::string categoryName(const CatalogueRow& row) {
    std::string name = row.category.substr(row.category.rfind('/') + 1);
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    return name;
}

/// The registry as it was registered: on a slave no default value has moved a limit.
class GenicamFeatures : public testing::TestWithParam<int> {
  protected:
    static int port() { return GetParam(); }

    AppletOnBoard applet{AppletOnBoard::Role::slave};
    GenicamClient client{applet.handle(), port()};
};
FOR_BOTH_PORTS(GenicamFeatures);

} // namespace

TEST_P(GenicamFeatures, EveryParameterWithATemplateIsAFeatureOfItsKind) {
    EXPECT_EQ(describedFeatures().size(), 85U);
    for (const CatalogueRow& row : describedFeatures()) {
        EXPECT_EQ(client.kind(row.name), featureKind(row)) << row.name;
    }
}

TEST_P(GenicamFeatures, AParameterWithoutATemplateIsNone) {
    for (const CatalogueRow& row : documentedCatalogue()) {
        if (row.type.empty() || row.type == "uint field") {
            EXPECT_EQ(client.kind(row.name), "") << row.name;
        }
    }
}

TEST_P(GenicamFeatures, IntegersHaveTheirLimits) {
    for (const CatalogueRow& row : describedFeatures("uint")) {
        const FeatureRange<std::int64_t> expected{std::stoll(row.from), std::stoll(row.to)};
        EXPECT_EQ(client.integerRange(row.name), expected) << row.name;
    }
}

TEST_P(GenicamFeatures, IntegersHaveTheirStepOrTheStepOneWithoutAny) {
    for (const CatalogueRow& row : describedFeatures("uint")) {
        EXPECT_EQ(client.increment(row.name), std::max(std::stoll(row.step), 1LL)) << row.name;
    }
}

TEST_P(GenicamFeatures, FloatsHaveTheirLimitsToTheLastBit) {
    for (const CatalogueRow& row : describedFeatures("double")) {
        const FeatureRange<double> expected{std::stod(row.from), std::stod(row.to)};
        EXPECT_EQ(client.floatRange(row.name), expected) << row.name;
    }
}

TEST_P(GenicamFeatures, FloatsHaveNoStep) {
    for (const CatalogueRow& row : describedFeatures("double")) {
        EXPECT_NE(client.floatIncrementRefusal(row.name).find("<Inc> node not found"), std::string::npos)
            << row.name;
    }
}

TEST_P(GenicamFeatures, EnumerationsHaveTheirEntries) {
    for (const CatalogueRow& row : describedFeatures("enum")) {
        std::map<std::int64_t, std::string> expected;
        for (const EnumerationRow& entry : documentedEntries(row.name, port())) {
            expected.emplace(entry.value, entry.symbol);
        }
        EXPECT_FALSE(expected.empty()) << row.name;
        EXPECT_EQ(client.entries(row.name), expected) << row.name;
    }
}

TEST_P(GenicamFeatures, StringsHaveRoomForAPath) {
    for (const CatalogueRow& row : describedFeatures("string")) {
        EXPECT_EQ(client.maximumLength(row.name), 4096) << row.name;
    }
}

TEST_P(GenicamFeatures, EveryFeatureHasItsDescription) {
    for (const CatalogueRow& row : describedFeatures()) {
        EXPECT_EQ(client.description(row.name), row.description) << row.name;
    }
}

TEST_P(GenicamFeatures, EveryFeatureHasItsAccess) {
    for (const CatalogueRow& row : describedFeatures()) {
        EXPECT_EQ(client.isReadOnly(row.name), row.access == 1) << row.name;
    }
}

TEST_P(GenicamFeatures, EveryFeatureStandsInItsCategoryAndInNoOther) {
    std::map<std::string, std::set<std::string>> expected;
    for (const CatalogueRow& row : describedFeatures()) {
        expected[categoryName(row)].insert(row.name);
    }
    std::map<std::string, std::set<std::string>> found;
    std::size_t places = 0;
    for (const std::string& category : client.features("Root")) {
        EXPECT_EQ(client.kind(category), "Category");
        const std::vector<std::string> features = client.features(category);
        found[category].insert(features.begin(), features.end());
        places += features.size();
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(places, describedFeatures().size());
}
