#include "console/TextTable.h"

#include "console/Utf8.h"

#include <algorithm>

namespace orbctl {

void TextTable::measure(std::vector<std::size_t>& widths) const {
    for (const auto& row : mRows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], displayWidth(row[column]));
    }
}

void TextTable::print(std::ostream& stream, const std::vector<std::size_t>& widths) const {
    for (const auto& row : mRows) {
        std::string line(mIndent, ' ');
        for (std::size_t column = 0; column < row.size(); ++column)
            line += row[column] + std::string(widths[column] - displayWidth(row[column]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        stream << line << '\n';
    }
}

void TextTable::print(std::ostream& stream) const {
    std::vector<std::size_t> widths;
    measure(widths);
    print(stream, widths);
}

void TextTable::printAligned(std::ostream& stream, const std::vector<std::string>& headings,
                             const std::vector<TextTable>& tables) {
    std::vector<std::size_t> widths;
    for (const TextTable& table : tables)
        table.measure(widths);
    for (std::size_t index = 0; index < tables.size(); ++index) {
        stream << headings[index] << '\n';
        tables[index].print(stream, widths);
    }
}

} // namespace orbctl
