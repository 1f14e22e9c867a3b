// The calls that the applet hands on as they are, with each of them failing in turn, once and from then on: the
// design's registers, the inner handle's own parameters, acquisition and its status.

#include "applet/ParameterFamilies.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/trust/HostFaults.h"

#include <array>

using simulator::CallKind;
using simulator::hostCalls;

namespace {

struct FamilyParameter {
    std::string name;
    int id;
};

class HostFaultsOfFamilies : public testing::Test {
  protected:
    using Buffer = std::array<std::uint32_t, 1024>;

    HostFaultsOfFamilies() { hostCalls().record(false); }

    /// Parameters of the families, whose names the applet tells behind those of the standard parameters.
    std::vector<FamilyParameter> parametersOf(const std::string& prefix);
    void sweep(const std::string& prefix, unsigned dmaIndex);
    void sweepGet(SweepReport& report, const FamilyParameter& parameter, unsigned dmaIndex);
    void sweepSet(SweepReport& report, const FamilyParameter& parameter, unsigned dmaIndex);

    static constexpr std::uint32_t unread = 0xA5A5A5A5;
    static Buffer unreadBuffer() {
        Buffer buffer;
        buffer.fill(unread);
        return buffer;
    }

    int get(int id, Buffer& buffer, unsigned dmaIndex) {
        buffer = unreadBuffer();
        return Fg_getParameterWithType(applet.handle(), id, buffer.data(), dmaIndex, kavo::type::unsigned32);
    }
    int set(int id, const Buffer& buffer, unsigned dmaIndex) {
        return Fg_setParameterWithType(applet.handle(), id, buffer.data(), dmaIndex, kavo::type::unsigned32);
    }

    kavo::test::ScopedEnvironment registers{"KAVO_ENABLE_DRA", "on"};
    kavo::test::ScopedEnvironment inspected{"KAVO_ENABLE_DQXA", "on"};
    AppletOnBoard applet;
};

std::vector<FamilyParameter> HostFaultsOfFamilies::parametersOf(const std::string& prefix) {
    std::vector<FamilyParameter> found;
    for (int index = 0; index < Fg_getNrOfParameter(applet.handle()); ++index) {
        const std::string name = Fg_getParameterName(applet.handle(), index);
        if (name.compare(0, prefix.size(), prefix) == 0) {
            const std::string inner = name.substr(prefix.size());
            found.push_back(
                {name, prefix == family::registerPrefix
                           ? Fg_getParameterIdByName(applet.handle(), name.c_str())
                           : applet.wrapper().getParameterIdByName(inner.c_str()) + family::inspectedIdBase});
        }
    }
    return found;
}

void HostFaultsOfFamilies::sweepGet(SweepReport& report, const FamilyParameter& parameter,
                                    unsigned dmaIndex) {
    report.operation();
    Buffer told;
    int reference = 0;
    const HostFaults faults([&] { reference = get(parameter.id, told, dmaIndex); });
    EXPECT_EQ(faults.count(), 1U);
    for (const FaultDuration duration : bothDurations) {
        Buffer buffer;
        faults.arrange(0, duration);
        const int code = get(parameter.id, buffer, dmaIndex);
        hostCalls().stopFailing();
        report.fault(code == 0);
        EXPECT_EQ(code, injectedCode);
        EXPECT_EQ(applet.lastError(), injectedCode);
        EXPECT_EQ(buffer, unreadBuffer()) << "a failed read gives nothing";
        EXPECT_EQ(get(parameter.id, buffer, dmaIndex), reference);
        EXPECT_EQ(buffer, told);
    }
}

void HostFaultsOfFamilies::sweepSet(SweepReport& report, const FamilyParameter& parameter,
                                    unsigned dmaIndex) {
    report.operation();
    Buffer before;
    const int readable = get(parameter.id, before, dmaIndex);
    const HostFaults faults([&] { set(parameter.id, before, dmaIndex); });
    EXPECT_EQ(faults.count(), 1U);
    Buffer value{before[0] ^ 1U};
    get(parameter.id, before, dmaIndex);
    for (const FaultDuration duration : bothDurations) {
        faults.arrange(0, duration);
        const int code = set(parameter.id, value, dmaIndex);
        hostCalls().stopFailing();
        report.fault(code == 0);
        EXPECT_EQ(code, injectedCode);
        EXPECT_EQ(applet.lastError(), injectedCode);
        Buffer seen;
        EXPECT_EQ(get(parameter.id, seen, dmaIndex), readable);
        EXPECT_EQ(seen, before);
    }
    const int reference = set(parameter.id, value, dmaIndex);
    EXPECT_NE(reference, injectedCode);
    EXPECT_EQ(applet.lastError(), reference);
}

void HostFaultsOfFamilies::sweep(const std::string& prefix, unsigned dmaIndex) {
    SweepReport report("Family " + prefix + ", DMA " + std::to_string(dmaIndex));
    const std::vector<FamilyParameter> parameters = parametersOf(prefix);
    EXPECT_GT(parameters.size(), 5U);
    for (const FamilyParameter& parameter : parameters) {
        SCOPED_TRACE(parameter.name);
        sweepGet(report, parameter, dmaIndex);
        sweepSet(report, parameter, dmaIndex);
    }
    EXPECT_EQ(report.survivors(), 0);
}

int start(Fg_Struct* handle) { return Fg_AcquireEx(handle, 0, 1, 0, nullptr); }
int stop(Fg_Struct* handle) { return Fg_stopAcquireEx(handle, 0, nullptr, 0); }
int nothing(Fg_Struct*) { return 0; }

struct Forwarded {
    const char* name;
    int (*call)(Fg_Struct*);
    int (*prepare)(Fg_Struct*);
};

const Forwarded forwardedCalls[] = {
    {"Fg_getAppletId", [](Fg_Struct* handle) { return Fg_getAppletId(handle, "Orbelline"); }, nothing},
    {"Fg_getStatusEx", [](Fg_Struct* handle) { return Fg_getStatusEx(handle, 0, 0, 1, nullptr); }, nothing},
    {"Fg_AcquireEx", start, stop},
    {"Fg_stopAcquireEx", stop, start},
    {"Fg_getLastPicNumberEx", [](Fg_Struct* handle) { return Fg_getLastPicNumberEx(handle, 1, nullptr); },
     nothing},
    {"Fg_getLastPicNumberBlockingEx",
     [](Fg_Struct* handle) { return Fg_getLastPicNumberBlockingEx(handle, 1, 0, 0, nullptr); }, nothing},
};

} // namespace

TEST_F(HostFaultsOfFamilies, RegistersTellTheCodeAndChangeNothing) {
    for (const unsigned dmaIndex : {0U, 1U}) {
        sweep(family::registerPrefix, dmaIndex);
    }
}

TEST_F(HostFaultsOfFamilies, InspectedParametersTellTheCodeAndChangeNothing) {
    for (const unsigned dmaIndex : {0U, 1U}) {
        sweep(family::inspectedPrefix, dmaIndex);
    }
}

TEST_F(HostFaultsOfFamilies, ForwardedCallsTellTheCodeOfTheRuntime) {
    SweepReport report("Forwarded calls");
    for (const Forwarded& forwarded : forwardedCalls) {
        SCOPED_TRACE(forwarded.name);
        report.operation();
        int reference = 0;
        forwarded.prepare(applet.handle());
        const HostFaults faults([&] { reference = forwarded.call(applet.handle()); });
        ASSERT_EQ(faults.count(), 1U);
        for (const FaultDuration duration : bothDurations) {
            forwarded.prepare(applet.handle());
            faults.arrange(0, duration);
            const int code = forwarded.call(applet.handle());
            hostCalls().stopFailing();
            report.fault(code >= 0);
            EXPECT_EQ(code, injectedCode);
            EXPECT_EQ(applet.lastError(), injectedCode);
            EXPECT_EQ(forwarded.call(applet.handle()), reference);
            EXPECT_EQ(applet.lastError() == 0, reference >= 0);
        }
    }
    EXPECT_EQ(report.survivors(), 0);
}
