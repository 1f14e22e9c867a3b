#pragma once

#include <cstddef>

/// One allowed value of an enumerated parameter.
struct EnumerationEntry {
    const char* displayName; ///< "Gray 8bit"
    int value;
    const char* symbol; ///< "FG_GRAY"
};

/// The allowed values of an enumerated parameter, in the order in which they are shown. The same tables
/// validate values, describe parameters and answer the applet's named constants.
class Enumeration {
  public:
    template <std::size_t size>
    constexpr Enumeration(const EnumerationEntry (&entries)[size]) : mEntries(entries), mSize(size) {}

    [[nodiscard]] constexpr const EnumerationEntry* begin() const { return mEntries; }
    [[nodiscard]] constexpr const EnumerationEntry* end() const { return mEntries + mSize; }
    [[nodiscard]] constexpr int size() const { return static_cast<int>(mSize); }

    [[nodiscard]] constexpr bool contains(unsigned value) const {
        for (const EnumerationEntry& entry : *this) {
            if (static_cast<unsigned>(entry.value) == value) {
                return true;
            }
        }
        return false;
    }

  private:
    const EnumerationEntry* mEntries;
    std::size_t mSize;
};

namespace enumerations {

extern const Enumeration PixelFormatGrayAreaGigE_LAG;
extern const Enumeration YesNo;
extern const Enumeration FormatGray;
extern const Enumeration AlignmentModesBoth;
extern const Enumeration AcqLutTypes;
extern const Enumeration LookupTableImplementations;
extern const Enumeration OnOff;
extern const Enumeration Apply;
extern const Enumeration TriggerInSource;
extern const Enumeration TriggerPolarity;
extern const Enumeration BusyFlag;
extern const Enumeration TriggerOutSelection_Gen4;
extern const Enumeration TriggerOutStatsSources_Gen4;
extern const Enumeration AreaTriggerModes;
extern const Enumeration AreaTriggerModesPlusSync;
extern const Enumeration TriggerStates;

/// Every table, for look-ups of a symbol's value; a symbol has the same value wherever it stands.
extern const Enumeration* const all[];
extern const std::size_t allCount;

} // namespace enumerations

// Values that handlers tell apart.

/// FG_GBE_CAMTYPE: the only type of one byte a pixel on the link.
constexpr unsigned pixelFormatMono8 = 0;

enum OutputFormatValue : unsigned { formatGray16 = 1, formatGray8 = 3 };
enum LookupTableType : unsigned { lookupTableCustom = 0, lookupTableProcessing = 3 };
enum TriggerMode : unsigned {
    modeGenerator = 1,
    modeExternal = 2,
    modeSynchronized = 3, ///< port 1 only: follows the trigger of port 0
    modeSoftware = 4,
};
enum TriggerState : unsigned { stateActive = 0, stateAsyncStop = 1, stateSyncStop = 2 };

constexpr unsigned switchedOn = 1;
constexpr unsigned answerYes = 1;
constexpr unsigned busy = 1;
constexpr unsigned notBusy = 0;
constexpr unsigned applyNow = 1;
