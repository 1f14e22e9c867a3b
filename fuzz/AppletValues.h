#pragma once

#include "platform/FrameGrabber.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kavo::fuzz {

/// What an applet's getters tell of its settings.
class AppletValues {
  public:
    /// Reads every setting of both ports.
    explicit AppletValues(Fg_Struct* handle);

    /// Takes over what another observation tells of one setting.
    void take(const AppletValues& other, int id, int port);
    /// Takes over the settings that a handle reads from the board.
    void takeBoardSettings(const AppletValues& other);
    /// Ends the program when a setting differs. A rate may differ in its last bits.
    void requireSame(const AppletValues& other, const char* when) const;
    bool isSame(const AppletValues& other) const { return !difference(other); }

    /// The text of a setting that has one.
    const std::string& text(int id, int port) const;

  private:
    using Key = std::pair<int, int>; ///< parameter id and port

    std::optional<Key> difference(const AppletValues& other) const;
    void read(Fg_Struct* handle, int port);
    std::string readTable(Fg_Struct* handle, int port);
    template <class Action>
    static void forBoardSettings(Action action);

    // Every observation has them in the same order.
    std::vector<std::pair<Key, double>> mNumbers;
    std::vector<std::pair<Key, std::string>> mTexts; ///< texts, and of a table some entries
};

} // namespace kavo::fuzz
