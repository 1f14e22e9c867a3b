#include "console/ConfigurationComparison.h"

#include "console/AppletHandle.h"
#include "console/ValueText.h"

#include <algorithm>
#include <cmath>

namespace orbctl {

namespace {

std::int64_t wholeNumberIn(const std::string& text) {
    int number = 0;
    Fg_ConfigFileParser(nullptr, nullptr, true).getIntValue(text.c_str(), &number);
    return number;
}

double doubleIn(const std::string& text) {
    double number = 0;
    Fg_ConfigFileParser(nullptr, nullptr, true).getDoubleValue(text.c_str(), &number);
    return number;
}

/// A file holds twelve digits.
bool isSameNumber(double first, double second) {
    return std::fabs(first - second) <= 1e-11 * std::max(std::fabs(first), std::fabs(second));
}

Agreement agreementOfDoubles(const Parameter& parameter, double file, double board) {
    if (isSameNumber(file, board))
        return Agreement::same;
    const bool isNear = hasStep(parameter) &&
                        std::fabs(file - board) < numberOf(parameter.limits.step) * (1 - 1e-9) &&
                        file >= numberOf(parameter.limits.from) && file <= numberOf(parameter.limits.to);
    return isNear ? Agreement::rounded : Agreement::different;
}

ComparedKey comparedKey(const ConfigurationFile& file, const ParameterState& state) {
    const auto text = file.text(state.parameter.port, state.parameter.name);
    if (!text)
        return {&state, "", {}, Agreement::missing};
    const ParameterValue value = configuredValue(state.parameter, *text);
    return {&state, *text, value, agreementOf(state.parameter, value, state.reading)};
}

} // namespace

ParameterValue configuredValue(const Parameter& parameter, const std::string& text) {
    if (parameter.kind == ValueKind::text)
        return text;
    if (parameter.isFloating())
        return doubleIn(text);
    const bool isSigned = parameter.kind == ValueKind::enumeration || parameter.kind == ValueKind::signed32 ||
                          parameter.kind == ValueKind::signed64;
    const std::int64_t number = wholeNumberIn(text);
    if (isSigned)
        return number;
    // Unsigned 32-bit values are saved as if they were signed.
    return std::uint64_t{static_cast<std::uint32_t>(number)};
}

Agreement agreementOf(const Parameter& parameter, const ParameterValue& value, const Reading& reading) {
    if (!reading.isGood())
        return Agreement::different;
    if (parameter.isFloating())
        return agreementOfDoubles(parameter, numberOf(value), numberOf(reading.value));
    return value == reading.value ? Agreement::same : Agreement::different;
}

std::vector<ComparedKey> compared(const ConfigurationFile& file, const ConfigurationFile& reference,
                                  const ParameterSnapshot& board) {
    std::vector<ComparedKey> keys;
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        for (const std::string& key : reference.keys(port))
            if (const ParameterState* const state = board.find(port, key))
                keys.push_back(comparedKey(file, *state));
    return keys;
}

std::vector<UnknownKey> unknownKeys(const ConfigurationFile& file, const ConfigurationFile& reference) {
    std::vector<UnknownKey> unknown;
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port) {
        const std::vector<std::string>& known = reference.keys(port);
        for (const std::string& key : file.keys(port))
            if (std::find(known.begin(), known.end(), key) == known.end())
                unknown.push_back({port, key});
    }
    return unknown;
}

} // namespace orbctl
