// Reads and writes.

#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "platform/ParameterValues.h"
#include "tests/console/wrongapplet/WrongApplet.h"

#include <cstring>
#include <stdexcept>

namespace error = kavo::error;
using wrong::has;

namespace {

/// No type code of the runtime.
constexpr int strangeType = 77;
constexpr unsigned ports = 2;

bool isAcquiring = false;
unsigned storedVersion = 0;
bool isVersionStored = false;

unsigned wordAt(const void* value, std::size_t index = 0) {
    unsigned word = 0;
    std::memcpy(&word, static_cast<const char*>(value) + index * sizeof word, sizeof word);
    return word;
}

void store(void* value, unsigned word, std::size_t index = 0) {
    std::memcpy(static_cast<char*>(value) + index * sizeof word, &word, sizeof word);
}

int writeRight(Fg_Struct* handle, int id, unsigned word, unsigned dmaIndex = 0) {
    return RIGHT(Fg_setParameterWithType)(handle, id, &word, dmaIndex, kavo::type::unsigned32);
}

bool isText(int id) { return id == FG_LUT_CUSTOM_FILE || id == FG_LUT_SAVE_FILE; }

bool isBehindTable(int id, const void* value) {
    constexpr unsigned lutEntries = 4096;
    return id == FG_LUT_VALUE && value != nullptr && wordAt(value, 1) >= lutEntries;
}

/// What is written in place of a width, where that goes wrong.
bool isWidthMistaken(int id, int type) {
    return id == FG_WIDTH && ((has("writesByType") && type == strangeType) ||
                              (has("writesOtherWhileAcquiring") && isAcquiring));
}

/// Whether a write is answered without being passed on, and with what.
bool isAnswered(int id, const void* value, int& code) {
    constexpr unsigned defaultTimeout = 1000000;
    constexpr int strangeCode = -77;
    code = error::ok;
    if (has("ignoresWrites") || (has("writesFromNothing") && value == nullptr))
        return true;
    if (has("writesBehindTables") && isBehindTable(id, value))
        return true;
    code = error::fileAccessFailed;
    if (has("refusesWrites") || (has("refusesFiles") && isText(id)))
        return true;
    code = strangeCode;
    if (has("hasItsOwnFileCodes") && isText(id))
        return true;
    code = error::outOfRange;
    return has("keepsNoTimeout") && id == FG_TIMEOUT && value != nullptr && wordAt(value) == defaultTimeout;
}

int afterWrite(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex, int code) {
    constexpr unsigned other = 512;
    if (has("overwritesCallers") && value != nullptr && !isText(id))
        store(const_cast<void*>(value), ~wordAt(value));
    if (code == error::ok)
        return code;
    if (has("takesRefusedValues"))
        writeRight(handle, FG_WIDTH, other, dmaIndex);
    if (has("changesOthersOnRefusal") || (has("takesStrangeIds") && code == error::invalidParameter))
        writeRight(handle, FG_HEIGHT, other);
    if (has("storesReadOnly") && id == FG_APPLET_VERSION && value != nullptr) {
        storedVersion = wordAt(value);
        isVersionStored = true;
    }
    return has("acceptsEverything") || has("takesStrangeIds") ? error::ok : code;
}

/// What a read that went well tells wrongly.
void spoil(int id, void* value, int type) {
    const bool isWide = type == kavo::type::signed64 || type == kavo::type::unsigned64;
    if (has("readsByType") && type == strangeType && id == FG_WIDTH)
        store(value, wordAt(value) + 1);
    if (has("readsTooMuch") && id == FG_WIDTH)
        store(value, 1, isWide ? 2 : 1);
    if (has("hasDirtyUpperWords") && isWide && id == FG_WIDTH)
        store(value, 1, 1);
    if (has("readsOutside") && (id == FG_WIDTH || id == FG_LUT_VALUE))
        store(value, 99999);
    if (has("movesIndices") && id == FG_LUT_VALUE)
        store(value, wordAt(value, 1) + 1, 1);
    if (isVersionStored && id == FG_APPLET_VERSION)
        store(value, storedVersion);
}

/// What a read that failed tells all the same.
int excused(int id, void* value, unsigned dmaIndex, int code) {
    if (value == nullptr)
        return has("readsIntoNothing") ? error::ok : code;
    if (has("takesStrangeIds") && dmaIndex < ports && !isBehindTable(id, value)) {
        store(value, 1);
        return error::ok;
    }
    return has("readsBehindTables") && isBehindTable(id, value) ? error::ok : code;
}

} // namespace

EXPORTED int Fg_setParameterWithType(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex,
                                     int type) {
    int code = error::ok;
    if (!wrong::isMissing(handle) && isAnswered(id, value, code))
        return code;
    constexpr unsigned narrow = 32;
    const bool isMistaken = isWidthMistaken(id, type) && value != nullptr;
    const unsigned port = has("hasEveryPort") && dmaIndex >= ports ? 0 : dmaIndex;
    code =
        wrong::passOn(RIGHT(Fg_setParameterWithType), handle, id, isMistaken ? &narrow : value, port, type);
    return wrong::isMissing(handle) ? code : afterWrite(handle, id, value, dmaIndex, code);
}

EXPORTED int Fg_getParameterWithType(Fg_Struct* handle, int id, void* value, unsigned dmaIndex, int type) {
    if (has("throws") && type == strangeType)
        throw std::runtime_error("no reading today");
    if (has("refusesReads") || (has("refusesStrangeTypes") && type == strangeType))
        return error::notAvailable;
    if (has("describesStrangers") && id == parameterDescriptionQuery) {
        std::memcpy(value, "a stranger", sizeof "a stranger");
        return error::ok;
    }
    const unsigned port = has("hasEveryPort") && dmaIndex >= ports ? 0 : dmaIndex;
    const int code = wrong::passOn(RIGHT(Fg_getParameterWithType), handle, id, value, port, type);
    if (code == error::ok)
        spoil(id, value, type);
    return code == error::ok || wrong::isMissing(handle) ? code : excused(id, value, dmaIndex, code);
}

EXPORTED int Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory) {
    isAcquiring = true;
    return wrong::passOn(RIGHT(Fg_AcquireEx), handle, dmaIndex, frames, flag, memory);
}

EXPORTED int Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag) {
    isAcquiring = false;
    return wrong::passOn(RIGHT(Fg_stopAcquireEx), handle, dmaIndex, memory, flag);
}
