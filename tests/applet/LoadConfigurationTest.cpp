#include "tests/applet/ConfigurationOnBoard.h"

// Loading the settings of both ports from a file.

class LoadConfiguration : public ConfigurationOnBoard {};

TEST_F(LoadConfiguration, EveryValueOfBothPortsIsApplied) {
    Section portB = with(with(other(), "FG_AREATRIGGERMODE", "3"), "FG_WIDTH", "16");
    ASSERT_EQ(load(other(), portB), 0);
    EXPECT_EQ(applet.lastError(), 0);
    expectTold(other(), 0);
    expectTold(portB, 1);
    expectGettersToTellTheHardware(0);
    expectGettersToTellTheHardware(1);
    ASSERT_EQ(load(freshConfiguration()), 0);
    expectTold(freshSection(), 0);
    expectTold(freshSection(), 1);
    expectGettersToTellTheHardware(0);
    expectGettersToTellTheHardware(1);
}

TEST_F(LoadConfiguration, ValuesAreWrittenInTheOrderOfTheKeys) {
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(load(freshConfiguration()), 0);
    std::vector<RecordedWrite> expected = writesOfFreshValues(0, false);
    const std::vector<RecordedWrite> portB = writesOfFreshValues(1, false);
    expected.insert(expected.end(), portB.begin(), portB.end());
    EXPECT_EQ(AppletOnBoard::writes(), expected);
}

TEST_F(LoadConfiguration, NumbersHaveThePointThatTheyHaveInTheFile) {
    ASSERT_EQ(load(other(), other()), 0);
    // 100 Hz are 625000 ticks; 200.48 and 100.016 microseconds.
    for (const int port : {0, 1}) {
        EXPECT_EQ(applet.board().designValue(
                      AppletOnBoard::trigger(port, "Generators_Generator_MinimumPeriod_Number")),
                  624991U);
        EXPECT_EQ(applet.board().designValue(
                      AppletOnBoard::trigger(port, "PulseFormGenerators_PulseFormGenerator0_Width_Width")),
                  12530U);
        EXPECT_EQ(applet.board().designValue(
                      AppletOnBoard::trigger(port, "PulseFormGenerators_PulseFormGenerator0_Delay_Delay")),
                  6251U);
    }
}

TEST_F(LoadConfiguration, OutputsAndMultiplicationReachTheirRegisters) {
    ASSERT_EQ(load(other(), other()), 0);
    const std::pair<const char*, unsigned> expected[] = {
        {"TriggerCamera_SelectTriggerCamera_Select_Select", 3},
        {"TriggerCamera_SelectTriggerCamera_Polarity_Invert", 1},
        {"TriggerOutput_Select0_Select_Select", 4},
        {"TriggerOutput_Select0_Polarity_Invert", 0},
        {"TriggerOutput_Select1_Select_Select", 4},
        {"TriggerOutput_Select1_Polarity_Invert", 1},
        {"TriggerOutput_Select2_Select_Select", 5},
        {"TriggerOutput_Select2_Polarity_Invert", 0},
        {"TriggerOutput_Select3_Select_Select", 0},
        {"TriggerOutput_Select3_Polarity_Invert", 0},
        {"Generators_Sequence_Downscale", 65535},
        {"Generators_Sequence_SelectedPulse", 65535},
        {"Generators_Queue_QueueFullValue_Number", 2040},
        {"Generators_Queue_QueueEnabled_Select", 1},
        {"TriggerMode_SelectExternal_Select", 1},
    };
    for (const int port : {0, 1}) {
        for (const auto& [name, value] : expected) {
            EXPECT_EQ(applet.board().designValue(AppletOnBoard::trigger(port, name)), value) << name;
        }
    }
}

TEST_F(LoadConfiguration, AMultiplicationIsOrderedByTheValueThatTheDesignHas) {
    const auto order = [&](const char* value) {
        const Section section = with(freshSection(), "FG_TRIGGER_MULTIPLY_PULSES", value);
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(load(section, section), 0);
        std::vector<RecordedWrite> writes;
        for (const RecordedWrite& write : AppletOnBoard::writes()) {
            if (write.name.find("TriggerCam0_Generators_Sequence_") != std::string::npos) {
                writes.push_back(write);
            }
        }
        return writes;
    };
    const RecordedWrite downscale = triggerWrite(0, "Generators_Sequence_Downscale", 9);
    const RecordedWrite selected = triggerWrite(0, "Generators_Sequence_SelectedPulse", 9);
    EXPECT_EQ(order("9"), (std::vector<RecordedWrite>{downscale, selected}));
    EXPECT_EQ(order("9"), (std::vector<RecordedWrite>{selected, downscale}));
    order("10");
    EXPECT_EQ(order("9"), (std::vector<RecordedWrite>{selected, downscale}));
}

TEST_F(LoadConfiguration, LimitsOfEachOtherAreJudgedByTheFile) {
    // Neither order of the two would pass by the values of before.
    Section right = with(with(freshSection(), "FG_WIDTH", "16"), "FG_XOFFSET", "4080");
    right = with(with(right, "FG_HEIGHT", "2"), "FG_YOFFSET", "4094");
    right = with(with(right, "FG_TRIGGERIN_DOWNSCALE", "1000"), "FG_TRIGGERIN_DOWNSCALE_PHASE", "999");
    Section wide = with(freshSection(), "FG_WIDTH", "4096");
    wide = with(wide, "FG_HEIGHT", "4096");
    for (const Section& section : {right, wide, right, freshSection()}) {
        ASSERT_EQ(load(section, section), 0);
        expectTold(section, 0);
        expectTold(section, 1);
    }
}

TEST_F(LoadConfiguration, LimitsInTheRegistryFollow) {
    ASSERT_EQ(load(other(), freshSection()), 0);
    EXPECT_EQ(applet.record(FG_XOFFSET, 0)->u.uiReg.to, 1024U);
    EXPECT_EQ(applet.record(FG_WIDTH, 0)->u.uiReg.to, 3088U);
    EXPECT_EQ(applet.record(FG_LUT_CUSTOM_FILE, 0)->accessFlags, 7);
    EXPECT_EQ(applet.record(FG_PROCESSING_GAIN, 0)->accessFlags, 1);
    EXPECT_EQ(applet.record(FG_SENDSOFTWARETRIGGER, 0)->accessFlags, 1);
    EXPECT_EQ(applet.record(FG_XOFFSET, 1)->u.uiReg.to, 3072U);
    EXPECT_EQ(applet.record(FG_LUT_CUSTOM_FILE, 1)->accessFlags, 1);
}

TEST_F(LoadConfiguration, TheTableTakesEffectThroughItsType) {
    std::vector<std::uint32_t> expected(4096);
    Section computed = with(with(freshSection(), "FG_PROCESSING_GAIN", "0"), "FG_PROCESSING_OFFSET", "1");
    ASSERT_EQ(load(computed, freshSection()), 0);
    const std::string content = AppletOnBoard::process(0, "LookupTable_LookupTable_LUTcontent");
    EXPECT_TRUE(applet.board().designField(content) == expected);
    ASSERT_EQ(load(other(), freshSection()), 0);
    expected[0] = 5;
    expected[1] = 6;
    EXPECT_TRUE(applet.board().designField(content) == expected);
}

TEST_F(LoadConfiguration, OnlyOneInvertsTheTable) {
    const std::string content = AppletOnBoard::process(0, "LookupTable_LookupTable_LUTcontent");
    const std::vector<std::uint32_t> identity = applet.board().designField(content);
    // A file's processing values are not judged.
    const Section section = with(freshSection(), "FG_PROCESSING_INVERT", "2");
    ASSERT_EQ(load(section, freshSection()), 0);
    EXPECT_EQ(applet.get(FG_PROCESSING_INVERT, 0), 2U);
    EXPECT_TRUE(applet.board().designField(content) == identity);
}

TEST_F(LoadConfiguration, ATableThatCannotBeAppliedKeepsAllItsSettings) {
    for (const char* path : {"'/missing/curve.lut'", "'.'"}) {
        ASSERT_EQ(load(with(other(), "FG_LUT_CUSTOM_FILE", path), other()), 0);
        Section expected = other();
        for (const char* key : {"FG_LUT_TYPE", "FG_LUT_CUSTOM_FILE", "FG_PROCESSING_OFFSET",
                                "FG_PROCESSING_GAIN", "FG_PROCESSING_GAMMA", "FG_PROCESSING_INVERT"}) {
            expected = with(expected, key, valueIn(freshSection(), key));
        }
        expectTold(expected, 0);
        expectTold(other(), 1);
        EXPECT_EQ(applet.record(FG_LUT_CUSTOM_FILE, 0)->accessFlags, 1);
        ASSERT_EQ(load(freshConfiguration()), 0);
    }
}

TEST_F(LoadConfiguration, AnApplicationsOwnValuesAreForgotten) {
    ASSERT_EQ(applet.set(FG_WIDTH, 512U, 1), 0);
    ASSERT_EQ(applet.set(FG_TRIGGERSTATE, 0U, 0), 0);
    ASSERT_EQ(load(freshConfiguration()), 0);
    expectTold(freshSection(), 0);
    expectTold(freshSection(), 1);
}

TEST_F(LoadConfiguration, ASlaveCanLoadToo) {
    AppletOnBoard slave(AppletOnBoard::Role::slave);
    const std::string path = folder.makeFile("slave.mcf", configurationText(other(), other()));
    ASSERT_EQ(Fg_loadConfig(slave.handle(), path.c_str()), 0);
    EXPECT_EQ(told(slave, 0), other());
    EXPECT_EQ(told(slave, 1), other());
}
