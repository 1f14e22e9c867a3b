#include "fuzz/AppletValues.h"

#include "fuzz/FuzzInput.h"
#include "fuzz/ParameterKinds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>

namespace kavo::fuzz {

namespace {

constexpr std::size_t textCapacity = 8192;
constexpr std::array<std::uint32_t, 5> watchedEntries{0, 1, 7, 2048, 4095};

template <class Value>
Value get(Fg_Struct* handle, int id, int port, Value value = {}) {
    const int code =
        Fg_getParameterWithType(handle, id, &value, static_cast<unsigned>(port), kavo::type::unsigned32);
    require(code == 0, "every setting can be read");
    return value;
}

bool isSameNumber(double left, double right) {
    // A configuration file keeps twelve digits.
    constexpr double lastBits = 1e-11;
    return left == right || std::abs(left - right) <= lastBits * std::abs(left);
}

/// The first value that differs, or the end.
template <class Values, class Same>
auto findDifference(const Values& left, const Values& right, Same same) {
    return std::mismatch(
               left.begin(), left.end(), right.begin(), right.end(),
               [&](const auto& a, const auto& b) { return a.first == b.first && same(a.second, b.second); })
        .first;
}

} // namespace

AppletValues::AppletValues(Fg_Struct* handle) {
    for (const int port : {0, 1}) {
        read(handle, port);
    }
}

void AppletValues::read(Fg_Struct* handle, int port) {
    for (const AccessibleParameter& parameter : accessibleParameters()) {
        if (!parameter.isWritable) {
            continue;
        }
        const Key key{parameter.id, port};
        switch (parameter.crossing) {
        case Crossing::word:
            mNumbers.emplace_back(key, get<std::uint32_t>(handle, parameter.id, port));
            break;
        case Crossing::real:
            mNumbers.emplace_back(key, get<double>(handle, parameter.id, port));
            break;
        case Crossing::text:
            mTexts.emplace_back(key, get<std::array<char, textCapacity>>(handle, parameter.id, port).data());
            break;
        case Crossing::entry:
            mTexts.emplace_back(key, readTable(handle, port));
            break;
        }
    }
}

std::string AppletValues::readTable(Fg_Struct* handle, int port) {
    std::string entries;
    for (const std::uint32_t index : watchedEntries) {
        const auto entry = get(handle, FG_LUT_VALUE, port, FieldParameterInt_s{0, index});
        require(entry.index == index, "a table's entry is the one that was asked for");
        entries += std::to_string(entry.value) + ' ';
    }
    return entries;
}

void AppletValues::take(const AppletValues& other, int id, int port) {
    const Key key{id, port};
    for (std::size_t index = 0; index < mNumbers.size(); ++index) {
        if (mNumbers[index].first == key) {
            mNumbers[index] = other.mNumbers[index];
        }
    }
    for (std::size_t index = 0; index < mTexts.size(); ++index) {
        if (mTexts[index].first == key) {
            mTexts[index] = other.mTexts[index];
        }
    }
}

const std::string& AppletValues::text(int id, int port) const {
    const auto found = std::find_if(mTexts.begin(), mTexts.end(), [&](const auto& each) {
        return each.first == Key{id, port};
    });
    require(found != mTexts.end(), "the setting is a text");
    return found->second;
}

template <class Action>
void AppletValues::forBoardSettings(Action action) {
    for (const int port : {0, 1}) {
        action(FG_TRIGGERIN_DEBOUNCE, port);
        constexpr int generatorIds = FG_TRIGGER_PULSEFORMGEN1_DELAY - FG_TRIGGER_PULSEFORMGEN0_DELAY;
        for (int id = FG_TRIGGER_PULSEFORMGEN0_DELAY; id <= FG_TRIGGER_PULSEFORMGEN3_DELAY;
             id += generatorIds) {
            action(id, port);
            action(id + 1, port);
        }
    }
}

void AppletValues::takeBoardSettings(const AppletValues& other) {
    forBoardSettings([&](int id, int port) { take(other, id, port); });
}

std::optional<AppletValues::Key> AppletValues::difference(const AppletValues& other) const {
    const auto number = findDifference(mNumbers, other.mNumbers, isSameNumber);
    if (number != mNumbers.end()) {
        return number->first;
    }
    const auto text = findDifference(mTexts, other.mTexts, std::equal_to<>());
    return text != mTexts.end() ? std::optional(text->first) : std::nullopt;
}

void AppletValues::requireSame(const AppletValues& other, const char* when) const {
    if (const std::optional<Key> key = difference(other)) {
        std::fprintf(stderr, "Parameter %d of port %d differs\n", key->first, key->second);
        require(false, when);
    }
}

} // namespace kavo::fuzz
