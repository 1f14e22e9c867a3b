#include "tests/applet/ExactArithmetic.h"

#include <cmath>
#include <stdexcept>

namespace exact {
namespace {

constexpr int wordBits = 64;
constexpr std::uint64_t topBit = std::uint64_t{1} << (wordBits - 1);

/// 128 bits, and whether anything but zeros follows them.
struct Wide {
    std::uint64_t high;
    std::uint64_t low;
    bool isInexact;
};

/// The rest of a mantissa behind its first 64 bits, seen from the last of them.
enum class Rest { none, belowHalf, half, aboveHalf };

Number normalized(std::uint64_t mantissa, int exponent) {
    if (mantissa == 0) {
        return {0, 0};
    }
    for (; (mantissa & topBit) == 0; mantissa <<= 1) {
        --exponent;
    }
    return {mantissa, exponent};
}

Rest restOf(std::uint64_t behind, bool isInexact) {
    if (behind == 0) {
        return isInexact ? Rest::belowHalf : Rest::none;
    }
    if (behind < topBit) {
        return Rest::belowHalf;
    }
    return behind == topBit && !isInexact ? Rest::half : Rest::aboveHalf;
}

/// Rounds a mantissa of 64 bits and the bits behind it, which start with a set bit.
Number roundedAt(int bits, const Wide& wide, int exponentOfHigh) {
    const int dropped = wordBits - bits;
    std::uint64_t kept = wide.high;
    Rest rest = restOf(wide.low, wide.isInexact);
    if (dropped > 0) {
        const std::uint64_t tail = kept << bits;
        rest = restOf(tail, rest != Rest::none);
        kept = kept >> dropped << dropped;
    }
    const std::uint64_t unit = std::uint64_t{1} << dropped;
    const bool roundsUp = rest == Rest::aboveHalf || (rest == Rest::half && (kept & unit) != 0);
    if (!roundsUp) {
        return {kept, exponentOfHigh};
    }
    const std::uint64_t up = kept + unit;
    return up != 0 ? Number{up, exponentOfHigh} : Number{topBit, exponentOfHigh + 1};
}

Number normalizedAndRounded(Wide wide, int exponentOfHigh, int bits) {
    while ((wide.high & topBit) == 0) {
        wide.high = (wide.high << 1) | (wide.low >> (wordBits - 1));
        wide.low <<= 1;
        --exponentOfHigh;
    }
    return roundedAt(bits, wide, exponentOfHigh);
}

Wide multiplied(std::uint64_t first, std::uint64_t second) {
    constexpr std::uint64_t lowHalf = 0xFFFFFFFFU;
    constexpr int half = wordBits / 2;
    const std::uint64_t lowLow = (first & lowHalf) * (second & lowHalf);
    const std::uint64_t lowHigh = (first & lowHalf) * (second >> half);
    const std::uint64_t highLow = (first >> half) * (second & lowHalf);
    const std::uint64_t highHigh = (first >> half) * (second >> half);
    const std::uint64_t middle = (lowLow >> half) + (lowHigh & lowHalf) + (highLow & lowHalf);
    return {highHigh + (lowHigh >> half) + (highLow >> half) + (middle >> half),
            (middle << half) | (lowLow & lowHalf), false};
}

} // namespace

Number fromInteger(std::uint64_t value) { return normalized(value, 0); }

Number fromDouble(double value) {
    int exponent = 0;
    const double fraction = std::frexp(value, &exponent);
    return normalized(static_cast<std::uint64_t>(std::ldexp(fraction, doubleBits)), exponent - doubleBits);
}

double toDouble(const Number& number) {
    const int spare = wordBits - doubleBits;
    if (number.mantissa << doubleBits != 0) {
        throw std::logic_error("a double does not hold this number");
    }
    return std::ldexp(static_cast<double>(number.mantissa >> spare), number.exponent + spare);
}

Number rounded(const Number& number, int bits) {
    return number.mantissa == 0 ? number : roundedAt(bits, {number.mantissa, 0, false}, number.exponent);
}

Number product(const Number& first, const Number& second, int bits) {
    if (first.mantissa == 0 || second.mantissa == 0) {
        return {0, 0};
    }
    return normalizedAndRounded(multiplied(first.mantissa, second.mantissa),
                                first.exponent + second.exponent + wordBits, bits);
}

Number quotient(const Number& dividend, const Number& divisor, int bits) {
    if (dividend.mantissa == 0) {
        return {0, 0};
    }
    // Long division, one bit a step. Both mantissas begin with a set bit, so that the first quotient bit is
    // at the first or second place.
    std::uint64_t remainder = dividend.mantissa;
    bool carry = false;
    Wide result{0, 0, false};
    for (int step = 0; step < wordBits + 2; ++step) {
        const bool fits = carry || remainder >= divisor.mantissa;
        remainder -= fits ? divisor.mantissa : 0;
        result.high = (result.high << 1) | (result.low >> (wordBits - 1));
        result.low = (result.low << 1) | (fits ? 1U : 0U);
        carry = (remainder & topBit) != 0;
        remainder <<= 1;
    }
    result.isInexact = carry || remainder != 0;
    // 66 bits came out: the binary point stands behind the first.
    const int exponentOfLow = dividend.exponent - divisor.exponent - (wordBits + 1);
    return normalizedAndRounded(result, exponentOfLow + wordBits, bits);
}

Number scaled(const Number& number, int powerOfTwo) {
    return number.mantissa == 0 ? number : Number{number.mantissa, number.exponent + powerOfTwo};
}

Number plusHalf(const Number& number, int bits) {
    constexpr int halfExponent = -wordBits;
    const Number half{topBit, halfExponent};
    if (number.mantissa == 0) {
        return half;
    }
    const bool isSmaller = number.exponent < halfExponent;
    const Number& large = isSmaller ? half : number;
    const Number& small = isSmaller ? number : half;
    const int distance = large.exponent - small.exponent;
    if (distance >= wordBits) {
        return roundedAt(bits, {large.mantissa, 0, true}, large.exponent);
    }
    const std::uint64_t shifted = small.mantissa >> distance;
    const std::uint64_t behind = distance == 0 ? 0 : small.mantissa << (wordBits - distance);
    const std::uint64_t sum = large.mantissa + shifted;
    if (sum >= large.mantissa) {
        return roundedAt(bits, {sum, behind, false}, large.exponent);
    }
    return roundedAt(bits, {topBit | (sum >> 1), (sum << (wordBits - 1)) | (behind >> 1), (behind & 1) != 0},
                     large.exponent + 1);
}

std::uint64_t truncated(const Number& number) {
    if (number.exponent > 0) {
        throw std::logic_error("the number is too large for an integer");
    }
    return number.exponent <= -wordBits ? 0 : number.mantissa >> -number.exponent;
}

} // namespace exact
