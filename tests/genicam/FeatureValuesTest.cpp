// Values through the features: reads give what the applet gives, writes reach the applet where access allows.

#include "tests/genicam/DescribedFeatures.h"
#include "tests/genicam/GenicamClient.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/TemporaryFolder.h"

using namespace kavo::test;

namespace {

class GenicamValues : public OnBothPorts {
  protected:
    bool isWritable(const CatalogueRow& row) const { return !client.isReadOnly(row.name); }
    /// Written to it, every value is an action of its own.
    static bool isAction(const CatalogueRow& row) { return row.id == FG_SENDSOFTWARETRIGGER; }

    /// For every float a value that it does not have after creation and takes as it is.
    static std::map<std::string, double> otherFloats() {
        std::map<std::string, double> values{{"FG_PROCESSING_OFFSET", -0.25},
                                             {"FG_PROCESSING_GAIN", 4096.0},
                                             {"FG_PROCESSING_GAMMA", 0.45},
                                             {"FG_TRIGGERIN_DEBOUNCE", 0.48},
                                             {"FG_TRIGGER_FRAMESPERSECOND", 12.5}};
        for (const char generator : {'0', '1', '2', '3'}) {
            const std::string name = std::string("FG_TRIGGER_PULSEFORMGEN") + generator;
            values[name + "_DELAY"] = 16.0;
            values[name + "_WIDTH"] = 160.0;
        }
        return values;
    }

    GenicamClient client{applet.handle(), port()};
};
FOR_BOTH_PORTS(GenicamValues);

} // namespace

TEST_P(GenicamValues, ReadingAnIntegerGivesTheAppletsValue) {
    applet.set(FG_WIDTH, 512U, port());
    for (const CatalogueRow& row : describedFeatures("uint")) {
        EXPECT_EQ(client.integer(row.name), applet.get(row.id, port())) << row.name;
    }
}

TEST_P(GenicamValues, ReadingAFloatGivesTheAppletsValue) {
    applet.set(FG_PROCESSING_OFFSET, -0.1, port());
    for (const CatalogueRow& row : describedFeatures("double")) {
        EXPECT_EQ(client.real(row.name), applet.getReal(row.id, port())) << row.name;
    }
}

TEST_P(GenicamValues, ReadingAnEnumerationGivesTheEntryOfTheAppletsValue) {
    applet.set(FG_TRIGGERIN_SRC, 5U, port());
    for (const CatalogueRow& row : describedFeatures("enum")) {
        const auto value = static_cast<std::int64_t>(applet.get(row.id, port()));
        EXPECT_EQ(client.integer(row.name), value) << row.name;
        EXPECT_EQ(client.text(row.name), client.entries(row.name)[value]) << row.name;
    }
}

TEST_P(GenicamValues, ReadingAStringGivesTheAppletsText) {
    EXPECT_EQ(client.text("FG_QEL_FILE"), "Orbelline.qel");
    for (const CatalogueRow& row : describedFeatures("string")) {
        EXPECT_EQ(client.text(row.name), applet.getText(row.id, port())) << row.name;
    }
}

TEST_P(GenicamValues, AWrittenLimitOfAnIntegerReachesTheApplet) {
    for (const CatalogueRow& row : describedFeatures("uint")) {
        if (!isWritable(row) || isAction(row)) {
            continue;
        }
        const auto range = client.integerRange(row.name);
        for (const std::int64_t limit : {range.from, range.to}) {
            EXPECT_EQ(client.write(row.name, limit), "") << row.name;
            EXPECT_EQ(applet.get(row.id, port()), limit) << row.name;
        }
        client.write(row.name, range.from);
    }
}

TEST_P(GenicamValues, AWrittenEntryReachesTheApplet) {
    for (const CatalogueRow& row : describedFeatures("enum")) {
        for (const auto& [value, name] : client.entries(row.name)) {
            if (isWritable(row)) {
                EXPECT_EQ(client.write(row.name, name), "") << row.name << " " << name;
                EXPECT_EQ(applet.get(row.id, port()), value) << row.name;
            }
        }
    }
}

TEST_P(GenicamValues, AWrittenFloatReachesTheApplet) {
    const std::map<std::string, double> values = otherFloats();
    for (const CatalogueRow& row : describedFeatures("double")) {
        if (isWritable(row)) {
            EXPECT_NE(client.real(row.name), values.at(row.name)) << row.name;
            EXPECT_EQ(client.write(row.name, values.at(row.name)), "") << row.name;
            EXPECT_DOUBLE_EQ(applet.getReal(row.id, port()), values.at(row.name)) << row.name;
            EXPECT_EQ(client.real(row.name), applet.getReal(row.id, port())) << row.name;
        }
    }
}

TEST_P(GenicamValues, AWriteLeavesTheOtherPortAlone) {
    const unsigned width = applet.get(FG_WIDTH, otherPort());
    EXPECT_EQ(client.write("FG_WIDTH", std::int64_t{512}), "");
    EXPECT_EQ(applet.get(FG_WIDTH, port()), 512U);
    EXPECT_EQ(applet.get(FG_WIDTH, otherPort()), width);
}

TEST_P(GenicamValues, AWrittenTextReachesTheApplet) {
    const TemporaryFolder folder;
    EXPECT_EQ(client.write("FG_LUT_SAVE_FILE", folder.path("saved.lut")), "");
    EXPECT_EQ(applet.getText(FG_LUT_SAVE_FILE, port()), folder.path("saved.lut"));
    EXPECT_FALSE(fileContent(folder.path("saved.lut")).empty());
}

TEST_P(GenicamValues, WhatTheAppletRefusesIsRefusedWithItsCode) {
    EXPECT_NE(client.write("FG_SENDSOFTWARETRIGGER", std::int64_t{1}).find("-2140"), std::string::npos);
    EXPECT_NE(client.write("FG_WIDTH", std::int64_t{8192}).find("-6000"), std::string::npos);
    EXPECT_NE(client.write("FG_WIDTH", std::int64_t{1000}).find("-7080"), std::string::npos);
    EXPECT_NE(client.write("FG_PIXELDEPTH", std::int64_t{12}).find("-12"), std::string::npos);
    EXPECT_EQ(client.integer("FG_WIDTH"), 1024);
}

TEST_P(GenicamValues, AClientThatHoldsWritesToTheDescriptionNeedNotAskTheApplet) {
    client.checkAccess();
    client.checkRanges();
    AppletOnBoard::forgetCalls();
    for (const CatalogueRow& row : describedFeatures()) {
        if (row.type != "string" && !isWritable(row)) {
            const std::string refusal =
                row.type == "double" ? client.write(row.name, 0.0) : client.write(row.name, std::int64_t{0});
            EXPECT_NE(refusal.find("read only"), std::string::npos) << row.name;
        }
    }
    EXPECT_NE(client.write("FG_WIDTH", std::int64_t{8192}), "");
    EXPECT_NE(client.write("FG_PROCESSING_GAIN", -1.0), "");
    EXPECT_NE(client.write("FG_FORMAT", std::string("FG_NO_SUCH_ENTRY")), "");
    EXPECT_TRUE(AppletOnBoard::writes().empty());
}

TEST_P(GenicamValues, AnIntegerFromTwoToThe31stOnIsReadNegative) {
    // Integer registers are described as signed, whatever their upper limit.
    EXPECT_EQ(client.write("FG_TRIGGERIN_DOWNSCALE", std::int64_t{4294967295}), "");
    EXPECT_EQ(applet.get(FG_TRIGGERIN_DOWNSCALE, port()), 4294967295U);
    EXPECT_EQ(client.integer("FG_TRIGGERIN_DOWNSCALE"), -1);
    EXPECT_EQ(client.write("FG_TRIGGERIN_DOWNSCALE", std::int64_t{2147483647}), "");
    EXPECT_EQ(client.integer("FG_TRIGGERIN_DOWNSCALE"), 2147483647);
}

TEST_P(GenicamValues, AStatusMayLieOutsideTheLimitsOfItsDescription) {
    EXPECT_EQ(client.integerRange("FG_APPLET_VERSION").to, 0);
    EXPECT_EQ(client.integer("FG_APPLET_VERSION"), 2);
    EXPECT_GT(client.real("FG_TRIGGERIN_STATS_FREQUENCY"),
              client.floatRange("FG_TRIGGERIN_STATS_FREQUENCY").to);
}
