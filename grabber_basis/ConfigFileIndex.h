#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The lines of a configuration file, read once. Every lookup answers as if it searched the file from its
/// beginning. A file of more than 262144 lines counts as ending there, one that cannot be read to its
/// end as empty.
class ConfigFileIndex {
  public:
    explicit ConfigFileIndex(std::FILE* file);
    ConfigFileIndex(const ConfigFileIndex&) = delete;
    ConfigFileIndex& operator=(const ConfigFileIndex&) = delete;

    /// The first line that contains the text anywhere.
    std::optional<std::string_view> findLineContaining(std::string_view text) const;
    /// The first line that begins with the key and "=", behind the first line that contains the section's
    /// text. Later sections are searched too.
    std::optional<std::string_view> findKeyLine(std::string_view section, std::string_view key);

  private:
    void readLines(std::FILE* file);
    void indexKeys();
    std::string_view lineAt(std::size_t line) const;
    std::size_t findFirst(std::string_view text) const;
    std::size_t findSection(std::string_view section);

    std::string mText;
    std::vector<std::size_t> mLineEnds;
    /// The lines with a key by the shelf that their key belongs to, on each shelf in the order of the file.
    std::vector<std::size_t> mKeyLines;
    /// Where each shelf begins among them, and where the last one ends.
    std::vector<std::size_t> mShelves;
    std::vector<std::pair<std::string, std::size_t>> mSectionLines;
};
