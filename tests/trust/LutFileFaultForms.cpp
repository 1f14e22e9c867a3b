#include "tests/trust/LutFileFaultForms.h"

#include <numeric>

namespace {

constexpr std::uint32_t entries = 6;

LookupTable_s fullTable(unsigned firstValue) {
    LookupTable_s table;
    table.id = 3;
    table.nrOfElements = entries;
    table.lut = std::make_unique<std::uint32_t[]>(entries);
    std::iota(table.lut.get(), table.lut.get() + entries, firstValue);
    return table;
}

KneeLookupTable_s kneeTable(double firstValue) {
    KneeLookupTable_s table;
    table.nrOfElements = entries;
    table.value = std::make_unique<double[]>(entries);
    std::iota(table.value.get(), table.value.get() + entries, firstValue);
    return table;
}

KneeLookupTable_s kneeTableToRead() {
    KneeLookupTable_s table;
    table.nrOfElements = entries;
    return table;
}

void add(LutFileContent& content, const LookupTable_s& table) {
    if (table.lut != nullptr) {
        content.insert(content.end(), table.lut.get(), table.lut.get() + table.nrOfElements);
    }
}

void add(LutFileContent& content, const KneeLookupTable_s& table) {
    if (table.value != nullptr) {
        content.insert(content.end(), table.value.get(), table.value.get() + table.nrOfElements);
    }
}

LutFileForm gray() {
    return {
        "Gray",
        [](Fg_LutFileParser& parser, const char* path) { return parser.saveLutToFile(path, fullTable(100)); },
        [](Fg_LutFileParser& parser, const char* path, LutFileContent& content) {
            LookupTable_s table;
            const int result = parser.getLutFromFile(path, table, "[gray]");
            add(content, table);
            return result;
        }};
}

LutFileForm colour() {
    return {"Colour",
            [](Fg_LutFileParser& parser, const char* path) {
                return parser.saveLutToFile(path, fullTable(100), fullTable(200), fullTable(300));
            },
            [](Fg_LutFileParser& parser, const char* path, LutFileContent& content) {
                LookupTable_s red, green, blue;
                const int result = parser.getLutFromFile(path, red, green, blue);
                add(content, red);
                add(content, green);
                add(content, blue);
                return result;
            }};
}

LutFileForm knee() {
    return {"Knee",
            [](Fg_LutFileParser& parser, const char* path) {
                return parser.saveLutToFile(path, kneeTable(0.25), "[knee]");
            },
            [](Fg_LutFileParser& parser, const char* path, LutFileContent& content) {
                KneeLookupTable_s table = kneeTableToRead();
                const int result = parser.getLutFromFile(path, table, "[knee]");
                add(content, table);
                return result;
            }};
}

LutFileForm kneeColour() {
    return {"KneeColour",
            [](Fg_LutFileParser& parser, const char* path) {
                return parser.saveLutToFile(path, kneeTable(0.25), kneeTable(0.5), kneeTable(0.75));
            },
            [](Fg_LutFileParser& parser, const char* path, LutFileContent& content) {
                KneeLookupTable_s red = kneeTableToRead(), green = kneeTableToRead(),
                                  blue = kneeTableToRead();
                const int result = parser.getLutFromFile(path, red, green, blue);
                add(content, red);
                add(content, green);
                add(content, blue);
                return result;
            }};
}

LutFileForm matrix() {
    return {"Matrix",
            [](Fg_LutFileParser& parser, const char* path) {
                constexpr int values[] = {5, -6, 7};
                return parser.saveMatrixToFile(path, "# A matrix\n", values, 3);
            },
            {}};
}

} // namespace

std::ostream& operator<<(std::ostream& out, const LutFileForm& form) { return out << form.name; }

std::vector<LutFileForm> lutFileForms() { return {gray(), colour(), knee(), kneeColour(), matrix()}; }
