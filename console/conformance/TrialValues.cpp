#include "console/conformance/TrialValues.h"

#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orbctl {

namespace error = kavo::error;

namespace {

/// Wide enough for every whole number of 64 bits, signed or not.
using Wide = long double;

constexpr const char* belowMinimum = "what lies below its minimum";
constexpr const char* aboveMaximum = "what lies above its maximum";
constexpr const char* offStep = "what is off its step";
constexpr const char* noEntry = "what is none of its entries";

Wide wide(const ParameterValue& value) {
    if (const auto* number = std::get_if<std::uint64_t>(&value))
        return static_cast<Wide>(*number);
    if (const auto* number = std::get_if<std::int64_t>(&value))
        return static_cast<Wide>(*number);
    return static_cast<Wide>(numberOf(value));
}

bool holdsSigned(ValueKind kind) {
    return kind == ValueKind::signed32 || kind == ValueKind::signed64 || kind == ValueKind::signedField ||
           kind == ValueKind::enumeration;
}

ParameterValue valueOf(const Parameter& parameter, Wide number) {
    if (parameter.isFloating())
        return static_cast<double>(number);
    if (holdsSigned(parameter.kind))
        return static_cast<std::int64_t>(number);
    return static_cast<std::uint64_t>(number);
}

/// The ends of what a value of this kind can hold.
struct Span {
    Wide least;
    Wide most;

    bool contains(Wide number) const { return number >= least && number <= most; }
};

template <typename Number>
Span spanOf() {
    return {static_cast<Wide>(std::numeric_limits<Number>::lowest()),
            static_cast<Wide>(std::numeric_limits<Number>::max())};
}

Span spanOf(const Parameter& parameter) {
    if (parameter.isFloating())
        return spanOf<double>();
    if (parameter.kind == ValueKind::unsigned64)
        return spanOf<std::uint64_t>();
    if (parameter.kind == ValueKind::signed64)
        return spanOf<std::int64_t>();
    return holdsSigned(parameter.kind) ? spanOf<std::int32_t>() : spanOf<std::uint32_t>();
}

Span limitsOf(const Parameter& parameter) { return {wide(parameter.limits.from), wide(parameter.limits.to)}; }

Wide stepOf(const Parameter& parameter, unsigned step) {
    if (step != 0)
        return step;
    if (hasStep(parameter))
        return wide(parameter.limits.step);
    return parameter.isFloating() ? 0 : 1;
}

/// Takes each value once and leaves out what a value of this kind cannot hold.
class TrialList {
  public:
    explicit TrialList(const Parameter& parameter) : mParameter(parameter), mSpan(spanOf(parameter)) {}

    void add(const char* what, Wide number, int code) {
        const ParameterValue value = mSpan.contains(number) ? valueOf(mParameter, number) : ParameterValue{};
        const auto isThere = [&](const TrialValue& trial) { return trial.value == value; };
        if (mSpan.contains(number) && std::none_of(mValues.begin(), mValues.end(), isThere))
            mValues.push_back({what, value, code});
    }
    void addUndefined() {
        mValues.push_back(
            {"what is not a number", std::numeric_limits<double>::quiet_NaN(), error::outOfRange});
        for (const double infinity : {HUGE_VAL, -HUGE_VAL})
            mValues.push_back({infinity > 0 ? aboveMaximum : belowMinimum, infinity, error::outOfRange});
    }
    std::vector<TrialValue> values() const { return mValues; }

  private:
    const Parameter& mParameter;
    Span mSpan;
    std::vector<TrialValue> mValues;
};

/// How far outside its limits a value has to be so that nobody rounds it into them: single precision is
/// enough to tell it.
Wide clearly(Wide limit, Wide direction, Wide step) {
    const auto towards = static_cast<float>(direction * HUGE_VALL);
    const Wide next = std::nextafter(static_cast<float>(limit), towards);
    const Wide stepped = limit + direction * step;
    return direction > 0 ? std::max(next, stepped) : std::min(next, stepped);
}

bool hasEntry(const Parameter& parameter, std::int64_t value) {
    return std::any_of(parameter.entries.begin(), parameter.entries.end(),
                       [&](const EnumerationEntry& entry) { return entry.value == value; });
}

std::vector<TrialValue> entriesOf(const Parameter& parameter) {
    std::vector<TrialValue> values;
    for (const EnumerationEntry& entry : parameter.entries)
        values.push_back({"its entry", entry.value, error::ok});
    return values;
}

std::vector<TrialValue> strangersTo(const Parameter& parameter) {
    TrialList list(parameter);
    const auto add = [&](std::int64_t value) {
        if (!hasEntry(parameter, value))
            list.add(noEntry, static_cast<Wide>(value), error::outOfRange);
    };
    for (const EnumerationEntry& entry : parameter.entries) {
        add(entry.value - 1);
        add(entry.value + 1);
    }
    add(std::numeric_limits<std::int32_t>::min());
    add(std::numeric_limits<std::int32_t>::max());
    return list.values();
}

void addOutside(TrialList& list, const Parameter& parameter, Wide step) {
    const auto [least, most] = limitsOf(parameter);
    const Span span = spanOf(parameter);
    if (parameter.isFloating()) {
        list.add(belowMinimum, clearly(least, -1, step), error::outOfRange);
        list.add(aboveMaximum, clearly(most, 1, step), error::outOfRange);
    } else {
        list.add(belowMinimum, least - 1, error::outOfRange);
        list.add(aboveMaximum, most + 1, error::outOfRange);
        list.add(aboveMaximum, most + step, error::outOfRange);
    }
    if (span.least < least)
        list.add(belowMinimum, span.least, error::outOfRange);
    if (span.most > most)
        list.add(aboveMaximum, span.most, error::outOfRange);
}

void addOffStep(TrialList& list, const Parameter& parameter, Wide step) {
    const auto [least, most] = limitsOf(parameter);
    const Wide described = stepOf(parameter, 0);
    for (const Wide number : {least + 1, least + described / 2, least + step / 2, most - 1})
        if (number > least && number < most && std::fmod(number - least, step) != 0)
            list.add(offStep, std::floor(number), error::offStep);
}

} // namespace

bool isNumber(const Parameter& parameter) {
    return parameter.hasLimits && !parameter.isField() && parameter.kind != ValueKind::unsupported;
}

bool hasOpenLimits(const Parameter& parameter) {
    return parameter.hasLimits && wide(parameter.limits.from) == 0 && wide(parameter.limits.to) == 0 &&
           wide(parameter.limits.step) == 0;
}

std::vector<TrialValue> legalValues(const Parameter& parameter, unsigned step) {
    if (parameter.kind == ValueKind::enumeration)
        return entriesOf(parameter);
    const auto [least, most] = limitsOf(parameter);
    const Wide grid = stepOf(parameter, step);
    const Wide middle = grid > 0 ? least + std::floor((most - least) / grid / 2) * grid : (least + most) / 2;
    TrialList list(parameter);
    list.add("its minimum", least, error::ok);
    list.add("its maximum", most, error::ok);
    list.add("a value in its middle", middle, error::ok);
    if (least + grid <= most)
        list.add("the value above its minimum", least + grid, error::ok);
    if (most - grid >= least)
        list.add("the value below its maximum", most - grid, error::ok);
    return list.values();
}

std::vector<TrialValue> illegalValues(const Parameter& parameter, unsigned step) {
    if (parameter.kind == ValueKind::enumeration)
        return strangersTo(parameter);
    const Wide grid = stepOf(parameter, step);
    TrialList list(parameter);
    addOutside(list, parameter, grid);
    if (parameter.isFloating())
        list.addUndefined();
    else if (grid > 1)
        addOffStep(list, parameter, grid);
    return list.values();
}

bool isSameValue(const Parameter& parameter, const ParameterValue& written, const ParameterValue& read) {
    if (written.index() != read.index() || !parameter.isFloating())
        return written == read;
    constexpr double rounding = 1e-9;
    const double wanted = numberOf(written);
    const double half = hasStep(parameter) ? numberOf(parameter.limits.step) / 2 : 0;
    return std::fabs(numberOf(read) - wanted) <= half + rounding * (half + std::fabs(wanted));
}

bool isDescribedValue(const Parameter& parameter, const ParameterValue& value) {
    if (parameter.kind == ValueKind::enumeration)
        return hasEntry(parameter, std::get<std::int64_t>(value));
    if (parameter.isFloating() && std::isinf(numberOf(value)))
        return !parameter.isWritable();
    return limitsOf(parameter).contains(wide(value));
}

} // namespace orbctl
