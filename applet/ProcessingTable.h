#pragma once

#include "applet/StandardParameterCaches.h"

/// Offset, gain and gamma as users set them, and the lookup table that they make.
struct Processing {
    double offset, gain, gamma;
    bool invert;

    /// Computes every entry: the input as a share of the largest pixel value, plus the offset, times the gain,
    /// to the power of 1/gamma, as a pixel of 12 bits. A result that no 32-bit number holds becomes 0.
    void compute(TableEntryValue::Stored& table) const;
};
