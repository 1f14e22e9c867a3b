#pragma once

#include "tests/applet/SetterFaults.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using Table = std::vector<std::uint32_t>;

constexpr unsigned tableSize = 4096;

inline Table straight() {
    Table table(tableSize);
    std::iota(table.begin(), table.end(), 0U);
    return table;
}

/// What the table shall hold. The power is taken in extended precision and rounded once, so that it is the
/// nearest double.
inline Table expectedTable(double offset, double gain, double gamma, bool invert) {
    Table table;
    for (unsigned input = 0; input < tableSize; ++input) {
        const double x = (input / 4095.0 + offset) * gain;
        double pixel = 0;
        if (!(x < 0)) {
            pixel = static_cast<double>(std::pow(static_cast<long double>(x), 1.0L * (1.0 / gamma)));
            pixel = pixel * 4095.0;
            pixel = std::trunc(pixel + 0.5);
        }
        // Written so that not-a-number is no word either.
        const bool isWord = pixel < 2147483648.0;
        const double value = !isWord ? 0 : invert ? 4095 - pixel : pixel;
        table.push_back(static_cast<std::uint32_t>(std::clamp(value, 0.0, 4095.0)));
    }
    return table;
}

class LookupTableOnBoard : public OnBothPorts {
  protected:
    std::string content(int port) {
        return AppletOnBoard::process(port, "LookupTable_LookupTable_LUTcontent");
    }
    Table onBoard(int port) { return applet.board().designField(content(port)); }

    /// The table as the applet tells it entry by entry.
    Table told(int port) {
        Table table;
        for (unsigned index = 0; index < tableSize; ++index) {
            FieldParameterInt_s entry{0xDEADBEEF, index};
            const int code = Fg_getParameterWithType(applet.handle(), FG_LUT_VALUE, &entry,
                                                     static_cast<unsigned>(port), 0);
            EXPECT_EQ(code, 0);
            table.push_back(entry.value);
        }
        return table;
    }

    void expectTable(const Table& expected) {
        EXPECT_TRUE(onBoard(port()) == expected);
        EXPECT_TRUE(told(port()) == expected);
        EXPECT_TRUE(onBoard(otherPort()) == straight());
    }

    /// One write of the whole table since the calls were forgotten, and nothing else.
    void expectWholeTableWritten(const Table& expected) {
        const auto calls = simulator::hostCalls().calls(simulator::CallKind::write);
        ASSERT_EQ(calls.size(), 1U);
        EXPECT_EQ(calls[0].function, "Fg_setParameterWithType");
        EXPECT_EQ(calls[0].name, content(port()));
        EXPECT_EQ(calls[0].dmaIndex, static_cast<unsigned>(port()));
        EXPECT_EQ(calls[0].type, 4096);
        Table sent{2, 0, tableSize};
        sent.insert(sent.end(), expected.begin(), expected.end());
        EXPECT_TRUE(calls[0].values == sent);
    }

    int access(int id) { return applet.record(id, port())->accessFlags; }
};
