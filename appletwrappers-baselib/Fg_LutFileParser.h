#pragma once

#include "appletwrappers-baselib/LookupTableRecords.h"
#include "grabber_basis/TextFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

class Fg_Log;

/// Writes and reads lookup-table files:
///
///     # Lut data file v1.1
///
///
///
///     [gray]
///
///     id=3;
///     nrOfElements=4096;
///     format=0;
///     number=0;
///     0,0;
///     1,1;
///     ...
///
/// Numbers have a decimal point whatever locale the process has set. Unsigned numbers above 2^31 - 1 stand in
/// a file as the negative number of the same 32 bits, and are read back as they were. A line of more than 255
/// characters counts as several. A parser belongs to one thread.
class Fg_LutFileParser {
  public:
    /// Bytes that a buffer for a value's text must have: the longest line and its terminator.
    static constexpr std::size_t valueBytes = 256;
    /// The largest table that is read.
    static constexpr std::uint32_t mostElements = 1U << 24;

    /// \param log  receives messages; may be null, must outlive the parser
    explicit Fg_LutFileParser(Fg_Log* log = nullptr);

    /// Creates or empties a file and writes to it from now on. 1, or 0 when it cannot be opened.
    int setSaveFile(const char* path);
    /// Opens an existing file for reading, or for reading and writing. 1, or 0 when it is missing, cannot be
    /// opened or is no regular file.
    int setOpenFile(const char* path, bool readOnly);
    /// 1 when the file can be opened for reading, else 0. A directory can.
    int checkFileExist(const char* path) const;
    /// Accepts every name: 1.
    int checkFileType(const char* path) const;

    // Every write is flushed at once. Failures are remembered, not reported by the write itself.

    void writeLutFileHeader(const char* text);
    void writeIntKey(const char* key, int value);
    /// Writes twelve significant digits.
    void writeDoubleKey(const char* key, double value);
    void writeIntInt(int index, int value);
    /// Writes twelve digits behind the point.
    void writeIntDouble(int index, double value);
    void writeLutFileValue(const char* key, const char* value, const char* delimiter);
    /// Whether a write since the file was opened has failed: the disk is full, the file cannot be written, or
    /// none is open.
    bool hasWriteFailed() const { return mConfigFile.hasWriteFailed(); }

    // Every lookup starts at the beginning of the file. Delimiters are single characters.

    /// Finds the first line that contains the key anywhere and gives its second piece, in a buffer of
    /// valueBytes.
    /// \return 0, or -1: the value then begins with the five letters "Error", without a terminator
    int parseKeyFromLine(const char* key, char* value, const char* delimiters);
    /// The same for a number; 0 with result -1 when there is no such line or its text is "Error".
    int parseIntKey(const char* key, int* value, const char* delimiters);
    int parseDoubleKey(const char* key, double* value, const char* delimiters);

    /// Reads the entries 0 to count - 1, in this order, behind the first line that contains the section's
    /// name. Entries that are not found stay as they are. An entry's line is one that contains its index
    /// and the delimiter anywhere: "1," is found in "11,5;" too.
    /// \return 0
    int parseIntInt(std::uint32_t* values, std::uint32_t count, const char* delimiter,
                    const char* sectionName);
    int parseIntDouble(double* values, std::uint32_t count, const char* delimiter, const char* sectionName);

    int getIntValue(const char* text, int* value) const;
    int getDoubleValue(const char* text, double* value) const;

    // Saving gives 0, or -1 when the file cannot be opened. Whether it was written to the end tells
    // hasWriteFailed().

    int saveLutToFile(const char* path, const LookupTable_s& gray);
    int saveLutToFile(const char* path, const LookupTable_s& red, const LookupTable_s& green,
                      const LookupTable_s& blue);
    int saveLutToFile(const char* path, const KneeLookupTable_s& table, const char* sectionName);
    int saveLutToFile(const char* path, const KneeLookupTable_s& red, const KneeLookupTable_s& green,
                      const KneeLookupTable_s& blue);
    int saveMatrixToFile(const char* path, const char* header, const int* values, std::uint32_t count);

    // Loading releases the table's old values first. It gives 0, or -1 when the file cannot be read or has
    // more than mostElements entries: the table then has no values.

    /// Missing keys and entries are 0. The keys are those of the file's first section, whatever the section.
    int getLutFromFile(const char* path, LookupTable_s& table, const char* sectionName);
    /// Reads "[red]", "[green]" and "[blue]" and stops at the first failure.
    int getLutFromFile(const char* path, LookupTable_s& red, LookupTable_s& green, LookupTable_s& blue);
    /// Reads as many entries as the record says; missing ones are 0.
    int getLutFromFile(const char* path, KneeLookupTable_s& table, const char* sectionName);
    int getLutFromFile(const char* path, KneeLookupTable_s& red, KneeLookupTable_s& green,
                       KneeLookupTable_s& blue);
    /// Matrices are written only: always -1.
    int getMatrixFromFile(const char* path, int* values, std::uint32_t count);

  private:
    void writeLine(const std::string& key, const std::string& value, const char* delimiter);
    void writeSection(const char* sectionName);
    void writeKeys(const LookupTable_s& table);
    void writeEntries(const LookupTable_s& table);
    void writeEntries(const KneeLookupTable_s& table);
    void writeChannel(const char* sectionName, const LookupTable_s& table);
    void writeChannel(const char* sectionName, const KneeLookupTable_s& table);
    template <class Table>
    int saveChannels(const char* path, const char* header, const Table& red, const Table& green,
                     const Table& blue);

    std::optional<std::string> findValue(const char* key, const char* delimiters) const;
    template <class Number>
    int parseNumber(const char* key, Number* value, const char* delimiters,
                    Number (*convert)(const char*)) const;
    template <class Value, class Number>
    int parseEntries(Value* values, std::uint32_t count, const char* delimiter, const char* sectionName,
                     Number (*convert)(const char*)) const;
    std::uint32_t readKey(const char* key);
    void readKeys(LookupTable_s& table);
    template <class Values>
    int keepIfRead(Values& values) const;
    template <class Table>
    int getChannels(const char* path, Table& red, Table& green, Table& blue);

    kavo::text::TextFile mConfigFile;
    Fg_Log* mLog;
};
