#include "applet/ProcessingTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <emmintrin.h>
#include <limits>

namespace {

constexpr double scale = largestPixelValue;
using Shares = std::array<double, lookupTableSize>;

/// Every input as a share of the largest pixel value: a division is the dearest step of an entry.
constexpr Shares shares = [] {
    Shares values{};
    for (std::size_t input = 0; input < values.size(); ++input) {
        values[input] = static_cast<double>(input) / scale;
    }
    return values;
}();

/// What a conversion to a signed word gives for a number that it cannot hold.
constexpr std::int32_t notRepresentable = std::numeric_limits<std::int32_t>::min();

std::int32_t truncate(double value) {
    constexpr double lowerEnd = -2147483649.0;
    constexpr double upperEnd = 2147483648.0;
    return value > lowerEnd && value < upperEnd ? static_cast<std::int32_t>(value) : notRepresentable;
}

void computePower(const Processing& processing, TableEntryValue::Stored& table) {
    const double exponent = 1.0 / processing.gamma;
    for (unsigned input = 0; input < table.size(); ++input) {
        const double x = (shares[input] + processing.offset) * processing.gain;
        std::int32_t entry = x < 0.0 ? 0 : truncate(std::pow(x, exponent) * scale + 0.5);
        if (processing.invert) {
            // Wraps as the design's own 32-bit arithmetic would.
            entry = static_cast<std::int32_t>(largestPixelValue - static_cast<std::uint32_t>(entry));
        }
        table[input] = static_cast<std::uint32_t>(std::clamp<std::int32_t>(entry, 0, largestPixelValue));
    }
}

/// The same with the power of one, which is the value itself, bit for bit: four entries at a time.
class LinearCurve {
  public:
    static constexpr std::size_t entriesAtATime = 4;

    explicit LinearCurve(const Processing& processing)
        : mOffset(_mm_set1_pd(processing.offset)), mGain(_mm_set1_pd(processing.gain)),
          mFlip(_mm_set1_epi32(processing.invert ? -1 : 0)),
          mAfterFlip(_mm_set1_epi32(processing.invert ? largestPixelValue + 1 : 0)) {}

    [[nodiscard]] __m128i entries(const double* fourShares) const {
        const __m128i entries = _mm_unpacklo_epi64(twoEntries(fourShares), twoEntries(fourShares + 2));
        // The negative of a number is its complement plus one.
        return clamped(_mm_add_epi32(_mm_xor_si128(entries, mFlip), mAfterFlip));
    }

  private:
    [[nodiscard]] __m128i twoEntries(const double* twoShares) const {
        const __m128d x = _mm_mul_pd(_mm_add_pd(_mm_loadu_pd(twoShares), mOffset), mGain);
        const __m128d y = _mm_add_pd(_mm_mul_pd(x, _mm_set1_pd(scale)), _mm_set1_pd(0.5));
        // The conversion itself makes what it cannot hold notRepresentable.
        return _mm_cvttpd_epi32(_mm_andnot_pd(_mm_cmplt_pd(x, _mm_setzero_pd()), y));
    }

    static __m128i clamped(__m128i entries) {
        const __m128i halves = _mm_packs_epi32(entries, entries);
        const __m128i pixels =
            _mm_min_epi16(_mm_max_epi16(halves, _mm_setzero_si128()), _mm_set1_epi16(largestPixelValue));
        return _mm_unpacklo_epi16(pixels, _mm_setzero_si128());
    }

    __m128d mOffset, mGain;
    __m128i mFlip, mAfterFlip;
};

void computeLinear(const Processing& processing, TableEntryValue::Stored& table) {
    static_assert(lookupTableSize % LinearCurve::entriesAtATime == 0);
    const LinearCurve curve(processing);
    for (std::size_t input = 0; input < table.size(); input += LinearCurve::entriesAtATime) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(&table[input]), curve.entries(&shares[input]));
    }
}

} // namespace

void Processing::compute(TableEntryValue::Stored& table) const {
    gamma == 1.0 ? computeLinear(*this, table) : computePower(*this, table);
}
