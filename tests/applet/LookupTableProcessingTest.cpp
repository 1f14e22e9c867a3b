#include "tests/applet/LookupTableOnBoard.h"

#include <limits>
#include <random>

// The table computed from offset, gain, gamma and inversion.

namespace {

constexpr unsigned processing = 3;
constexpr unsigned userFile = 0;

struct Settings {
    double offset, gain, gamma;
    bool invert;
};

std::ostream& operator<<(std::ostream& out, const Settings& settings) {
    return out.precision(17), out << "offset " << settings.offset << ", gain " << settings.gain << ", gamma "
                                  << settings.gamma << (settings.invert ? ", inverted" : "");
}

template <class Entry>
Table filled(Entry entry) {
    Table table;
    for (int input = 0; input < static_cast<int>(tableSize); ++input) {
        table.push_back(static_cast<std::uint32_t>(entry(input)));
    }
    return table;
}

/// Settings with exact halves between two pixels, with extremes, and any others.
std::vector<Settings> manySettings() {
    const double gains[] = {0,    0.5,  1.5,          2.0 / 3, 4095 / 4096.0, 4096,        4095,
                            2730, 1638, 8190 / 4095., 1 / 3.0, 0.1,           4095 / 16.0, 1e-300};
    const double gammas[] = {1, 2, 0.5, -1, -2, 3, 1 / 3.0, 2.2, 0.45, 0, -0.0, 1000, -1000, 1e-3, 5e-324};
    const double offsets[] = {0, 0.5, -0.5, 1, -1, 1 / 4095.0, -1 / 4095.0, 1e-17};
    std::vector<Settings> settings;
    for (const double gain : gains) {
        for (const double gamma : gammas) {
            for (const double offset : offsets) {
                settings.push_back({offset, gain, gamma, settings.size() % 2 == 1});
            }
        }
    }
    std::mt19937 random(20240607);
    std::uniform_real_distribution<double> unit(-1, 1);
    while (settings.size() < 3000) {
        const double gain = std::pow(10.0, 3.6 * unit(random));
        const double gamma = (unit(random) < 0 ? -1 : 1) * std::pow(10.0, 2.9 * unit(random));
        settings.push_back({unit(random), gain, gamma, unit(random) < 0});
    }
    return settings;
}

} // namespace

class LookupTableProcessing : public LookupTableOnBoard {
  protected:
    void apply(const Settings& settings) {
        ASSERT_EQ(applet.set(FG_PROCESSING_OFFSET, settings.offset, port()), 0);
        ASSERT_EQ(applet.set(FG_PROCESSING_GAIN, settings.gain, port()), 0);
        ASSERT_EQ(applet.set(FG_PROCESSING_GAMMA, settings.gamma, port()), 0);
        ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, settings.invert ? 1U : 0U, port()), 0);
    }
};
FOR_BOTH_PORTS(LookupTableProcessing);

TEST_P(LookupTableProcessing, StartsAsIdentity) { expectTable(straight()); }

TEST_P(LookupTableProcessing, InversionTurnsTheTableRound) {
    apply({0, 1, 1, true});
    expectTable(filled([](int input) { return 4095 - input; }));
}

TEST_P(LookupTableProcessing, GainSaturatesAtTheLargestPixel) {
    apply({0, 2, 1, false});
    expectTable(filled([](int input) { return std::min(2 * input, 4095); }));
}

TEST_P(LookupTableProcessing, InversionComesBeforeTheClamp) {
    apply({0, 2, 1, true});
    expectTable(filled([](int input) { return std::max(4095 - 2 * input, 0); }));
}

TEST_P(LookupTableProcessing, LowestOffsetLeavesNothing) {
    apply({-1, 1, 1, false});
    expectTable(Table(tableSize, 0));
}

TEST_P(LookupTableProcessing, WhatIsBelowZeroIsInvertedToTheLargestPixel) {
    apply({-1, 1, 1, true});
    expectTable(Table(tableSize, 4095));
}

TEST_P(LookupTableProcessing, HalvesAreRoundedUp) {
    apply({0, 0.5, 1, false});
    expectTable(filled([](int input) { return (input + 1) / 2; }));
}

TEST_P(LookupTableProcessing, GammaTakesTheRoot) {
    apply({0, 1, 2, false});
    expectTable(expectedTable(0, 1, 2, false));
    EXPECT_EQ(onBoard(port())[1024], 2048U);
}

TEST_P(LookupTableProcessing, GammaZeroLeavesWhiteAlone) {
    apply({0, 1, 0, false});
    expectTable(filled([](int input) { return input == 4095 ? 4095 : 0; }));
    // Above one the power is infinite, which is no pixel, inverted or not.
    apply({0, 2, 0, false});
    expectTable(Table(tableSize, 0));
    apply({0, 2, 0, true});
    expectTable(filled([](int input) { return 2 * input > 4095 ? 0 : 4095; }));
}

TEST_P(LookupTableProcessing, NegativeGammaFallsToWhite) {
    apply({0, 1, -1, false});
    // The first entry is infinite; the rest are 4095 and beyond.
    expectTable(filled([](int input) { return input == 0 ? 0 : 4095; }));
}

TEST_P(LookupTableProcessing, FollowsTheExactModelOverThousandsOfSettings) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    const std::vector<Settings> all = manySettings();
    // Every pair of settings goes to one of the ports: the model takes its time.
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (static_cast<int>(index / 2 % 2) != port()) {
            continue;
        }
        const Settings& settings = all[index];
        wrapper.cache_FG_PROCESSING_OFFSET(port()) = settings.offset;
        wrapper.cache_FG_PROCESSING_GAIN(port()) = settings.gain;
        wrapper.cache_FG_PROCESSING_GAMMA(port()) = settings.gamma;
        wrapper.cache_FG_PROCESSING_INVERT(port()) = settings.invert ? 1 : 0;
        port() == 0 ? wrapper.updateLutProcessing_P0() : wrapper.updateLutProcessing_P1();
        const Table expected = expectedTable(settings.offset, settings.gain, settings.gamma, settings.invert);
        const auto& table = wrapper.cache_FG_LUT_VALUE(port());
        const auto [entry, right] = std::mismatch(table.begin(), table.end(), expected.begin());
        ASSERT_TRUE(entry == table.end())
            << settings << ": entry " << entry - table.begin() << " is " << *entry << ", not " << *right;
    }
}

TEST_P(LookupTableProcessing, EverySettingWritesTheWholeTable) {
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_PROCESSING_OFFSET, 0.25, port()), 0);
    expectWholeTableWritten(expectedTable(0.25, 1, 1, false));
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_PROCESSING_GAIN, 0.75, port()), 0);
    expectWholeTableWritten(expectedTable(0.25, 0.75, 1, false));
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_PROCESSING_GAMMA, 2.2, port()), 0);
    expectWholeTableWritten(expectedTable(0.25, 0.75, 2.2, false));
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_PROCESSING_INVERT, 1U, port()), 0);
    expectWholeTableWritten(expectedTable(0.25, 0.75, 2.2, true));
    EXPECT_EQ(applet.getReal(FG_PROCESSING_OFFSET, port()), 0.25);
    EXPECT_EQ(applet.getReal(FG_PROCESSING_GAIN, port()), 0.75);
    EXPECT_EQ(applet.getReal(FG_PROCESSING_GAMMA, port()), 2.2);
    EXPECT_EQ(applet.get(FG_PROCESSING_INVERT, port()), 1U);
    EXPECT_EQ(applet.getReal(FG_PROCESSING_GAIN, otherPort()), 1.0);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(applet.set(FG_LUT_TYPE, processing, port()), 0);
    expectWholeTableWritten(expectedTable(0.25, 0.75, 2.2, true));
}

TEST_P(LookupTableProcessing, BoundsBelongToTheRange) {
    struct {
        int id;
        double from, to;
    } const ranges[] = {
        {FG_PROCESSING_OFFSET, -1, 1}, {FG_PROCESSING_GAIN, 0, 4096}, {FG_PROCESSING_GAMMA, -1000, 1000}};
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [id, from, to] : ranges) {
        SCOPED_TRACE(id);
        EXPECT_EQ(applet.set(id, from, port()), 0);
        EXPECT_EQ(applet.set(id, to, port()), 0);
        const Table before = onBoard(port());
        AppletOnBoard::forgetCalls();
        for (const double value : {std::nextafter(from, -infinity), std::nextafter(to, infinity), infinity,
                                   -infinity, std::nan(""), 5000.0}) {
            EXPECT_EQ(applet.set(id, value, port()), -6000) << value;
            EXPECT_EQ(applet.lastError(), -6000);
            EXPECT_EQ(applet.getReal(id, port()), to);
        }
        EXPECT_TRUE(AppletOnBoard::writes().empty());
        EXPECT_TRUE(onBoard(port()) == before);
    }
    EXPECT_EQ(applet.set(FG_PROCESSING_INVERT, 2U, port()), -6000);
    EXPECT_EQ(applet.get(FG_PROCESSING_INVERT, port()), 0U);
}

TEST_P(LookupTableProcessing, IsOnlyRememberedWhileAUserFileFillsTheTable) {
    ASSERT_EQ(applet.set(FG_LUT_TYPE, userFile, port()), 0);
    AppletOnBoard::forgetCalls();
    apply({0.125, 3, 0.5, true});
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    expectTable(straight());
    EXPECT_EQ(applet.set(FG_PROCESSING_GAIN, 5000.0, port()), -6000);
    EXPECT_EQ(applet.getReal(FG_PROCESSING_GAIN, port()), 3.0);
    ASSERT_EQ(applet.set(FG_LUT_TYPE, processing, port()), 0);
    expectTable(expectedTable(0.125, 3, 0.5, true));
}

TEST_P(LookupTableProcessing, AFailedWriteLeavesValueAndTableAsTheyWere) {
    ASSERT_EQ(applet.set(FG_PROCESSING_GAIN, 0.5, port()), 0);
    const Table before = onBoard(port());
    const auto failsOnce = [&](int id, auto value, auto previous) {
        SCOPED_TRACE(id);
        AppletOnBoard::failWrite(1, runtimeFailure);
        EXPECT_EQ(applet.set(id, value, port()), runtimeFailure);
        EXPECT_EQ(applet.lastError(), runtimeFailure);
        EXPECT_EQ(valueOf(applet, id, port(), value), previous);
        expectTable(before);
    };
    failsOnce(FG_PROCESSING_OFFSET, 0.5, 0.0);
    failsOnce(FG_PROCESSING_GAIN, 2.0, 0.5);
    failsOnce(FG_PROCESSING_GAMMA, 2.0, 1.0);
    failsOnce(FG_PROCESSING_INVERT, 1U, 0U);
    failsOnce(FG_LUT_TYPE, processing, processing);
    ASSERT_EQ(applet.set(FG_PROCESSING_GAMMA, 2.0, port()), 0);
    expectTable(expectedTable(0, 0.5, 2, false));
}

TEST_P(LookupTableProcessing, GettersRefuseANullPointer) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_PROCESSING_GAIN_P0(nullptr); }), -2070);
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_LUT_TYPE_P1(nullptr); }), -2070);
    EXPECT_EQ(thrownBy([&] { wrapper.get_sdk_param_FG_LUT_CUSTOM_FILE_P0(nullptr); }), -2070);
}
