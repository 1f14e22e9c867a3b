#pragma once

#include <cstddef>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The lines of a configuration file, read once. Every lookup answers as if it searched the file from its
/// beginning. A file of more than 262144 lines counts as ending there.
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
    struct KeyLine {
        std::string_view key; ///< the text before the line's first "="
        std::size_t line;
    };
    static bool standsBefore(const KeyLine& left, const KeyLine& right);

    void readLines(std::FILE* file);
    void indexKeys();
    std::string_view lineAt(std::size_t line) const;
    std::size_t findFirst(std::string_view text) const;
    std::size_t findSection(std::string_view section);

    std::string mText;
    std::vector<std::size_t> mLineEnds;
    std::vector<KeyLine> mKeyLines;
    std::map<std::string, std::size_t, std::less<>> mSectionLines;
};
