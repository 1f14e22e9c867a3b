#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// An event that an applet knows.
struct EventName {
    std::uint64_t mask = 0; ///< one bit
    std::string name;       ///< "FG_START_OF_FRAME_CAM_PORT_0"
};

/// Asks for the name of each of the 64 bits that a mask can have; in their order.
/// \throws Failure (refused) where the applet gives a name another mask than the one it was found at
std::vector<EventName> eventsOf(const AppletHandle& applet);

} // namespace orbctl
