#pragma once

#include <cstdint>
#include <memory>

/// A full lookup table: one unsigned value per entry.
struct LookupTable_s {
    std::unique_ptr<std::uint32_t[]> lut; ///< nrOfElements values; null for no table
    std::uint32_t id = 0;
    std::uint32_t nrOfElements = 0;
    std::uint32_t format = 0;
    std::uint8_t number = 0;
};

/// A lookup table of knees: one floating-point value per entry. A file holds the values only, so whoever
/// reads one sets nrOfElements before.
struct KneeLookupTable_s {
    std::unique_ptr<double[]> value; ///< nrOfElements values; null for no table
    std::unique_ptr<double[]> reserved;
    std::uint32_t id = 0;
    std::uint32_t nrOfElements = 0;
    std::uint32_t format = 0;
    std::uint8_t number = 0;
};
