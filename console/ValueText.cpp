#include "console/ValueText.h"

#include "console/Failure.h"
#include "console/NumberText.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace orbctl {

namespace {

[[noreturn]] void refuseText(const Parameter& parameter, std::string_view text, const std::string& expected) {
    const std::string range = rangeText(parameter);
    throw Failure(ExitStatus::usage, parameter.name + ": \"" + std::string(text) + "\" is no " + expected +
                                         (range.empty() ? "" : " (" + range + ")"));
}

template <typename Number>
ParameterValue wholeNumber(const Parameter& parameter, std::string_view text, std::optional<Number> number,
                           Number least, Number most) {
    if (!number || *number < least || *number > most)
        refuseText(parameter, text, kindText(parameter.kind));
    return *number;
}

ParameterValue unsignedNumber(const Parameter& parameter, std::string_view text, std::uint64_t most) {
    return wholeNumber<std::uint64_t>(parameter, text, unsignedFrom(text), 0, most);
}

ParameterValue signedNumber(const Parameter& parameter, std::string_view text, std::int64_t least,
                            std::int64_t most) {
    return wholeNumber<std::int64_t>(parameter, text, signedFrom(text), least, most);
}

ParameterValue enumerationValue(const Parameter& parameter, std::string_view text) {
    for (const EnumerationEntry& entry : parameter.entries)
        if (text == entry.symbol || text == entry.displayName)
            return entry.value;
    const auto number = signedFrom(text);
    if (!number || *number < std::numeric_limits<std::int32_t>::min() ||
        *number > std::numeric_limits<std::int32_t>::max())
        refuseText(parameter, text, "entry of the enumeration");
    return *number;
}

ParameterValue floatingNumber(const Parameter& parameter, std::string_view text) {
    const std::optional<double> number = doubleFrom(text);
    if (!number)
        refuseText(parameter, text, "number");
    return *number;
}

const EnumerationEntry* entryOf(const Parameter& parameter, const ParameterValue& value) {
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number == nullptr)
        return nullptr;
    const auto found = std::find_if(parameter.entries.begin(), parameter.entries.end(),
                                    [&](const EnumerationEntry& entry) { return entry.value == *number; });
    return found == parameter.entries.end() ? nullptr : &*found;
}

const std::string& nameOf(const EnumerationEntry& entry) {
    return entry.symbol.empty() ? entry.displayName : entry.symbol;
}

std::string entriesText(const Parameter& parameter) {
    std::string text;
    for (const EnumerationEntry& entry : parameter.entries)
        text += (text.empty() ? "" : ", ") + nameOf(entry);
    return text;
}

bool isPlaceholder(const Limits& limits) {
    return numberOf(limits.from) == 0 && numberOf(limits.to) == 0 && numberOf(limits.step) == 0;
}

} // namespace

ParameterValue valueFrom(const Parameter& parameter, std::string_view text) {
    switch (parameter.kind) {
    case ValueKind::unsigned32:
    case ValueKind::unsignedField:
        return unsignedNumber(parameter, text, std::numeric_limits<std::uint32_t>::max());
    case ValueKind::unsigned64:
        return unsignedNumber(parameter, text, std::numeric_limits<std::uint64_t>::max());
    case ValueKind::signed32:
    case ValueKind::signedField:
        return signedNumber(parameter, text, std::numeric_limits<std::int32_t>::min(),
                            std::numeric_limits<std::int32_t>::max());
    case ValueKind::signed64:
        return signedNumber(parameter, text, std::numeric_limits<std::int64_t>::min(),
                            std::numeric_limits<std::int64_t>::max());
    case ValueKind::floating32:
    case ValueKind::floating64:
    case ValueKind::floatingField:
        return floatingNumber(parameter, text);
    case ValueKind::enumeration:
        return enumerationValue(parameter, text);
    case ValueKind::text:
        return std::string(text);
    case ValueKind::unsupported:
        break;
    }
    throw Failure(ExitStatus::usage, parameter.name + ": values of this kind cannot be written from here");
}

std::string numberText(const ParameterValue& value) {
    return std::visit(
        [](const auto& held) -> std::string {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::string>)
                return held;
            else
                return textOf(held);
        },
        value);
}

double numberOf(const ParameterValue& value) {
    return std::visit(
        [](const auto& held) -> double {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::string>)
                return 0;
            else
                return static_cast<double>(held);
        },
        value);
}

std::string plainText(const Parameter& parameter, const ParameterValue& value) {
    const EnumerationEntry* entry = entryOf(parameter, value);
    return entry == nullptr ? numberText(value) : nameOf(*entry);
}

std::string readableText(const Parameter& parameter, const ParameterValue& value) {
    const EnumerationEntry* entry = entryOf(parameter, value);
    if (entry != nullptr)
        return nameOf(*entry) + " (" + numberText(value) + ")";
    const std::string text = numberText(value);
    return text.empty() ? "\"\"" : text;
}

std::string readableText(const Parameter& parameter, const Reading& reading) {
    return reading.isGood() ? readableText(parameter, reading.value)
                            : "error " + textOf(std::int64_t{reading.code});
}

std::string textWithUnit(const Parameter& parameter, const Reading& reading) {
    const bool hasUnit = reading.isGood() && !parameter.unit.empty();
    return readableText(parameter, reading) + (hasUnit ? " " + parameter.unit : "");
}

std::string categoryText(const Parameter& parameter) {
    std::string text;
    for (const std::string& group : parameter.category)
        text += (text.empty() ? "" : " / ") + group;
    return text;
}

bool hasStep(const Parameter& parameter) {
    constexpr double continuous = std::numeric_limits<double>::epsilon();
    return parameter.hasLimits && numberOf(parameter.limits.step) > continuous;
}

std::string rangeText(const Parameter& parameter) {
    if (parameter.kind == ValueKind::enumeration)
        return entriesText(parameter);
    if (!parameter.fileFilter.empty())
        return parameter.fileFilter;
    if (!parameter.hasLimits || isPlaceholder(parameter.limits))
        return "";
    std::string text = numberText(parameter.limits.from) + " .. " + numberText(parameter.limits.to);
    if (parameter.isField())
        text = textOf(std::uint64_t{parameter.elementCount}) + " elements, " + text;
    if (hasStep(parameter) && numberOf(parameter.limits.step) != 1)
        text += ", step " + numberText(parameter.limits.step);
    return text;
}

std::string accessText(const Parameter& parameter) {
    if (!parameter.isDescribed)
        return "not told";
    std::string text;
    const char* const rights[] = {"read", "write", "change"};
    for (unsigned bit = 0; bit < 3; ++bit)
        if ((parameter.accessFlags & (1 << bit)) != 0)
            text += (text.empty() ? "" : ", ") + std::string(rights[bit]);
    return text.empty() ? "none" : text;
}

std::string shortAccessText(const Parameter& parameter) {
    if (!parameter.isDescribed)
        return "?";
    std::string text = "rwc";
    for (unsigned bit = 0; bit < 3; ++bit)
        if ((parameter.accessFlags & (1 << bit)) == 0)
            text[bit] = '-';
    return text;
}

std::string kindText(ValueKind kind) {
    switch (kind) {
    case ValueKind::unsigned32:
        return "unsigned 32-bit number";
    case ValueKind::signed32:
        return "signed 32-bit number";
    case ValueKind::unsigned64:
        return "unsigned 64-bit number";
    case ValueKind::signed64:
        return "signed 64-bit number";
    case ValueKind::floating32:
        return "single-precision number";
    case ValueKind::floating64:
        return "double-precision number";
    case ValueKind::enumeration:
        return "enumeration";
    case ValueKind::text:
        return "text";
    case ValueKind::unsignedField:
        return "field of unsigned 32-bit numbers";
    case ValueKind::signedField:
        return "field of signed 32-bit numbers";
    case ValueKind::floatingField:
        return "field of double-precision numbers";
    case ValueKind::unsupported:
        break;
    }
    return "other";
}

} // namespace orbctl
