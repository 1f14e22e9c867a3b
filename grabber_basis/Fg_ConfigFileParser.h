#pragma once

#include "grabber_basis/ConfigFileIndex.h"
#include "grabber_basis/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class Fg_Log;

/// Writes and reads a configuration file: a header section and one section per camera port, an entry a line.
///
///     [Kamerasektion]
///
///     ConfigFileVersion=2.0;
///     Typ='Orbelline';
///     LoadAppletId=0;
///
///     [Port A]
///     FG_WIDTH=1024;
///
/// Keys are found by searching the text. Numbers have a decimal point whatever locale the process has set. A
/// parser belongs to one load or save and to one thread.
class Fg_ConfigFileParser {
  public:
    /// Bytes that every buffer for a value must have: the longest line and its terminator.
    static constexpr std::size_t valueBytes = 256;

    /// Opens a file for reading, or for reading and updating, when it exists and is of the right type.
    /// Otherwise no file is open and every lookup fails.
    /// \param log  receives messages; may be null, must outlive the parser
    Fg_ConfigFileParser(Fg_Log* log, const char* fileName, bool readOnly);

    /// Whether ".mcf" stands anywhere in the name; false for null.
    bool checkFileType(const char* name) const;
    /// Whether the file can be opened for reading. A directory can.
    bool checkFileExist(const char* path) const;
    /// Creates or empties a file and writes to it from now on.
    /// \return false when the name is of the wrong type (the file that was open stays) or cannot be opened
    /// (no file
    ///         is open then)
    bool setSaveFile(const char* path);
    /// The open file or null. It stays open as long as the parser lives, even when another one is opened.
    std::FILE* getFile();

    // Every write is flushed at once. Failures are remembered, not reported by the write itself.

    void writeConfigFileHeader();
    /// Writes a quoted entry.
    void writeConfigFile(const char* key, const char* value);
    /// Writes a plain entry.
    void writeConfigFileValue(const char* key, const char* value);
    void writeConfigFileIntKey(const char* key, int value);
    void writeConfigFileUInt64Key(const char* key, std::uint64_t value);
    /// Writes twelve significant digits.
    void writeConfigFileDoubleKey(const char* key, double value);
    void writeConfigFileByPort(int port);
    void writeConfigFilePortA() { writeConfigFileByPort(0); }
    void writeConfigFilePortB() { writeConfigFileByPort(1); }
    /// Whether a write since the file was opened has failed: the disk is full, the file cannot be written, or
    /// none is open.
    bool hasWriteFailed() const { return mConfigFile.hasWriteFailed(); }

    /// "[Port A]" for port 0, "[Port B]" for port 1.
    static std::string getPortString(int port);

    // Every lookup starts at the beginning of the file. Texts go into a buffer of valueBytes.

    /// Finds the first line that contains the key anywhere; its value ends at "=" or "'".
    /// \return 0, or -8000: the value then begins with the five letters "Error", without a terminator
    int parseKeyFromLine(const char* key, char* value);
    /// Finds the first line "key=..." behind the section's line, in later sections too; its value ends at
    /// "=", ";" or
    /// "'". A line without a value gives the empty text.
    /// \return 0, or -8000: the value then begins with the five letters "Error", without a terminator
    int parseKey(const char* section, const char* key, char* value);

    // Lookups of numbers give 0, or -1 without touching the output: the key is missing or its text contains
    // "Error". A text that is no number is 0.

    int parseIntKey(const char* section, const char* key, int* value);
    int parseUInt64Key(const char* section, const char* key, std::uint64_t* value);
    int parseDoubleKey(const char* section, const char* key, double* value);
    int parseIntKeyFromHeader(const char* key, int* value);

    // The same in the section of a port; -1 for a null key.

    int parseKeySection(int port, const char* key, char* value);
    int parseIntKeySection(int port, const char* key, int* value);
    int parseUInt64KeySection(int port, const char* key, std::uint64_t* value);
    int parseDoubleKeySection(int port, const char* key, double* value);

    int getIntValue(const char* text, int* value) const;
    int getUInt64Value(const char* text, std::uint64_t* value) const;
    int getDoubleValue(const char* text, double* value) const;

  private:
    using Value = std::optional<std::string_view>;

    void trace(const char* operation) const;
    void logInfo(const char* text) const;
    void logError(const char* text) const;
    void write(const std::string& text);
    void writeEntry(const char* key, const std::string& value);
    ConfigFileIndex& index();
    Value findValue(const char* section, const char* key);
    template <class Number, class Convert>
    int parseNumber(const char* section, const char* key, Number* value, Convert convert);

    kavo::text::TextFile mConfigFile;
    Fg_Log* mFg_Log;
    std::optional<ConfigFileIndex> mIndex;
};
