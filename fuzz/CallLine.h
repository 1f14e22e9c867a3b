#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kavo::fuzz {

/// One line of a script of calls: words between spaces. Every line means something; a word that is missing is
/// empty, or 0.
class CallLine {
  public:
    explicit CallLine(std::string_view line) : mRest(line) {}

    std::string_view takeWord();
    /// A decimal or hexadecimal number; any other word counts as 0. Numbers wrap to 32 bits.
    std::int64_t takeNumber();
    int takeInteger() { return static_cast<int>(static_cast<std::uint32_t>(takeNumber())); }
    int takeIntegerOr(int missing);
    unsigned takeUnsigned() { return static_cast<std::uint32_t>(takeNumber()); }
    /// A number below a count.
    unsigned takeBelow(unsigned count) { return takeUnsigned() % count; }
    /// A standard parameter by its name or as "p" and its place in the catalogue; any other word is a number.
    int takeParameterId();

  private:
    std::string_view mRest;
};

} // namespace kavo::fuzz
