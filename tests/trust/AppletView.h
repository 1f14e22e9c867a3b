#pragma once

#include "tests/support/AppletOnBoard.h"

#include <cstdint>
#include <string>
#include <vector>

/// Observations in a fixed order, one word each; texts and tables as a hash.
using Observations = std::vector<std::uint64_t>;

/// Sees everything of an applet that a caller, or the board's owner, can see.
class AppletView {
  public:
    explicit AppletView(AppletOnBoard& applet);

    struct Picture {
        Observations values;    ///< the applet's own values: getters that ask no hardware, and all caches
        Observations records;   ///< limits and access flags of all descriptions
        Observations status;    ///< getters that ask the hardware, with their codes
        Observations registers; ///< design parameters as the board has them
    };
    [[nodiscard]] Picture look();

    /// Where two pictures differ, in words; empty for none.
    [[nodiscard]] std::string differencesInValues(const Picture& left, const Picture& right) const;
    [[nodiscard]] std::string differencesInRecords(const Picture& left, const Picture& right) const;
    [[nodiscard]] std::string differencesInHardware(const Picture& left, const Picture& right) const;
    /// Values that are neither as in the one nor as in the other picture.
    [[nodiscard]] std::string strangeValues(const Picture& seen, const Picture& left,
                                            const Picture& right) const;

  private:
    struct Getter {
        int id;
        int port;
        std::string name;
        bool asksHardware;
    };

    void findGetters();
    [[nodiscard]] std::uint64_t read(const Getter& getter);
    void seeCaches(Observations& values);
    [[nodiscard]] std::string valueName(std::size_t index) const;

    AppletOnBoard& mApplet;
    std::vector<Getter> mGetters;
    std::vector<const RegisterInfo*> mRecords;
};
