#include "applet/ProcessingTable.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <emmintrin.h>

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

/// Computes entries four at a time. The curve makes two results of two values.
template <class Curve>
class TableProcessor {
  public:
    static constexpr std::size_t entriesAtATime = 4;

    TableProcessor(const Processing& processing, Curve curve)
        : mCurve(curve), mOffset(_mm_set1_pd(processing.offset)), mGain(_mm_set1_pd(processing.gain)),
          mFlip(_mm_set1_epi32(processing.invert ? -1 : 0)),
          mAfterFlip(_mm_set1_epi32(processing.invert ? largestPixelValue + 1 : 0)) {}

    void compute(TableEntryValue::Stored& table) const {
        static_assert(lookupTableSize % entriesAtATime == 0);
        for (std::size_t input = 0; input < table.size(); input += entriesAtATime) {
            const __m128i entries =
                _mm_unpacklo_epi64(twoEntries(&shares[input]), twoEntries(&shares[input + 2]));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(&table[input]), clamped(inverted(entries)));
        }
    }

  private:
    /// Rounded results. One that no signed word holds becomes the least number there is.
    [[nodiscard]] __m128i twoEntries(const double* twoShares) const {
        const __m128d x = _mm_mul_pd(_mm_add_pd(_mm_loadu_pd(twoShares), mOffset), mGain);
        const __m128d y = _mm_add_pd(_mm_mul_pd(mCurve(x), _mm_set1_pd(scale)), _mm_set1_pd(0.5));
        return _mm_cvttpd_epi32(_mm_andnot_pd(_mm_cmplt_pd(x, _mm_setzero_pd()), y));
    }

    /// Wraps as the design's own 32-bit arithmetic would: a negative is the complement plus one.
    [[nodiscard]] __m128i inverted(__m128i entries) const {
        return _mm_add_epi32(_mm_xor_si128(entries, mFlip), mAfterFlip);
    }

    static __m128i clamped(__m128i entries) {
        const __m128i halves = _mm_packs_epi32(entries, entries);
        const __m128i pixels =
            _mm_min_epi16(_mm_max_epi16(halves, _mm_setzero_si128()), _mm_set1_epi16(largestPixelValue));
        return _mm_unpacklo_epi16(pixels, _mm_setzero_si128());
    }

    Curve mCurve;
    __m128d mOffset, mGain;
    __m128i mFlip, mAfterFlip;
};

} // namespace

void Processing::compute(TableEntryValue::Stored& table) const {
    if (gamma == 1.0) {
        // The power of one is the value itself, bit for bit.
        TableProcessor(*this, [](__m128d x) { return x; }).compute(table);
    } else {
        TableProcessor(*this, [exponent = 1.0 / gamma](__m128d x) {
            return _mm_set_pd(std::pow(_mm_cvtsd_f64(_mm_unpackhi_pd(x, x)), exponent),
                              std::pow(_mm_cvtsd_f64(x), exponent));
        }).compute(table);
    }
}
