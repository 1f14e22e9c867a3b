// The calls that ask without changing anything, and those that an applet passes on.

#include "fuzz/CallScript.h"

#include "applet/ParameterFamilies.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/GuardedBuffer.h"
#include "fuzz/XmlScan.h"
#include "platform/ErrorCodes.h"

#include <cstdlib>

namespace kavo::fuzz {

namespace {

/// Whether a call without an applet is to say so; it has said so then.
bool isRefused(Fg_Struct* handle, int result) {
    const bool hasApplet = handle != nullptr && handle->Master != nullptr;
    require(hasApplet || result == error::noHandle, "a call without an applet says so");
    return !hasApplet;
}

bool isPort(int port) { return port == 0 || port == 1; }

/// A result that the runtime gave.
void requirePassedOn(Fg_Struct* handle, int result) {
    if (!isRefused(handle, result)) {
        require((result < 0) == (Fg_getLastErrorNumber(handle) < 0), "what the runtime answers is kept");
    }
}

std::string document(Fg_Struct* handle, int port, unsigned size) {
    GuardedBuffer buffer(size);
    require(Fg_getParameterInfoXML(handle, port, buffer.text(), &size) == error::ok && size == buffer.size(),
            "a buffer of the size that was told is filled");
    buffer.requireGuards();
    require(buffer.text()[size - 1] == '\0', "a description ends");
    return buffer.text();
}

void requireDescribedLimits(const CheckedApplet& applet, unsigned port, const std::string& text) {
    const RegisterInfo* record = nullptr;
    for (const XmlElement& element : scanXml(text)) {
        if (element.tag == "Integer") {
            const AccessibleParameter* known =
                findParameter(Fg_getParameterIdByName(applet.handle(), element.attribute("Name").c_str()));
            record = known != nullptr ? applet.record(known->id, port) : nullptr;
        } else if (record != nullptr && record->format == REG_FORMAT_UINT && element.parent == "Integer" &&
                   (element.tag == "Min" || element.tag == "Max")) {
            const std::uint32_t limit = element.tag == "Min" ? record->u.uiReg.from : record->u.uiReg.to;
            require(element.text == std::to_string(limit), "the description tells the present limits");
        }
    }
}

} // namespace

void CallScript::name(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const int index = line.takeInteger();
    const int count = Fg_getNrOfParameter(handle);
    const char* name = Fg_getParameterName(handle, index);
    if (isRefused(handle, count)) {
        require(name == nullptr && Fg_getParameterId(handle, index) == error::noHandle,
                "nothing is named without an applet");
        return;
    }
    require((name != nullptr) == (index >= 0 && index < count), "as many names as parameters");
    require(Fg_getLastErrorNumber(handle) == (name != nullptr ? error::ok : error::invalidParameter),
            "a name is told or refused");
    const int id = Fg_getParameterId(handle, index);
    require(id == Fg_getParameterIdByName(handle, name) && id == (id > 0 ? id : error::invalidParameter),
            "an index and its name have the same id");
}

void CallScript::id(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const std::string name(line.takeWord());
    const int id = Fg_getParameterIdByName(handle, name == "null" ? nullptr : name.c_str());
    if (!isRefused(handle, id)) {
        const int error = id > 0 ? error::ok : error::invalidParameter;
        require((id > 0 || id == error) && Fg_getLastErrorNumber(handle) == error,
                "an id is told or refused");
    }
}

void CallScript::xml(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const int port = line.takeInteger();
    unsigned needed = 0;
    const int result = Fg_getParameterInfoXML(handle.runtime, port, nullptr, &needed);
    if (isRefused(handle.runtime, result)) {
        return;
    }
    require(Fg_getParameterInfoXML(handle.runtime, port, nullptr, nullptr) == error::invalidParameter,
            "a size is asked for somewhere");
    require(result == (isPort(port) ? error::ok : error::noDescription), "a port is described or refused");
    unsigned size = line.takeBelow(needed + 1);
    const unsigned given = size;
    GuardedBuffer small(size);
    const int smallResult = Fg_getParameterInfoXML(handle.runtime, port, small.text(), &size);
    if (given < needed || needed == 0) {
        const int expected = isPort(port) || given == 0 ? error::bufferTooSmall : error::noDescription;
        require(smallResult == expected && size == given && small.isUntouchedFrom(0),
                "a buffer that is too small is left alone");
    }
    if (isPort(port) && handle.applet != nullptr) {
        const std::string text = document(handle.runtime, port, needed);
        require(text.size() + 1 == needed, "the size that is told is the text's");
        requireDescribedLimits(*handle.applet, static_cast<unsigned>(port), text);
    }
}

void CallScript::event(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const auto bits = static_cast<std::uint64_t>(line.takeNumber());
    const char* name = Fg_getEventName(handle, bits);
    const int error = Fg_getLastErrorNumber(handle);
    if (isRefused(handle, error)) {
        require(name == nullptr, "no event without an applet");
    } else {
        require(error == (name != nullptr ? error::ok : error::invalidParameter),
                "an event is named or refused");
        require(name == nullptr || Fg_getEventMask(handle, name) == bits, "an event's name has its mask");
    }
}

void CallScript::mask(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const std::string name(line.takeWord());
    const std::uint64_t mask = Fg_getEventMask(handle, name == "null" ? nullptr : name.c_str());
    const int error = Fg_getLastErrorNumber(handle);
    if (isRefused(handle, error)) {
        require(mask == 0, "no mask without an applet");
    } else {
        require(error == (mask != 0 ? error::ok : error::invalidParameter), "a mask is told or refused");
        require(mask == 0 || Fg_getEventName(handle, mask) == name, "a mask has the name of its event");
    }
}

void CallScript::tree(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const int port = line.takeInteger();
    const RegisterInfo* root = Fg_getParameterInfo(handle.runtime, port);
    require((root != nullptr) == (handle.applet != nullptr && isPort(port)),
            "a port of an applet has a tree");
    walkParameterTree(root, [](const RegisterInfo& record) {
        require(record.name != nullptr && record.parameterName != nullptr, "a record has its names");
    });
}

// ---- acquisition and shading

void CallScript::acquire(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const int dmaIndex = line.takeInteger();
    requirePassedOn(handle, Fg_AcquireEx(handle, dmaIndex, line.takeInteger(), 0, nullptr));
}

void CallScript::stop(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    requirePassedOn(handle, Fg_stopAcquireEx(handle, line.takeInteger(), nullptr, 0));
}

void CallScript::picture(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const int dmaIndex = line.takeInteger();
    requirePassedOn(handle, Fg_getLastPicNumberEx(handle, dmaIndex, nullptr));
    requirePassedOn(handle, Fg_getLastPicNumberBlockingEx(handle, line.takeInteger(), dmaIndex, 0, nullptr));
}

void CallScript::status(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const int selector = line.takeInteger();
    requirePassedOn(handle, Fg_getStatusEx(handle, selector, 0, line.takeUnsigned(), nullptr));
    requirePassedOn(handle, Fg_getAppletId(handle, nullptr));
}

void CallScript::shade(CallLine& line) {
    Fg_Struct* handle = takeHandle(line).runtime;
    const int number = line.takeInteger();
    constexpr float factor = 0.5F;
    const auto requireUnsupported = [&](int result) {
        require(isRefused(handle, result) ||
                    (result == error::notSupported && Fg_getLastErrorNumber(handle) == result),
                "there is no shading");
    };
    require(Fg_AllocShading(handle, number, number) == nullptr, "no shading is made");
    requireUnsupported(Fg_FreeShading(handle, nullptr));
    requireUnsupported(Shad_SetSubValueLine(handle, nullptr, number, number, factor));
    requireUnsupported(Shad_SetMultValueLine(handle, nullptr, number, number, factor));
    requireUnsupported(Shad_SetFixedPatternNoiseLine(handle, nullptr, number, number, number));
    requireUnsupported(Shad_GetMaxLine(handle, nullptr));
    requireUnsupported(Shad_GetAccess(handle, nullptr));
    requireUnsupported(Shad_FreeAccess(handle, nullptr));
    requireUnsupported(Shad_WriteActLine(handle, nullptr, number));
}

} // namespace kavo::fuzz
