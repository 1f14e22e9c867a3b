#include "console/Json.h"

#include <gtest/gtest.h>
#include <limits>

namespace orbctl {

TEST(Json, WritesNestedValuesIndented) {
    JsonWriter json;
    json.beginObject().member("name", "FG_WIDTH").member("id", 100);
    json.name("limits").beginArray().value(std::uint64_t{16}).value(0.5).value(true).null().endArray();
    json.endObject();
    EXPECT_EQ(json.text(),
              "{\n  \"name\": \"FG_WIDTH\",\n  \"id\": 100,\n  \"limits\": [\n    16,\n    0.5,\n"
              "    true,\n    null\n  ]\n}\n");
}

TEST(Json, WritesEmptyObjectsAndArraysOnOneLine) {
    JsonWriter json;
    json.beginArray().beginObject().endObject().beginArray().endArray().endArray();
    EXPECT_EQ(json.text(), "[\n  {},\n  []\n]\n");
}

TEST(Json, WritesNumbersItCannotHoldAsNull) {
    JsonWriter json;
    json.beginArray()
        .value(std::numeric_limits<double>::infinity())
        .value(std::numeric_limits<double>::quiet_NaN())
        .endArray();
    EXPECT_EQ(json.text(), "[\n  null,\n  null\n]\n");
}

TEST(Json, KeepsEveryBitOfLargeNumbers) {
    JsonWriter json;
    json.value(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(json.text(), "18446744073709551615");
}

TEST(Json, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(jsonString("a\"b\\c\n\r\t\x01\x1f"), "\"a\\\"b\\\\c\\n\\r\\t\\u0001\\u001f\"");
    EXPECT_EQ(jsonString(std::string_view("\0", 1)), "\"\\u0000\"");
}

TEST(Json, KeepsWellFormedUtf8) { EXPECT_EQ(jsonString("µs \xF0\x9F\x93\xB7"), "\"µs \xF0\x9F\x93\xB7\""); }

TEST(Json, ReplacesBytesThatAreNoUtf8) {
    const std::string replaced = "\"\xEF\xBF\xBD\"";
    for (const char* const bytes : {"\xFF", "\xC3", "\x80", "\xC0"})
        EXPECT_EQ(jsonString(bytes), replaced);
    EXPECT_EQ(jsonString("\xED\xA0\x80"), "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\"") << "a surrogate";
    EXPECT_EQ(jsonString("\xC0\xAF"), "\"\xEF\xBF\xBD\xEF\xBF\xBD\"") << "an overlong slash";
}

} // namespace orbctl
