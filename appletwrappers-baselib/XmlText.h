#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

/// A growing text for the many small pieces of a document. Literals are appended in place, without a call.
class XmlText {
  public:
    /// \param expectedSize  room that is taken at once; the text may grow beyond it
    explicit XmlText(std::size_t expectedSize)
        : mCapacity(expectedSize), mCharacters(std::make_unique<char[]>(expectedSize)) {}

    template <std::size_t size>
    XmlText& operator<<(const char (&literal)[size]) {
        char* room = extend(size - 1);
        std::memcpy(room, literal, size - 1);
        return *this;
    }

    XmlText& operator<<(std::string_view text) {
        char* room = extend(text.size());
        std::memcpy(room, text.data(), text.size());
        return *this;
    }

    /// An integer in decimal.
    template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer>>>
    XmlText& operator<<(Integer value) {
        constexpr std::size_t mostDigits = 24;
        std::array<char, mostDigits> digits;
        const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }

    /// The shortest decimal text without exponent that reads back as the same number.
    XmlText& operator<<(double value) {
        constexpr std::size_t mostDigits = 400;
        std::array<char, mostDigits> digits;
        const char* end =
            std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
        return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
    }

    [[nodiscard]] std::string str() const { return {mCharacters.get(), mSize}; }

  private:
    char* extend(std::size_t size) {
        if (mCapacity - mSize < size) {
            grow(size);
        }
        char* room = mCharacters.get() + mSize;
        mSize += size;
        return room;
    }

    void grow(std::size_t size) {
        const std::size_t capacity = std::max(2 * mCapacity, mSize + size);
        auto larger = std::make_unique<char[]>(capacity);
        std::memcpy(larger.get(), mCharacters.get(), mSize);
        mCharacters = std::move(larger);
        mCapacity = capacity;
    }

    std::size_t mCapacity;
    std::size_t mSize = 0;
    std::unique_ptr<char[]> mCharacters;
};
