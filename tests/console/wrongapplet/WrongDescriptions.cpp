// Records, the XML description and configurations.

#include "grabber_basis/parameterInfo.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "tests/console/wrongapplet/WrongApplet.h"

#include <algorithm>
#include <fstream>
#include <utility>

namespace error = kavo::error;
using wrong::has;

namespace {

constexpr int ports = 2;

/// The record of an id below a group and those behind it.
RegisterInfo* recordOf(RegisterInfo* record, int id) {
    for (; record != nullptr; record = record->next) {
        if (record->format != REG_FORMAT_GROUP && record->id == id)
            return record;
        const int count = record->format == REG_FORMAT_GROUP ? record->u.gReg.nrOfElements : 0;
        for (int index = 0; index < count; ++index)
            if (RegisterInfo* const found = recordOf(record->u.gReg.elements[index], id))
                return found;
    }
    return nullptr;
}

void spoil(RegisterInfo& width, RegisterInfo& format, int port) {
    constexpr unsigned oddStep = 32;
    constexpr int writeOnly = 2;
    if (has("turnsLimits"))
        std::swap(width.u.uiReg.from, width.u.uiReg.to);
    if (has("hasOddSteps"))
        width.u.uiReg.steps = oddStep;
    if (has("describesAsWriteOnly"))
        width.accessFlags = writeOnly;
    if (has("describesPortsApart") && port == 1)
        width.id = FG_WIDTH + 1;
    if (has("hasEntriesTwice"))
        format.u.eReg.enumValues[1] = format.u.eReg.enumValues[0];
}

/// An entry count of 0 has to be gone before the records are freed.
void hideEntries(RegisterInfo* head, bool isHidden) {
    constexpr int formats = 2;
    if (RegisterInfo* const format = recordOf(head, FG_FORMAT))
        format->u.eReg.nrOfElements = isHidden ? 0 : formats;
}

int writeNarrowWidth(Fg_Struct* handle) {
    const unsigned narrow = 32;
    return RIGHT(Fg_setParameterWithType)(handle, FG_WIDTH, &narrow, 0, 0);
}

/// "xml:FROM|TO" writes something else into the description, of the same length.
void rewrite(char* buffer) {
    const std::string change = wrong::textOf("xml");
    const std::size_t bar = change.find('|');
    if (bar == std::string::npos)
        return;
    const std::string_view from = std::string_view(change).substr(0, bar);
    std::string text(buffer);
    for (std::size_t place = 0; (place = text.find(from, place)) != std::string::npos; place += from.size())
        std::copy(change.begin() + static_cast<std::ptrdiff_t>(bar) + 1, change.end(), buffer + place);
}

int spoilDescription(char* buffer, unsigned given, unsigned* size) {
    if (buffer == nullptr)
        return error::ok;
    rewrite(buffer);
    if (has("writesBehindDescriptions") && given > *size)
        buffer[*size] = '!';
    if (has("tellsOtherBytes"))
        ++*size;
    return error::ok;
}

int spoilRefusal(char* buffer, unsigned given, unsigned* size) {
    if (buffer != nullptr && given > 0)
        buffer[0] = '!';
    *size = given + 1;
    return error::ok;
}

} // namespace

EXPORTED RegisterInfo* Fg_getParameterInfo(Fg_Struct* handle, int port) {
    const int asked = has("findsEverything") && port >= ports ? 0 : port;
    RegisterInfo* const head = wrong::passOn(RIGHT(Fg_getParameterInfo), handle, asked);
    if (wrong::isMissing(handle) || head == nullptr)
        return head;
    static bool isSpoilt[ports] = {};
    RegisterInfo* const width = recordOf(head, FG_WIDTH);
    RegisterInfo* const format = recordOf(head, FG_FORMAT);
    if (width != nullptr && format != nullptr && !std::exchange(isSpoilt[asked], true))
        spoil(*width, *format, asked);
    if (has("hasNoEntries"))
        hideEntries(head, true);
    return head;
}

EXPORTED int Fg_FreeGrabber(Fg_Struct* handle) {
    if (!wrong::isMissing(handle) && has("hasNoEntries"))
        for (int port = 0; port < ports; ++port)
            hideEntries(RIGHT(Fg_getParameterInfo)(handle, port), false);
    return wrong::passOn(RIGHT(Fg_FreeGrabber), handle);
}

EXPORTED int Fg_getParameterInfoXML(Fg_Struct* handle, int port, char* buffer, unsigned* size) {
    if (!wrong::isMissing(handle) &&
        (has("hasNoDescription") || (has("givesNoDescription") && buffer != nullptr)))
        return error::bufferTooSmall;
    const unsigned given = *size;
    const int asked = has("findsEverything") && (port < 0 || port >= ports) ? 0 : port;
    const int code = wrong::passOn(RIGHT(Fg_getParameterInfoXML), handle, asked, buffer, size);
    if (wrong::isMissing(handle))
        return code;
    if (code != error::ok)
        return has("fillsShortBuffers") ? spoilRefusal(buffer, given, size) : code;
    if (has("tellsTooManyBytes"))
        ++*size;
    return spoilDescription(buffer, given, size);
}

EXPORTED int Fg_saveConfig(Fg_Struct* handle, const char* file) {
    if (!wrong::isMissing(handle) && has("savesNothing"))
        return error::fileAccessFailed;
    const int code = wrong::passOn(RIGHT(Fg_saveConfig), handle, file);
    if (wrong::isMissing(handle) || code == error::ok || !has("savesAnywhere"))
        return code;
    if (file != nullptr)
        std::ofstream(file) << "saved";
    return error::ok;
}

EXPORTED int Fg_loadConfig(Fg_Struct* handle, const char* file) {
    if (!wrong::isMissing(handle) && has("loadsNothing"))
        return error::configurationLoadFailed;
    const int code = wrong::passOn(RIGHT(Fg_loadConfig), handle, file);
    if (!wrong::isMissing(handle) && has("loadsOtherValues"))
        writeNarrowWidth(handle);
    return has("loadsAnything") ? error::ok : code;
}
