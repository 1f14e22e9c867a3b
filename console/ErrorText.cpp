#include "console/ErrorText.h"

#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/BoardErrorCodes.h"
#include "platform/ErrorCodes.h"

#include <algorithm>
#include <cmath>

namespace orbctl {

namespace {

struct Meaning {
    int code;
    const char* text;
};

constexpr Meaning meanings[] = {
    {kavo::error::ok, "no error"},
    {kavo::error::notAvailable,
     "not available: the parameter cannot be written, or the host lacks the function"},
    {kavo::error::triggerBusy, "the trigger system is still busy and has no queue"},
    {kavo::error::initialisationFailed, "the design could not be loaded or the board not initialised"},
    {kavo::error::bufferTooSmall, "a buffer is too small, or memory could not be had"},
    {kavo::error::noHandle, "no board is open"},
    {kavo::error::runtimeMissing, "the runtime library or its initialisation function was not found"},
    {kavo::error::invalidParameter, "no such parameter, index or port, or the applet does not answer for it"},
    {kavo::error::noDescription, "there is no description for the port, or the value has no meaning"},
    {kavo::error::fileNotFound, "the file does not exist"},
    {kavo::error::downscaleReachesPeriod,
     "with this downscale a trigger pulse would last as long as the trigger period"},
    {kavo::error::pulseReachesPeriod, "a trigger pulse would last as long as the trigger period"},
    {kavo::error::notSupported, "the applet does not support this"},
    {kavo::error::notSoftwareMode, "the trigger mode is not Software"},
    {kavo::error::triggerNotActive, "the trigger system is stopped"},
    {kavo::error::configurationLoadFailed, "the configuration could not be loaded"},
    {kavo::error::fileAccessFailed, "the file could not be read or written"},
    {kavo::error::outOfRange, "the value is out of range"},
    {kavo::error::offStep, "the value is off its step"},
    {kavo::error::keyNotFound, "the configuration has no such key"},
    {kavo::error::board::noRegister, "the board has no design yet, or no such register"},
    {kavo::error::board::timeout, "no picture came in time"},
    {kavo::error::board::notAcquiring, "the port acquires nothing, or will not reach the picture"},
    {kavo::error::board::busy, "the port acquires already, or the image memory is in use"},
    {kavo::error::board::noApplet, "the applet library cannot be opened, or is no applet"},
    {kavo::error::board::appletThrew, "creating the applet ended in an exception"},
    {kavo::error::board::noBoard, "there is no board of that number"},
    {kavo::error::board::noScene, "the scene file has a mistake"},
};

const char* meaningOrNull(int code) {
    for (const Meaning& meaning : meanings)
        if (meaning.code == code)
            return meaning.text;
    return nullptr;
}

std::string inBrackets(int code) { return " (" + textOf(std::int64_t{code}) + ")"; }

std::string withUnit(const Parameter& parameter, const std::string& text) {
    return parameter.unit.empty() ? text : text + " " + parameter.unit;
}

bool isInsideLimits(const Parameter& parameter, double number) {
    return number >= numberOf(parameter.limits.from) && number <= numberOf(parameter.limits.to);
}

bool isOnStep(const Parameter& parameter, double number) {
    const double step = numberOf(parameter.limits.step);
    const double steps = (number - numberOf(parameter.limits.from)) / step;
    return std::fabs(steps - std::round(steps)) < 1e-9;
}

std::string entriesWithValues(const Parameter& parameter) {
    std::string text;
    for (const EnumerationEntry& entry : parameter.entries)
        text += (text.empty() ? "" : ", ") + readableText(parameter, entry.value);
    return text;
}

bool hasEntry(const Parameter& parameter, double number) {
    const auto carriesIt = [&](const EnumerationEntry& entry) {
        return static_cast<double>(entry.value) == number;
    };
    return std::any_of(parameter.entries.begin(), parameter.entries.end(), carriesIt);
}

std::string outOfRangeReason(const Parameter& parameter, double number) {
    if (parameter.kind == ValueKind::enumeration && !hasEntry(parameter, number))
        return " is none of " + entriesWithValues(parameter);
    if (parameter.hasLimits && !isInsideLimits(parameter, number)) {
        const std::string range =
            numberText(parameter.limits.from) + " .. " + numberText(parameter.limits.to);
        return " is outside " + withUnit(parameter, range);
    }
    return " is out of range with the present settings";
}

std::string offStepReason(const Parameter& parameter, double number) {
    if (hasStep(parameter) && !isOnStep(parameter, number))
        return " is off its step of " + withUnit(parameter, numberText(parameter.limits.step));
    return " is off its step, which is not the one that its description names";
}

} // namespace

std::string meaningOf(int code) {
    const char* const text = meaningOrNull(code);
    return text == nullptr ? "the host answered with an error" : text;
}

std::string withCode(int code) { return meaningOf(code) + inBrackets(code); }

ExitStatus statusOfFileError(int code) {
    const bool isMissing = code == kavo::error::fileNotFound || code == kavo::error::fileAccessFailed;
    return isMissing ? ExitStatus::notFound : ExitStatus::refused;
}

std::string contradictionOf(const Parameter& parameter, const ParameterValue& value) {
    const double number = numberOf(value);
    const bool isUnknownEntry = parameter.kind == ValueKind::enumeration && !hasEntry(parameter, number);
    if (isUnknownEntry || (parameter.hasLimits && !isInsideLimits(parameter, number)))
        return plainText(parameter, value) + outOfRangeReason(parameter, number);
    const bool isOffStep = hasStep(parameter) && !parameter.isFloating() && !isOnStep(parameter, number);
    return isOffStep ? plainText(parameter, value) + offStepReason(parameter, number) : "";
}

std::string refusedWrite(const Parameter& parameter, const ParameterValue& value, int code) {
    const std::string subject = parameter.name + ": " + plainText(parameter, value);
    if (code == kavo::error::notAvailable)
        return parameter.name + " cannot be written" + inBrackets(code);
    if (code == kavo::error::outOfRange)
        return subject + outOfRangeReason(parameter, numberOf(value)) + inBrackets(code);
    if (code == kavo::error::offStep)
        return subject + offStepReason(parameter, numberOf(value)) + inBrackets(code);
    return subject + " was refused: " + withCode(code);
}

std::string refusedRead(const Parameter& parameter, int code) {
    return parameter.name + " cannot be read: " + withCode(code);
}

} // namespace orbctl
