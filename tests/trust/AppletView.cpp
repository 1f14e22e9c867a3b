#include "tests/trust/AppletView.h"

#include "applet/ParameterFamilies.h"
#include "applet/StandardParameterTable.h"

#include <cstring>

namespace {

constexpr const char* cacheNames[] = {
#define X(name, ...) #name "_P0", #name "_P1",
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
};

bool isWritable(int id) {
    switch (id) {
#define X(name, ...) case name:
        ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
        return true;
    default:
        return false;
    }
}

std::uint64_t hashOf(const std::uint32_t* words, std::size_t count) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (std::size_t index = 0; index < count; ++index) {
        hash = (hash ^ words[index]) * 1099511628211ULL;
    }
    return hash;
}

std::uint64_t wordOf(unsigned value) { return value; }
std::uint64_t wordOf(double value) {
    std::uint64_t word = 0;
    std::memcpy(&word, &value, sizeof value);
    return word;
}
std::uint64_t wordOf(const std::string& text) { return std::hash<std::string>()(text); }
std::uint64_t wordOf(const TableEntryValue::Stored& table) { return hashOf(table.data(), table.size()); }

std::uint64_t limit(const RegisterInfo& record, bool upper) {
    switch (record.format) {
    case REG_FORMAT_UINT:
        return upper ? record.u.uiReg.to : record.u.uiReg.from;
    case REG_FORMAT_DOUBLE:
        return wordOf(upper ? record.u.dReg.to : record.u.dReg.from);
    default:
        return 0;
    }
}

template <class Name>
std::string differences(const Observations& left, const Observations& right, Name name) {
    std::string text = left.size() == right.size() ? "" : "other number of observations; ";
    for (std::size_t index = 0; index < left.size() && index < right.size(); ++index) {
        if (left[index] != right[index]) {
            text +=
                name(index) + ' ' + std::to_string(left[index]) + " | " + std::to_string(right[index]) + "; ";
        }
    }
    return text;
}

} // namespace

AppletView::AppletView(AppletOnBoard& applet) : mApplet(applet) {
    findGetters();
    for (const int port : {0, 1}) {
        walkParameterTree(Fg_getParameterInfo(mApplet.handle(), port),
                          [&](const RegisterInfo& record) { mRecords.push_back(&record); });
    }
}

void AppletView::findGetters() {
    static const std::vector<Getter> getters = [&] {
        std::vector<Getter> found;
        simulator::hostCalls().record(true);
        for (const int port : {0, 1}) {
            for (const StandardParameter& parameter : catalogue::standardParameters) {
                simulator::hostCalls().clear();
                found.push_back(
                    {parameter.id, port, std::string(parameter.name) + "_P" + std::to_string(port), false});
                static_cast<void>(read(found.back()));
                // What only can be read tells of the hardware, in one mode or another.
                found.back().asksHardware =
                    !isWritable(parameter.id) || !simulator::hostCalls().calls().empty();
            }
        }
        simulator::hostCalls().record(false);
        simulator::hostCalls().clear();
        return found;
    }();
    mGetters = getters;
}

std::uint64_t AppletView::read(const Getter& getter) {
    // The longest value but for texts, which the caches tell.
    std::array<std::uint32_t, 1024> words;
    constexpr std::size_t looked = 4;
    std::fill_n(words.begin(), looked, 0);
    const int code = Fg_getParameterWithType(mApplet.handle(), getter.id, words.data(),
                                             static_cast<unsigned>(getter.port), kavo::type::unsigned32);
    return hashOf(words.data(), looked) + static_cast<unsigned>(code);
}

void AppletView::seeCaches(Observations& values) {
    FgQxWrapperImpl& wrapper = mApplet.wrapper();
#define X(name, ...)                                                                                         \
    values.push_back(wordOf(wrapper.cache_##name(0)));                                                       \
    values.push_back(wordOf(wrapper.cache_##name(1)));
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
}

AppletView::Picture AppletView::look() {
    Picture picture;
    seeCaches(picture.values);
    for (const Getter& getter : mGetters) {
        (getter.asksHardware ? picture.status : picture.values).push_back(read(getter));
    }
    for (const RegisterInfo* record : mRecords) {
        picture.records.push_back(limit(*record, false));
        picture.records.push_back(limit(*record, true));
        picture.records.push_back(static_cast<std::uint64_t>(record->accessFlags));
    }
    simulator::Board& board = mApplet.board();
    for (const DesignParameterName& parameter : designParameterNames) {
        const std::vector<std::uint32_t> table = board.designField(parameter.name);
        picture.registers.push_back(table.empty() ? board.designValue(parameter.name)
                                                  : hashOf(table.data(), table.size()));
    }
    return picture;
}

std::string AppletView::valueName(std::size_t index) const {
    if (index < std::size(cacheNames)) {
        return std::string("cache ") + cacheNames[index];
    }
    index -= std::size(cacheNames);
    for (const Getter& getter : mGetters) {
        if (!getter.asksHardware && index-- == 0) {
            return getter.name;
        }
    }
    return "?";
}

std::string AppletView::differencesInValues(const Picture& left, const Picture& right) const {
    return differences(left.values, right.values, [&](std::size_t index) { return valueName(index); });
}

std::string AppletView::differencesInRecords(const Picture& left, const Picture& right) const {
    static const char* const words[] = {" from", " to", " access"};
    return differences(left.records, right.records, [&](std::size_t index) {
        return std::string(mRecords[index / 3]->parameterName) + words[index % 3];
    });
}

std::string AppletView::differencesInHardware(const Picture& left, const Picture& right) const {
    const auto statusName = [&](std::size_t index) {
        for (const Getter& getter : mGetters) {
            if (getter.asksHardware && index-- == 0) {
                return getter.name;
            }
        }
        return std::string("?");
    };
    return differences(left.status, right.status, statusName) +
           differences(left.registers, right.registers,
                       [](std::size_t index) { return std::string(designParameterNames[index].name); });
}

std::string AppletView::strangeValues(const Picture& seen, const Picture& left, const Picture& right) const {
    std::string text;
    for (std::size_t index = 0; index < seen.values.size(); ++index) {
        if (seen.values[index] != left.values[index] && seen.values[index] != right.values[index]) {
            text += valueName(index) + "; ";
        }
    }
    return text;
}
