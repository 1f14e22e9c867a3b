#include "tests/applet/CatalogueData.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace kavo::test {
namespace {

std::vector<std::string> cellsOf(const std::string& line) {
    std::vector<std::string> cells(1);
    for (const char character : line) {
        if (character == '\t') {
            cells.emplace_back();
        } else {
            cells.back() += character;
        }
    }
    return cells;
}

/// The lines of a file of this folder, without its heading.
std::vector<std::vector<std::string>> table(const std::string& file) {
    std::ifstream input(std::string(APPLET_TEST_DATA) + '/' + file);
    std::vector<std::vector<std::string>> rows;
    std::string line;
    for (std::getline(input, line); std::getline(input, line);) {
        rows.push_back(cellsOf(line));
    }
    if (rows.empty()) {
        throw std::runtime_error("cannot read " + file);
    }
    return rows;
}

int number(const std::string& text) { return text.empty() ? 0 : std::stoi(text); }

std::vector<CatalogueRow> readCatalogue() {
    std::vector<CatalogueRow> rows;
    for (const auto& cells : table("Catalogue.tsv")) {
        rows.push_back({cells.at(0), number(cells.at(1)), cells.at(2), cells.at(3), cells.at(4), cells.at(5),
                        cells.at(6), number(cells.at(7)), number(cells.at(8)), number(cells.at(9)),
                        cells.at(10), cells.at(11), cells.at(12), cells.at(13)});
    }
    return rows;
}

} // namespace

const std::vector<CatalogueRow>& documentedCatalogue() {
    static const std::vector<CatalogueRow> rows = readCatalogue();
    return rows;
}

const CatalogueRow& documentedParameter(const std::string& name) {
    const auto& rows = documentedCatalogue();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const CatalogueRow& row) { return row.name == name; });
    if (found == rows.end()) {
        throw std::runtime_error("undocumented parameter " + name);
    }
    return *found;
}

std::vector<EnumerationRow> documentedEntries(const std::string& parameter, int port) {
    std::vector<EnumerationRow> entries;
    for (const auto& cells : table("Enumerations.tsv")) {
        if (cells.at(0) == parameter && number(cells.at(1)) == port) {
            entries.push_back({cells.at(2), number(cells.at(3)), cells.at(4)});
        }
    }
    return entries;
}

} // namespace kavo::test
