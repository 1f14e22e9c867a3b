// Names, ids, events, selectors and the last error.

#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "tests/console/wrongapplet/WrongApplet.h"

#include <cctype>
#include <set>

namespace error = kavo::error;
using wrong::has;

namespace {

std::string inCapitals(const char* name) {
    std::string text(name == nullptr ? "" : name);
    for (char& letter : text)
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    return text;
}

int foundId(int id) {
    if (id < 0)
        return has("findsEverything") ? static_cast<int>(FG_WIDTH) : id;
    return has("givesWrongIds") ? id + 1 : id;
}

} // namespace

EXPORTED int Fg_getParameterIdByName(Fg_Struct* handle, const char* name) {
    const std::string capitals = inCapitals(name);
    const char* const asked = has("ignoresCase") ? capitals.c_str() : name;
    const int id = wrong::passOn(RIGHT(Fg_getParameterIdByName), handle, asked);
    return wrong::isMissing(handle) ? id : foundId(id);
}

EXPORTED const char* Fg_getParameterName(Fg_Struct* handle, int index) {
    const char* const name = wrong::passOn(RIGHT(Fg_getParameterName), handle, index);
    if (wrong::isMissing(handle))
        return name;
    if (name == nullptr)
        return has("findsEverything") ? "FG_WIDTH" : nullptr;
    return has("listsNothing") ? nullptr : name;
}

EXPORTED int Fg_getParameterId(Fg_Struct* handle, int index) {
    const int id = wrong::passOn(RIGHT(Fg_getParameterId), handle, index);
    return wrong::isMissing(handle) ? id : foundId(id);
}

EXPORTED std::uint64_t Fg_getEventMask(Fg_Struct* handle, const char* name) {
    const std::uint64_t mask = wrong::passOn(RIGHT(Fg_getEventMask), handle, name);
    if (wrong::isMissing(handle))
        return mask;
    if (mask == 0)
        return has("findsEverything") ? 1 : 0;
    return has("givesWrongMasks") ? mask * 2 : mask;
}

EXPORTED const char* Fg_getEventName(Fg_Struct* handle, std::uint64_t mask) {
    static std::set<std::uint64_t> known;
    const char* const name = wrong::passOn(RIGHT(Fg_getEventName), handle, mask);
    if (wrong::isMissing(handle))
        return name;
    if (name == nullptr)
        return has("findsEverything") ? "FG_EVERYTHING" : nullptr;
    const bool isAskedAgain = !known.insert(mask).second;
    return has("renamesEvents") && isAskedAgain ? "FG_ANOTHER" : name;
}

EXPORTED int Info(int selector, unsigned index, int subIndex, unsigned* value, void** data) {
    const bool hasNoPlace = value == nullptr && data == nullptr;
    if (has("needsOutputs") && hasNoPlace)
        return error::bufferTooSmall;
    const int answer = RIGHT(Info)(selector, index, subIndex, value, data);
    constexpr int nameSelector = 4176;
    if (has("bearsAnotherName") && selector == nameSelector && data != nullptr)
        *data = const_cast<char*>("Another");
    const bool isRefused = answer == error::notSupported || answer == error::invalidParameter;
    return isRefused && has("answersEveryQuestion") ? 0 : answer;
}

EXPORTED int Fg_getLastErrorNumber(Fg_Struct* handle) {
    const int code = wrong::passOn(RIGHT(Fg_getLastErrorNumber), handle);
    if (wrong::isMissing(handle))
        return code;
    if (has("forgetsErrors"))
        return error::ok;
    return has("invertsErrors") ? -1 - code : code;
}
