#include "console/conformance/FunctionChecks.h"
#include "console/NumberText.h"
#include "platform/ErrorCodes.h"

namespace orbctl {

namespace error = kavo::error;

namespace {

struct Event {
    std::uint64_t mask;
    std::string name;
};

std::vector<Event> listed(const CheckContext& context) {
    std::vector<Event> events;
    for (unsigned bit = 0; bit < 64; ++bit) {
        const std::uint64_t mask = std::uint64_t{1} << bit;
        const char* const name = context.functions().eventName(context.handle(), mask);
        if (name != nullptr)
            events.push_back({mask, name});
    }
    return events;
}

void checkEvent(const CheckContext& context, const Event& event) {
    const CheckSubject subject{std::nullopt, event.name};
    const HostFunctions& functions = context.functions();
    context.report.expectText(subject, "has its mask by its name", "", hexadecimalText(event.mask),
                              hexadecimalText(functions.eventMask(context.handle(), event.name.c_str())));
    context.report.expectCode(subject, "leaves no error when its mask is found", "", error::ok,
                              context.lastError());
    const char* const again = functions.eventName(context.handle(), event.mask);
    context.report.expectText(subject, "has its name by its mask", "", event.name,
                              again == nullptr ? "none" : again);
    context.report.expectCode(subject, "leaves no error when its name is found", "", error::ok,
                              context.lastError());
}

void checkMasks(const CheckContext& context, const std::vector<Event>& events) {
    const CheckSubject subject{std::nullopt, "Fg_getEventName"};
    std::uint64_t all = 0;
    for (const Event& event : events)
        all |= event.mask;
    for (const std::uint64_t mask : {std::uint64_t{0}, all, ~std::uint64_t{0}, std::uint64_t{3}}) {
        const std::string text = hexadecimalText(mask);
        const char* const name = context.functions().eventName(context.handle(), mask);
        context.report.expectText(subject, "has no name for a mask of no one event", text, "none",
                                  name == nullptr ? "none" : name);
        context.report.expectCode(subject, "keeps the code of a refused mask as last error", text,
                                  error::invalidParameter, context.lastError());
    }
}

void checkStrangers(const CheckContext& context) {
    const CheckSubject subject{std::nullopt, "Fg_getEventMask"};
    const char* const names[] = {nullptr, "", "FG_NO_SUCH_EVENT"};
    for (const char* const name : names) {
        const std::string text = name == nullptr ? "null" : '"' + std::string(name) + '"';
        context.report.expectText(subject, "has no mask for a name that is not there", text, "0",
                                  textOf(context.functions().eventMask(context.handle(), name)));
        context.report.expectCode(subject, "keeps the code of a refused event as last error", text,
                                  error::invalidParameter, context.lastError());
    }
}

} // namespace

void checkEvents(const CheckContext& context) {
    const std::vector<Event> events = listed(context);
    for (const Event& event : events)
        checkEvent(context, event);
    if (events.size() > 1)
        checkMasks(context, events);
    checkStrangers(context);
}

} // namespace orbctl
