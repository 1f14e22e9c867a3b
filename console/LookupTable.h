#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// The lookup table of a port and what fills it, as the applet tells them.
struct LookupTable {
    static constexpr unsigned largestInput = 4095;
    static constexpr unsigned largestOutput = 4095;

    unsigned port = 0;
    bool isProcessed = true; ///< the applet computes it; else it comes from a file
    std::string type;        ///< "LUT_TYPE_PROCESSING"
    std::string file;        ///< that was loaded, or would be
    double offset = 0;
    double gain = 1;
    double gamma = 1;
    bool isInverted = false;
    std::vector<std::uint32_t> values; ///< output for each input

    bool isIdentity() const;
    /// Whether the values are those that offset, gain, gamma and invert give. An applet tells what fills the
    /// table, not whether entries were written since.
    bool followsProcessor() const;
    std::uint32_t smallest() const;
    std::uint32_t largest() const;
};

/// \throws Failure (refused) where something of it cannot be read, notFound where the applet has no such
/// table
LookupTable lookupTableOf(const AppletHandle& applet, unsigned port);

/// Has the applet write a port's table into a file.
/// \throws Failure (notFound where the file cannot be written, refused)
void saveLookupTable(const AppletHandle& applet, unsigned port, const std::string& file);
/// Has the applet fill a port's table from a file; after a failure the table and what fills it are as before.
/// \throws Failure (notFound where the file cannot be read, refused)
void loadLookupTable(const AppletHandle& applet, unsigned port, const std::string& file);

/// "offset 0, gain 1, gamma 1, invert off".
std::string processingText(const LookupTable& table);
/// For the legend of a plot: "port 0: offset 0, gain 1, gamma 1, invert off", "port 1: file a.lut".
std::string legendText(const LookupTable& table);

} // namespace orbctl
