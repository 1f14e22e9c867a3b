#include "grabber_basis/Fg_ConfigFileParser.h"

#include "grabber_basis/Fg_Log.h"
#include "grabber_basis/NumberText.h"
#include "grabber_basis/TextLines.h"
#include "platform/ErrorCodes.h"

#include <array>
#include <cstring>

namespace {

constexpr int numberNotFound = -1;
constexpr std::string_view errorText = "Error";
constexpr char headerSection[] = "[Kamerasektion]\n";
constexpr kavo::text::CharacterSet headerSeparators("='");
constexpr kavo::text::CharacterSet entrySeparators("=;'");

static_assert(Fg_ConfigFileParser::valueBytes == kavo::text::LineReader::longestLine + 1);

using PortName = std::array<char, 9>;

PortName portName(int port) {
    constexpr std::size_t letter = 6;
    PortName name{"[Port A]"};
    name[letter] = static_cast<char>('A' + port);
    return name;
}

const char* textOrEmpty(const char* text) { return text == nullptr ? "" : text; }

bool startsWithLineEnd(std::string_view text) {
    return !text.empty() && (text[0] == '\r' || text[0] == '\n');
}

int giveValue(std::optional<std::string_view> found, char* value) {
    if (!found) {
        errorText.copy(value, errorText.size());
        return kavo::error::keyNotFound;
    }
    value[found->copy(value, Fg_ConfigFileParser::valueBytes - 1)] = '\0';
    return kavo::error::ok;
}

} // namespace

Fg_ConfigFileParser::Fg_ConfigFileParser(Fg_Log* log, const char* fileName, bool readOnly) : mFg_Log(log) {
    if (checkFileType(fileName) && checkFileExist(fileName)) {
        mConfigFile.open(fileName, readOnly ? "re" : "r+e");
    }
}

void Fg_ConfigFileParser::trace(const char* operation) const {
    if (mFg_Log != nullptr) {
        mFg_Log->Func(operation);
    }
}

void Fg_ConfigFileParser::logInfo(const char* text) const {
    if (mFg_Log != nullptr) {
        mFg_Log->Info(text);
    }
}

void Fg_ConfigFileParser::logError(const char* text) const {
    if (mFg_Log != nullptr) {
        mFg_Log->Error(text);
    }
}

bool Fg_ConfigFileParser::checkFileType(const char* name) const {
    trace("Fg_ConfigFileParser::checkFileType");
    const bool isRight = name != nullptr && kavo::text::contains(name, ".mcf");
    isRight ? logInfo("File type ok") : logError("File type not ok");
    return isRight;
}

bool Fg_ConfigFileParser::checkFileExist(const char* path) const {
    trace("Fg_ConfigFileParser::checkFileExist");
    const bool exists = kavo::text::TextFile::canBeRead(path);
    exists ? logInfo("Config File exist") : logError("Config File don't exist");
    return exists;
}

bool Fg_ConfigFileParser::setSaveFile(const char* path) {
    trace("Fg_ConfigFileParser::setSaveFile");
    if (!checkFileType(path)) {
        logError("Config File is Invalid");
        return false;
    }
    mIndex.reset();
    const bool isOpen = mConfigFile.open(path, "we");
    isOpen ? logInfo("Config File is valid") : logError("Config File: fopen failed");
    return isOpen;
}

std::FILE* Fg_ConfigFileParser::getFile() {
    mIndex.reset();
    return mConfigFile.stream();
}

void Fg_ConfigFileParser::write(const std::string& text) {
    mIndex.reset();
    mConfigFile.write(text);
}

void Fg_ConfigFileParser::writeEntry(const char* key, const std::string& value) {
    write(std::string(textOrEmpty(key)) + "=" + value + ";\n");
}

void Fg_ConfigFileParser::writeConfigFileHeader() {
    trace("Fg_ConfigFileParser::writeConfigFileHeader");
    write(headerSection);
    write("\nConfigFileVersion=2.0;\n");
}

void Fg_ConfigFileParser::writeConfigFile(const char* key, const char* value) {
    trace("Fg_ConfigFileParser::writeConfigFile");
    writeEntry(key, std::string("'") + textOrEmpty(value) + "'");
}

void Fg_ConfigFileParser::writeConfigFileValue(const char* key, const char* value) {
    trace("Fg_ConfigFileParser::writeConfigFileValue");
    writeEntry(key, textOrEmpty(value));
}

void Fg_ConfigFileParser::writeConfigFileIntKey(const char* key, int value) {
    trace("Fg_ConfigFileParser::writeConfigFileIntKey");
    writeEntry(key, std::to_string(value));
}

void Fg_ConfigFileParser::writeConfigFileUInt64Key(const char* key, std::uint64_t value) {
    trace("Fg_ConfigFileParser::writeConfigFileUInt64Key");
    writeEntry(key, std::to_string(value));
}

void Fg_ConfigFileParser::writeConfigFileDoubleKey(const char* key, double value) {
    trace("Fg_ConfigFileParser::wrtiteConfigFileDoubleKey");
    writeEntry(key, kavo::text::shortDouble(value));
}

void Fg_ConfigFileParser::writeConfigFileByPort(int port) {
    trace("Fg_ConfigFileParser::writeConfigFileByPort");
    write("\n" + getPortString(port) + "\n");
}

std::string Fg_ConfigFileParser::getPortString(int port) { return portName(port).data(); }

ConfigFileIndex& Fg_ConfigFileParser::index() {
    return mIndex ? *mIndex : mIndex.emplace(mConfigFile.stream());
}

int Fg_ConfigFileParser::parseKeyFromLine(const char* key, char* value) {
    trace("Fg_ConfigFileParser::parseKeyFromLine");
    const Value line = key == nullptr ? std::nullopt : index().findLineContaining(key);
    return giveValue(line ? Value(kavo::text::secondPiece(*line, headerSeparators)) : std::nullopt, value);
}

Fg_ConfigFileParser::Value Fg_ConfigFileParser::findValue(const char* section, const char* key) {
    trace("Fg_ConfigFileParser::parseKey");
    if (section == nullptr || key == nullptr) {
        return std::nullopt;
    }
    const Value line = index().findKeyLine(section, key);
    if (!line) {
        return std::nullopt;
    }
    const std::string_view value = kavo::text::secondPiece(*line, entrySeparators);
    return startsWithLineEnd(value) ? std::string_view() : value;
}

int Fg_ConfigFileParser::parseKey(const char* section, const char* key, char* value) {
    return giveValue(findValue(section, key), value);
}

template <class Number, class Convert>
int Fg_ConfigFileParser::parseNumber(const char* section, const char* key, Number* value, Convert convert) {
    const Value found = findValue(section, key);
    if (!found || kavo::text::contains(*found, errorText)) {
        return numberNotFound;
    }
    return (this->*convert)(std::string(*found).c_str(), value);
}

int Fg_ConfigFileParser::parseIntKey(const char* section, const char* key, int* value) {
    trace("Fg_ConfigFileParser::parseIntKey");
    return parseNumber(section, key, value, &Fg_ConfigFileParser::getIntValue);
}

int Fg_ConfigFileParser::parseUInt64Key(const char* section, const char* key, std::uint64_t* value) {
    trace("Fg_ConfigFileParser::parseIntKey");
    return parseNumber(section, key, value, &Fg_ConfigFileParser::getUInt64Value);
}

int Fg_ConfigFileParser::parseDoubleKey(const char* section, const char* key, double* value) {
    trace("Fg_ConfigFileParser::parseDoubleKey");
    return parseNumber(section, key, value, &Fg_ConfigFileParser::getDoubleValue);
}

int Fg_ConfigFileParser::parseIntKeyFromHeader(const char* key, int* value) {
    return parseIntKey(headerSection, key, value);
}

int Fg_ConfigFileParser::parseKeySection(int port, const char* key, char* value) {
    return key == nullptr ? numberNotFound : parseKey(portName(port).data(), key, value);
}

int Fg_ConfigFileParser::parseIntKeySection(int port, const char* key, int* value) {
    return parseIntKey(portName(port).data(), key, value);
}

int Fg_ConfigFileParser::parseUInt64KeySection(int port, const char* key, std::uint64_t* value) {
    return parseUInt64Key(portName(port).data(), key, value);
}

int Fg_ConfigFileParser::parseDoubleKeySection(int port, const char* key, double* value) {
    return parseDoubleKey(portName(port).data(), key, value);
}

int Fg_ConfigFileParser::getIntValue(const char* text, int* value) const {
    trace("Fg_ConfigFileParser::getIntValue");
    *value = kavo::text::toInt32(text);
    return kavo::error::ok;
}

int Fg_ConfigFileParser::getUInt64Value(const char* text, std::uint64_t* value) const {
    trace("Fg_ConfigFileParser::getIntValue");
    *value = kavo::text::toUInt64(text);
    return kavo::error::ok;
}

int Fg_ConfigFileParser::getDoubleValue(const char* text, double* value) const {
    trace("Fg_ConfigFileParser::getDoubleValue");
    *value = kavo::text::toDouble(text);
    return kavo::error::ok;
}
