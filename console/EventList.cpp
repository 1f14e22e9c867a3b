#include "console/EventList.h"

#include "console/AppletHandle.h"
#include "console/NumberText.h"

namespace orbctl {

namespace {

void requireSameMask(const AppletHandle& applet, const EventName& event) {
    const std::uint64_t mask = applet.functions().eventMask(applet.handle(), event.name.c_str());
    if (mask != event.mask)
        throw Failure(ExitStatus::refused, "the applet contradicts itself: " + event.name + " has the mask " +
                                               hexadecimalText(mask) + ", but " +
                                               hexadecimalText(event.mask) + " has that name");
}

} // namespace

std::vector<EventName> eventsOf(const AppletHandle& applet) {
    std::vector<EventName> events;
    for (unsigned bit = 0; bit < 64; ++bit) {
        const std::uint64_t mask = std::uint64_t{1} << bit;
        const char* const name = applet.functions().eventName(applet.handle(), mask);
        if (name == nullptr)
            continue;
        events.push_back({mask, name});
        requireSameMask(applet, events.back());
    }
    return events;
}

} // namespace orbctl
