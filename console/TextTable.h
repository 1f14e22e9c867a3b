#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace orbctl {

/// Rows of cells in aligned columns, two spaces apart, without spaces at the line's end.
class TextTable {
  public:
    /// \param indent  spaces before the first column
    explicit TextTable(std::size_t indent = 0) : mIndent(indent) {}

    void addRow(std::vector<std::string> cells) { mRows.push_back(std::move(cells)); }
    bool isEmpty() const { return mRows.empty(); }
    void print(std::ostream& stream) const;
    /// Prints several tables with common column widths, so that they line up below their headings.
    /// \param headings  a line before each table
    static void printAligned(std::ostream& stream, const std::vector<std::string>& headings,
                             const std::vector<TextTable>& tables);

  private:
    void measure(std::vector<std::size_t>& widths) const;
    void print(std::ostream& stream, const std::vector<std::size_t>& widths) const;

    std::size_t mIndent;
    std::vector<std::vector<std::string>> mRows;
};

} // namespace orbctl
