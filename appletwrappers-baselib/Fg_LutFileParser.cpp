#include "appletwrappers-baselib/Fg_LutFileParser.h"

#include "grabber_basis/Fg_Log.h"
#include "grabber_basis/NumberText.h"
#include "grabber_basis/TextLines.h"

#include <algorithm>
#include <filesystem>
#include <new>

namespace {

constexpr int success = 0;
constexpr int failure = -1;

constexpr char separator[] = "\n\n";
constexpr char keyDelimiter[] = "=";
constexpr char keyDelimiters[] = "='";
constexpr char entryDelimiter[] = ",";
constexpr std::string_view errorText = "Error";

static_assert(Fg_LutFileParser::valueBytes == kavo::text::LineReader::longestLine + 1);

bool isRegularFile(const char* path) {
    std::error_code ignored;
    return path != nullptr && std::filesystem::is_regular_file(path, ignored);
}

/// Null when the table is too large or there is no memory for it.
template <class Value>
std::unique_ptr<Value[]> makeZeros(std::uint32_t count) {
    const bool isTooLarge = count > Fg_LutFileParser::mostElements;
    return std::unique_ptr<Value[]>(isTooLarge ? nullptr : new (std::nothrow) Value[count]());
}

} // namespace

Fg_LutFileParser::Fg_LutFileParser(Fg_Log* log) : mLog(log) {}

int Fg_LutFileParser::setSaveFile(const char* path) {
    const bool isOpen = mConfigFile.open(path, "we");
    if (!isOpen && mLog != nullptr) {
        mLog->Error("Lut File: fopen failed");
    }
    return isOpen ? 1 : 0;
}

int Fg_LutFileParser::setOpenFile(const char* path, bool readOnly) {
    return isRegularFile(path) && mConfigFile.open(path, readOnly ? "re" : "r+e") ? 1 : 0;
}

int Fg_LutFileParser::checkFileExist(const char* path) const {
    return kavo::text::TextFile::canBeRead(path) ? 1 : 0;
}

int Fg_LutFileParser::checkFileType(const char* /*path*/) const { return 1; }

void Fg_LutFileParser::writeLutFileHeader(const char* text) { mConfigFile.write(text); }

void Fg_LutFileParser::writeLine(const std::string& key, const std::string& value, const char* delimiter) {
    mConfigFile.write(key + delimiter + value + ";\n");
}

void Fg_LutFileParser::writeLutFileValue(const char* key, const char* value, const char* delimiter) {
    writeLine(key, value, delimiter);
}

void Fg_LutFileParser::writeIntKey(const char* key, int value) {
    writeLine(key, std::to_string(value), keyDelimiter);
}

void Fg_LutFileParser::writeDoubleKey(const char* key, double value) {
    writeLine(key, kavo::text::shortDouble(value), keyDelimiter);
}

void Fg_LutFileParser::writeIntInt(int index, int value) {
    writeLine(std::to_string(index), std::to_string(value), entryDelimiter);
}

void Fg_LutFileParser::writeIntDouble(int index, double value) {
    writeLine(std::to_string(index), kavo::text::fixedDouble(value), entryDelimiter);
}

void Fg_LutFileParser::writeSection(const char* sectionName) {
    mConfigFile.write(separator);
    mConfigFile.write(sectionName);
    mConfigFile.write(separator);
}

void Fg_LutFileParser::writeKeys(const LookupTable_s& table) {
    writeIntKey("id", static_cast<int>(table.id));
    writeIntKey("nrOfElements", static_cast<int>(table.nrOfElements));
    writeIntKey("format", static_cast<int>(table.format));
    writeIntKey("number", table.number);
}

void Fg_LutFileParser::writeEntries(const LookupTable_s& table) {
    for (std::uint32_t i = 0; table.lut != nullptr && i < table.nrOfElements; ++i) {
        writeIntInt(static_cast<int>(i), static_cast<int>(table.lut[i]));
    }
}

void Fg_LutFileParser::writeEntries(const KneeLookupTable_s& table) {
    for (std::uint32_t i = 0; table.value != nullptr && i < table.nrOfElements; ++i) {
        writeIntDouble(static_cast<int>(i), table.value[i]);
    }
}

void Fg_LutFileParser::writeChannel(const char* sectionName, const LookupTable_s& table) {
    writeSection(sectionName);
    writeKeys(table);
    writeEntries(table);
}

void Fg_LutFileParser::writeChannel(const char* sectionName, const KneeLookupTable_s& table) {
    writeSection(sectionName);
    writeEntries(table);
}

template <class Table>
int Fg_LutFileParser::saveChannels(const char* path, const char* header, const Table& red, const Table& green,
                                   const Table& blue) {
    if (setSaveFile(path) == 0) {
        return failure;
    }
    writeLutFileHeader(header);
    writeChannel("[red]", red);
    writeChannel("[green]", green);
    writeChannel("[blue]", blue);
    return success;
}

int Fg_LutFileParser::saveLutToFile(const char* path, const LookupTable_s& gray) {
    if (setSaveFile(path) == 0) {
        return failure;
    }
    writeLutFileHeader("# Lut data file v1.1\n\n");
    writeChannel("[gray]", gray);
    return success;
}

int Fg_LutFileParser::saveLutToFile(const char* path, const LookupTable_s& red, const LookupTable_s& green,
                                    const LookupTable_s& blue) {
    return saveChannels(path, "# Lut data file v1.1", red, green, blue);
}

int Fg_LutFileParser::saveLutToFile(const char* path, const KneeLookupTable_s& table,
                                    const char* sectionName) {
    if (setSaveFile(path) == 0) {
        return failure;
    }
    writeLutFileHeader("# KneeLut data file v1.0\n\n");
    mConfigFile.write(sectionName);
    mConfigFile.write(separator);
    writeEntries(table);
    return success;
}

int Fg_LutFileParser::saveLutToFile(const char* path, const KneeLookupTable_s& red,
                                    const KneeLookupTable_s& green, const KneeLookupTable_s& blue) {
    return saveChannels(path, "# KneeLut data file v1.1", red, green, blue);
}

int Fg_LutFileParser::saveMatrixToFile(const char* path, const char* header, const int* values,
                                       std::uint32_t count) {
    if (!mConfigFile.open(path, "we")) {
        return failure;
    }
    writeLutFileHeader(header);
    writeIntKey("nrOfElements", static_cast<int>(count));
    for (std::uint32_t i = 0; i < count; ++i) {
        writeIntInt(static_cast<int>(i), values[i]);
    }
    return success;
}

std::optional<std::string> Fg_LutFileParser::findValue(const char* key, const char* delimiters) const {
    kavo::text::LineReader reader(mConfigFile.stream());
    while (reader.next()) {
        if (kavo::text::contains(reader.line(), key)) {
            return std::string(kavo::text::secondPiece(reader.line(), kavo::text::CharacterSet(delimiters)));
        }
    }
    return std::nullopt;
}

int Fg_LutFileParser::parseKeyFromLine(const char* key, char* value, const char* delimiters) {
    const std::optional<std::string> found = findValue(key, delimiters);
    if (!found) {
        errorText.copy(value, errorText.size());
        return failure;
    }
    value[found->copy(value, valueBytes - 1)] = '\0';
    return success;
}

template <class Number>
int Fg_LutFileParser::parseNumber(const char* key, Number* value, const char* delimiters,
                                  Number (*convert)(const char*)) const {
    const std::string found = findValue(key, delimiters).value_or(std::string(errorText));
    *value = convert(found.c_str());
    return found == errorText ? failure : success;
}

int Fg_LutFileParser::parseIntKey(const char* key, int* value, const char* delimiters) {
    return parseNumber(key, value, delimiters, kavo::text::toInt32);
}

int Fg_LutFileParser::parseDoubleKey(const char* key, double* value, const char* delimiters) {
    return parseNumber(key, value, delimiters, kavo::text::toDouble);
}

template <class Value, class Number>
int Fg_LutFileParser::parseEntries(Value* values, std::uint32_t count, const char* delimiter,
                                   const char* sectionName, Number (*convert)(const char*)) const {
    const kavo::text::CharacterSet separators(delimiter);
    kavo::text::LineReader reader(mConfigFile.stream());
    bool hasLine = reader.next();
    while (hasLine && !kavo::text::contains(reader.line(), sectionName)) {
        hasLine = reader.next();
    }
    for (std::uint32_t i = 0; hasLine && i < count; hasLine = reader.next()) {
        if (kavo::text::contains(reader.line(), std::to_string(i) + delimiter)) {
            const std::string text(kavo::text::secondPiece(reader.line(), separators));
            values[i++] = static_cast<Value>(convert(text.c_str()));
        }
    }
    return success;
}

int Fg_LutFileParser::parseIntInt(std::uint32_t* values, std::uint32_t count, const char* delimiter,
                                  const char* sectionName) {
    return parseEntries(values, count, delimiter, sectionName, kavo::text::toInt32);
}

int Fg_LutFileParser::parseIntDouble(double* values, std::uint32_t count, const char* delimiter,
                                     const char* sectionName) {
    return parseEntries(values, count, delimiter, sectionName, kavo::text::toDouble);
}

int Fg_LutFileParser::getIntValue(const char* text, int* value) const {
    *value = kavo::text::toInt32(text);
    return success;
}

int Fg_LutFileParser::getDoubleValue(const char* text, double* value) const {
    *value = kavo::text::toDouble(text);
    return success;
}

std::uint32_t Fg_LutFileParser::readKey(const char* key) {
    int value = 0;
    parseIntKey(key, &value, keyDelimiters);
    return static_cast<std::uint32_t>(value);
}

void Fg_LutFileParser::readKeys(LookupTable_s& table) {
    table.id = readKey("id");
    table.nrOfElements = readKey("nrOfElements");
    table.format = readKey("format");
    table.number = static_cast<std::uint8_t>(readKey("number"));
}

template <class Values>
int Fg_LutFileParser::keepIfRead(Values& values) const {
    if (mConfigFile.hasReadFailed()) {
        values.reset();
        return failure;
    }
    return success;
}

int Fg_LutFileParser::getLutFromFile(const char* path, LookupTable_s& table, const char* sectionName) {
    table.lut.reset();
    if (setOpenFile(path, true) == 0) {
        return failure;
    }
    readKeys(table);
    table.lut = makeZeros<std::uint32_t>(table.nrOfElements);
    if (table.lut == nullptr) {
        return failure;
    }
    parseIntInt(table.lut.get(), table.nrOfElements, entryDelimiter, sectionName);
    return keepIfRead(table.lut);
}

int Fg_LutFileParser::getLutFromFile(const char* path, KneeLookupTable_s& table, const char* sectionName) {
    table.value.reset();
    if (setOpenFile(path, true) == 0) {
        return failure;
    }
    table.value = makeZeros<double>(table.nrOfElements);
    if (table.value == nullptr) {
        return failure;
    }
    parseIntDouble(table.value.get(), table.nrOfElements, entryDelimiter, sectionName);
    return keepIfRead(table.value);
}

template <class Table>
int Fg_LutFileParser::getChannels(const char* path, Table& red, Table& green, Table& blue) {
    int result = getLutFromFile(path, red, "[red]");
    if (result == success) {
        result = getLutFromFile(path, green, "[green]");
    }
    return result == success ? getLutFromFile(path, blue, "[blue]") : result;
}

int Fg_LutFileParser::getLutFromFile(const char* path, LookupTable_s& red, LookupTable_s& green,
                                     LookupTable_s& blue) {
    return getChannels(path, red, green, blue);
}

int Fg_LutFileParser::getLutFromFile(const char* path, KneeLookupTable_s& red, KneeLookupTable_s& green,
                                     KneeLookupTable_s& blue) {
    return getChannels(path, red, green, blue);
}

int Fg_LutFileParser::getMatrixFromFile(const char* /*path*/, int* /*values*/, std::uint32_t /*count*/) {
    return failure;
}
