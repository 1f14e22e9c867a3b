#include "tests/applet/DesignAccessRecord.h"

#include "platform/ParameterValues.h"

#include <algorithm>
#include <map>

using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr int firstFailure = -4000;

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// One-shot requests hold no value that could be read back.
bool keepsItsValue(const DesignAccess& access) {
    return access.kind == CallKind::write && !endsWith(access.name, "_Mode");
}

std::map<std::string, std::uint64_t> levelsOf(AppletOnBoard& applet, const DesignAccesses& accesses) {
    std::map<std::string, std::uint64_t> levels;
    for (const DesignAccess& access : accesses) {
        if (keepsItsValue(access)) {
            levels[access.name] = applet.board().designValue(access.name);
        }
    }
    return levels;
}

/// Makes the access at a place of the list fail when it happens.
void failAt(const DesignAccesses& expected, std::size_t place, int code) {
    const CallKind kind = expected[place].kind;
    const auto before = std::count_if(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(place),
                                      [kind](const DesignAccess& access) { return access.kind == kind; });
    hostCalls().failOnce(kind, static_cast<unsigned>(before) + 1, code);
}

void expectFailureAt(std::size_t place, AppletOnBoard& applet, const DesignAccesses& expected,
                     const std::function<int()>& change) {
    const int code = firstFailure - static_cast<int>(place);
    auto levels = levelsOf(applet, expected);
    AppletOnBoard::forgetCalls();
    failAt(expected, place, code);
    EXPECT_EQ(change(), code);
    EXPECT_EQ(hostCalls().pendingFailures(), 0U);
    hostCalls().stopFailing();

    const DesignAccesses reached(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(place) + 1);
    EXPECT_EQ(recordedAccesses(), reached);
    for (std::size_t before = 0; before < place; ++before) {
        if (keepsItsValue(expected[before])) {
            levels[expected[before].name] = expected[before].value;
        }
    }
    EXPECT_EQ(levelsOf(applet, expected), levels);
}

} // namespace

std::ostream& operator<<(std::ostream& out, const DesignAccess& access) {
    out << "\n  ";
    if (access.kind == CallKind::write) {
        out << access.name << " <- " << access.value;
    } else {
        out << "read " << access.name;
    }
    return out << " (DMA " << access.dmaIndex << ", type " << access.type << ")";
}

DesignAccesses operator+(DesignAccesses first, const DesignAccesses& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

DesignAccess wroteShared(int port, const std::string& fullName, std::uint32_t value) {
    return {CallKind::write, fullName, value, static_cast<unsigned>(port), kavo::type::unsigned32};
}

DesignAccess readShared(int port, const std::string& fullName) {
    return {CallKind::read, fullName, 0, static_cast<unsigned>(port), kavo::type::unsigned32};
}

DesignAccess wrote(int port, const std::string& name, std::uint32_t value) {
    return wroteShared(port, AppletOnBoard::trigger(port, name), value);
}

DesignAccess read(int port, const std::string& name) {
    return readShared(port, AppletOnBoard::trigger(port, name));
}

DesignAccesses recordedAccesses() {
    DesignAccesses recorded;
    for (const simulator::Call& call : hostCalls().calls()) {
        if (call.kind == CallKind::write || call.kind == CallKind::read) {
            const std::uint32_t value = call.values.empty() ? 0 : call.values.front();
            recorded.push_back({call.kind, call.name, value, call.dmaIndex, call.type});
        }
    }
    return recorded;
}

std::string formRegister(int generator, const std::string& name) {
    return "PulseFormGenerators_PulseFormGenerator" + std::to_string(generator) + "_" + name;
}

DesignAccesses frameRateAccesses(int port, std::uint32_t minimumPeriod) {
    DesignAccesses accesses;
    for (const int generator : {0, 1, 2, 3}) {
        accesses.push_back(read(port, formRegister(generator, "Delay_Delay")));
        accesses.push_back(read(port, formRegister(generator, "Width_Width")));
    }
    accesses.push_back(wrote(port, "Generators_Generator_MinimumPeriod_Number", minimumPeriod));
    return accesses;
}

void expectEachFailureIsPassedOn(AppletOnBoard& applet, const DesignAccesses& expected,
                                 const std::function<void()>& prepare, const std::function<int()>& change,
                                 const std::function<void()>& unchanged) {
    for (std::size_t place = 0; place < expected.size(); ++place) {
        SCOPED_TRACE(testing::Message() << "access " << place + 1 << " fails:" << expected[place]);
        prepare();
        expectFailureAt(place, applet, expected, change);
        unchanged();

        AppletOnBoard::forgetCalls();
        EXPECT_EQ(change(), 0);
        EXPECT_EQ(recordedAccesses(), expected);
    }
}
