#include "console/TextTable.h"
#include "console/Utf8.h"

#include <gtest/gtest.h>
#include <sstream>

namespace orbctl {

TEST(TextTable, AlignsColumnsAndLeavesNoSpacesAtTheEnd) {
    TextTable table(2);
    table.addRow({"FG_WIDTH", "1024", ""});
    table.addRow({"FG_X", "0", "pixel"});
    table.addRow({"FG_Y"});
    std::ostringstream stream;
    table.print(stream);
    EXPECT_EQ(stream.str(), "  FG_WIDTH  1024\n  FG_X      0     pixel\n  FG_Y\n");
}

TEST(TextTable, CountsCharactersNotBytes) {
    TextTable table;
    table.addRow({"µs", "a"});
    table.addRow({"Hz", "b"});
    std::ostringstream stream;
    table.print(stream);
    EXPECT_EQ(stream.str(), "µs  a\nHz  b\n");
    EXPECT_EQ(displayWidth("µ\xFF"), 2U);
}

TEST(TextTable, LinesSeveralTablesUp) {
    TextTable first;
    first.addRow({"a", "1"});
    TextTable second;
    second.addRow({"long", "2"});
    std::ostringstream stream;
    TextTable::printAligned(stream, {"First", "Second"}, {first, second});
    EXPECT_EQ(stream.str(), "First\na     1\nSecond\nlong  2\n");
}

} // namespace orbctl
