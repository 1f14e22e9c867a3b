#pragma once

#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace kavo::fuzz {

/// A buffer of exactly some bytes for a call to fill. Behind them stand bytes that nobody may touch.
class GuardedBuffer {
  public:
    explicit GuardedBuffer(std::size_t size) : mSize(size), mBytes(size + guardBytes, pattern) {}

    void* data() { return mBytes.data(); }
    char* text() { return mBytes.data(); }
    std::size_t size() const { return mSize; }

    template <class Value>
    Value as() const {
        Value value;
        std::memcpy(&value, mBytes.data(), sizeof value);
        return value;
    }
    template <class Value>
    void put(const Value& value) {
        std::memcpy(mBytes.data(), &value, sizeof value);
    }

    /// Whether all bytes from one on are as they were at first, those behind the buffer included.
    bool isUntouchedFrom(std::size_t first) const {
        return std::all_of(mBytes.begin() + static_cast<std::ptrdiff_t>(first), mBytes.end(),
                           [](char byte) { return byte == pattern; });
    }
    void requireGuards() const { require(isUntouchedFrom(mSize), "nothing behind a buffer is touched"); }

  private:
    static constexpr std::size_t guardBytes = 32;
    static constexpr char pattern = '\x5A';

    std::size_t mSize;
    std::vector<char> mBytes;
};

} // namespace kavo::fuzz
