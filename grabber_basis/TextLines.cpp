#include "grabber_basis/TextLines.h"

#include <array>
#include <cstdint>

namespace kavo::text {
namespace {

/// A set of characters, as bits: asking for one is quicker than a search among them.
class CharacterSet {
  public:
    explicit CharacterSet(std::string_view characters) {
        for (const char character : characters) {
            mBits[wordOf(character)] |= bitOf(character);
        }
    }
    bool has(char character) const { return (mBits[wordOf(character)] & bitOf(character)) != 0; }

  private:
    static constexpr unsigned bitsPerWord = 32;
    static unsigned wordOf(char character) { return static_cast<unsigned char>(character) / bitsPerWord; }
    static std::uint32_t bitOf(char character) {
        return std::uint32_t{1} << static_cast<unsigned char>(character) % bitsPerWord;
    }

    std::array<std::uint32_t, 256 / bitsPerWord> mBits{};
};

/// Takes what is in the set, or what is not, off the front of a text.
std::string_view takeWhile(std::string_view& text, const CharacterSet& set, bool inSet) {
    std::size_t length = 0;
    while (length < text.size() && set.has(text[length]) == inSet) {
        ++length;
    }
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

} // namespace

LineReader::LineReader(std::FILE* file) : mFile(file), mBuffer{} {
    if (mFile != nullptr) {
        std::rewind(mFile);
    }
}

bool LineReader::next() {
    if (mFile == nullptr || std::fgets(mBuffer, sizeof mBuffer, mFile) == nullptr) {
        return false;
    }
    mLine = mBuffer;
    return true;
}

bool contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

std::string_view secondPiece(std::string_view line, std::string_view separators) {
    const CharacterSet set(separators);
    takeWhile(line, set, true);
    takeWhile(line, set, false);
    takeWhile(line, set, true);
    return takeWhile(line, set, false);
}

} // namespace kavo::text
