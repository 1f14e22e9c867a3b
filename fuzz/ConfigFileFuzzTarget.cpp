#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzTarget.h"
#include "grabber_basis/Fg_ConfigFileParser.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>

// An input is a section, a key, and the configuration file in which the key is looked up.

namespace {

using kavo::fuzz::require;
using Value = std::optional<std::string>;

constexpr int found = 0;
constexpr int notFound = -8000;

/// What the plain way gives: the file is read anew, line by line, with the functions of the C library.
class Rescan {
  public:
    explicit Rescan(const std::string& path) : mFile(std::fopen(path.c_str(), "r")) {}
    ~Rescan() { std::fclose(mFile); }
    Rescan(const Rescan&) = delete;
    Rescan& operator=(const Rescan&) = delete;

    Value keyFromLine(const char* key) { return toLineContaining(key) ? secondPiece("='") : std::nullopt; }

    Value key(const char* section, const char* key) {
        if (!toLineContaining(section)) {
            return std::nullopt;
        }
        const std::size_t length = std::strlen(key);
        while (nextLine()) {
            if (std::strncmp(mLine, key, length) == 0 && mLine[length] == '=') {
                const Value value = secondPiece("=;'");
                return (*value)[0] == '\r' || (*value)[0] == '\n' ? "" : value;
            }
        }
        return std::nullopt;
    }

  private:
    bool nextLine() { return std::fgets(mLine, sizeof mLine, mFile) != nullptr; }

    bool toLineContaining(const char* text) {
        while (nextLine()) {
            if (std::strstr(mLine, text) != nullptr) {
                return true;
            }
        }
        return false;
    }

    Value secondPiece(const char* separators) {
        char* state = nullptr;
        char* piece = strtok_r(mLine, separators, &state);
        piece = piece == nullptr ? nullptr : strtok_r(nullptr, separators, &state);
        return piece == nullptr ? "" : piece;
    }

    std::FILE* mFile;
    char mLine[256];
};

template <class Lookup>
Value lookUp(Lookup lookup) {
    char value[Fg_ConfigFileParser::valueBytes] = {};
    const int result = lookup(value);
    require(result == found || (result == notFound && std::strcmp(value, "Error") == 0),
            "a lookup's code and text");
    return result == found ? Value(value) : std::nullopt;
}

void tryNumbers(Fg_ConfigFileParser& parser, const char* section, const char* key, const Value& text) {
    const int expected = text && text->find("Error") == std::string::npos ? 0 : -1;
    int number = 0;
    std::uint64_t big = 0;
    double real = 0;
    require(parser.parseIntKey(section, key, &number) == expected, "the code of an integer lookup");
    require(parser.parseUInt64Key(section, key, &big) == expected, "the code of a 64-bit lookup");
    require(parser.parseDoubleKey(section, key, &real) == expected, "the code of a double lookup");
    require(!std::isnan(real), "a double is a number");
}

void tryLookups(Fg_ConfigFileParser& parser, const std::string& path, const char* section, const char* key) {
    const Value value = lookUp([&](char* text) { return parser.parseKey(section, key, text); });
    require(value == Rescan(path).key(section, key), "a key has the value that rescanning finds");
    const Value fromLine = lookUp([&](char* text) { return parser.parseKeyFromLine(key, text); });
    require(fromLine == Rescan(path).keyFromLine(key), "a line has the value that rescanning finds");
    tryNumbers(parser, section, key, value);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kavo::fuzz::FuzzInput input(data, size);
    const std::string section = input.takeLine();
    const std::string key = input.takeLine();
    const std::string path = kavo::fuzz::makeFile("input.mcf", input.rest());
    Fg_ConfigFileParser parser(nullptr, path.c_str(), true);
    tryLookups(parser, path, section.c_str(), key.c_str());
    tryLookups(parser, path, "[Port B]", "FG_WIDTH");
    tryLookups(parser, path, "[Port A]", key.c_str());
    int port = 0;
    parser.parseIntKeyFromHeader(key.c_str(), &port);
    return 0;
}
