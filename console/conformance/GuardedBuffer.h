#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace orbctl {

/// Bytes for a call, with a pattern before and behind them that the call has to leave alone.
class GuardedBuffer {
  public:
    /// Filled with a pattern of its own.
    explicit GuardedBuffer(std::size_t bytes) : mBytes(bytes), mAll(patterned(bytes)) {}

    void* data() { return mAll.data() + guardBytes; }
    const char* text() const { return reinterpret_cast<const char*>(mAll.data() + guardBytes); }
    std::size_t size() const { return mBytes; }

    template <typename Value>
    void store(const Value& value) {
        std::memcpy(data(), &value, sizeof value);
    }
    template <typename Value>
    Value load(std::size_t offset = 0) const {
        Value value;
        std::memcpy(&value, mAll.data() + guardBytes + offset, sizeof value);
        return value;
    }

    /// The bytes for the call.
    std::vector<unsigned char> bytes() const {
        const auto first = mAll.begin() + static_cast<std::ptrdiff_t>(guardBytes);
        return {first, first + static_cast<std::ptrdiff_t>(mBytes)};
    }
    /// Whether nothing before and nothing from a place on was touched since it was made.
    /// \param used  bytes that belong to the call
    bool isUntouchedBehind(std::size_t used) const {
        const std::vector<unsigned char> fresh = patterned(mBytes);
        const auto first = static_cast<std::ptrdiff_t>(guardBytes);
        const auto rest = first + static_cast<std::ptrdiff_t>(used);
        return std::equal(fresh.begin(), fresh.begin() + first, mAll.begin()) &&
               std::equal(fresh.begin() + rest, fresh.end(), mAll.begin() + rest);
    }
    bool isUntouched() const { return isUntouchedBehind(0); }

  private:
    static constexpr std::size_t guardBytes = 64;

    static std::vector<unsigned char> patterned(std::size_t bytes) {
        std::vector<unsigned char> pattern(bytes + 2 * guardBytes);
        for (std::size_t index = 0; index < pattern.size(); ++index)
            pattern[index] = static_cast<unsigned char>(0xa5U ^ (index * 7U));
        return pattern;
    }

    std::size_t mBytes;
    std::vector<unsigned char> mAll;
};

} // namespace orbctl
