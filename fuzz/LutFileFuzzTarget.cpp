#include "appletwrappers-baselib/Fg_LutFileParser.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzTarget.h"

#include <algorithm>
#include <cmath>
#include <cstring>

// An input is a section, a key, and the lookup-table file that is read.

namespace {

using kavo::fuzz::require;

/// Tables up to this size are saved and read again.
constexpr std::uint32_t mostSavedElements = 8;

bool areEqual(const LookupTable_s& left, const LookupTable_s& right) {
    return left.id == right.id && left.format == right.format && left.number == right.number &&
           left.nrOfElements == right.nrOfElements &&
           std::equal(left.lut.get(), left.lut.get() + left.nrOfElements, right.lut.get());
}

void trySavingAgain(Fg_LutFileParser& parser, const LookupTable_s& table) {
    const std::string path = kavo::fuzz::makeFile("saved.lut", "");
    LookupTable_s gray;
    require(parser.saveLutToFile(path.c_str(), table) == 0, "a table that was read can be saved");
    require(parser.getLutFromFile(path.c_str(), gray, "[gray]") == 0, "a table that was saved can be read");
    require(areEqual(table, gray), "a saved table reads back as it was");
    LookupTable_s channels[3];
    require(parser.saveLutToFile(path.c_str(), table, table, table) == 0, "three tables can be saved");
    require(parser.getLutFromFile(path.c_str(), channels[0], channels[1], channels[2]) == 0,
            "three can be read");
    for (const LookupTable_s& channel : channels) {
        require(areEqual(table, channel), "each channel reads back as it was");
    }
}

void tryTable(Fg_LutFileParser& parser, const std::string& path, const char* section) {
    LookupTable_s table;
    const int result = parser.getLutFromFile(path.c_str(), table, section);
    const bool isTooLarge = table.nrOfElements > Fg_LutFileParser::mostElements;
    require(result == (isTooLarge ? -1 : 0), "a count is too large or the table is read");
    require((table.lut == nullptr) == isTooLarge, "a table is there when it was read");
    if (!isTooLarge && table.nrOfElements <= mostSavedElements) {
        trySavingAgain(parser, table);
    }
}

void tryKnees(Fg_LutFileParser& parser, const std::string& path, const char* section) {
    KneeLookupTable_s knees;
    knees.nrOfElements = mostSavedElements;
    require(parser.getLutFromFile(path.c_str(), knees, section) == 0, "knees are read from every file");
    require(std::all_of(knees.value.get(), knees.value.get() + mostSavedElements,
                        [](double value) { return !std::isnan(value); }),
            "a knee is a number");
    require(parser.saveLutToFile(kavo::fuzz::makeFile("saved.lut", "").c_str(), knees, "[k]") == 0,
            "knees that were read can be saved");
}

void tryKeys(Fg_LutFileParser& parser, const std::string& path, const char* key) {
    require(parser.setOpenFile(path.c_str(), true) == 1, "the file opens");
    char text[Fg_LutFileParser::valueBytes] = {};
    const int found = parser.parseKeyFromLine(key, text, "='");
    int number = 0;
    const int expected = found == 0 && std::strcmp(text, "Error") != 0 ? 0 : -1;
    require(parser.parseIntKey(key, &number, "='") == expected, "a number is found where its text is");
    double real = 0;
    require(parser.parseDoubleKey(key, &real, "='") == expected, "a double is found where its text is");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kavo::fuzz::FuzzInput input(data, size);
    const std::string section = input.takeLine();
    const std::string key = input.takeLine();
    const std::string path = kavo::fuzz::makeFile("input.lut", input.rest());
    Fg_LutFileParser parser;
    tryTable(parser, path, section.c_str());
    tryKnees(parser, path, section.c_str());
    tryKeys(parser, path, key.c_str());
    return 0;
}
