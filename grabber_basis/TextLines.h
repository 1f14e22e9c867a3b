#pragma once

#include <array>
#include <cstdio>
#include <string_view>

namespace kavo::text {

/// Reads a file from its beginning, in lines of at most 255 characters: a longer line comes as several. What
/// follows a NUL in a line is dropped. Without a file there are no lines.
class LineReader {
  public:
    static constexpr int longestLine = 255;

    /// Rewinds the file, which must stay open while this object reads; the reader reads ahead.
    explicit LineReader(std::FILE* file);

    /// \return false at the end of the file, and where it cannot be read further
    bool next();
    /// The line that next() read, with its line end where it has one. It lives until the next one.
    std::string_view line() const { return mLine; }

  private:
    void readAhead();

    std::FILE* mFile;
    std::array<char, 4096> mBuffer;
    std::string_view mUnread; ///< in the buffer
    std::string_view mLine;
};

bool contains(std::string_view line, std::string_view part);

/// A set of characters, of which each is asked for without a search.
class CharacterSet {
  public:
    constexpr explicit CharacterSet(std::string_view characters) {
        for (const char character : characters) {
            mHas[static_cast<unsigned char>(character)] = true;
        }
    }
    [[nodiscard]] constexpr bool has(char character) const {
        return mHas[static_cast<unsigned char>(character)];
    }

  private:
    std::array<bool, 256> mHas{};
};

/// Splits a line at any of the separators and gives the second piece. A run of separators counts as one,
/// leading ones are skipped. Empty where there is no second piece.
std::string_view secondPiece(std::string_view line, const CharacterSet& separators);

} // namespace kavo::text
