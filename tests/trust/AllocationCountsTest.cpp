// What the applet asks of the heap: nothing at all while parameters are read and written, names and events
// are looked up and calls are forwarded; a counted amount when it is created. What the host's libraries ask
// for does not count.

#include "tests/trust/AllocationCounts.h"
#include "applet/ParameterFamilies.h"
#include "applet/StandardParameterTable.h"
#include "tests/support/AllocationFaults.h"
#include "tests/support/AppletOnBoard.h"
#include "tests/support/Creation.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/trust/ParameterAccess.h"

#include <cmath>
#include <cstring>
#include <iostream>
#include <limits>

using kavo::test::keptMemory;
using kavo::test::ScopedEnvironment;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

/// Number of allocations that an operation makes.
template <class Operation>
long allocationsOf(Operation operation) {
    const long before = kavo::test::allocationCount();
    operation();
    return kavo::test::allocationCount() - before;
}

/// A parameter whose set needs memory by its nature, at least once there is a text of a length.
struct NeedsMemory {
    int id;
    const char* name;
    const char* reason;
};
constexpr NeedsMemory needingMemory[] = {
    {FG_LUT_SAVE_FILE, "FG_LUT_SAVE_FILE", "keeps a text of any length and writes a file"},
    {FG_LUT_CUSTOM_FILE, "FG_LUT_CUSTOM_FILE", "keeps a text of any length"},
    {FG_LUT_TYPE, "FG_LUT_TYPE", "reads the file of that name"},
};

constexpr int writableIds[] = {
#define X(name, ...) name,
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
};
constexpr int readOnlyIds[] = {
#define X(name, ...) name,
    ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
};
static_assert(std::size(writableIds) + std::size(readOnlyIds) == standardParameterCount);

/// A value as it crosses the interface, made before the counting.
class RawValue {
  public:
    explicit RawValue(const TrialValue& value) {
        if (const auto* text = std::get_if<std::string>(&value)) {
            mBytes.assign(text->c_str(), text->c_str() + text->size() + 1);
            return;
        }
        std::visit(
            [this](const auto& scalar) {
                const auto* const first = reinterpret_cast<const char*>(&scalar);
                mBytes.assign(first, first + sizeof scalar);
            },
            value);
    }
    [[nodiscard]] const void* data() const { return mBytes.data(); }

  private:
    std::vector<char> mBytes;
};

/// Values that a parameter refuses at this moment.
std::vector<TrialValue> refusedValues(const RegisterInfo* record) {
    if (record == nullptr) {
        return {};
    }
    switch (record->format) {
    case REG_FORMAT_UINT: {
        const UIntReg& limits = record->u.uiReg;
        std::vector<TrialValue> values;
        if (limits.to < std::numeric_limits<unsigned>::max()) {
            values.emplace_back(limits.to + 1);
        }
        if (limits.from > 0) {
            values.emplace_back(limits.from - 1);
        }
        return values;
    }
    case REG_FORMAT_DOUBLE:
        return {std::nan(""), record->u.dReg.to * 2 + 1, record->u.dReg.from - 1};
    case REG_FORMAT_ENUM:
        return {0xFFFFFFFEU, 0x7FFFFFFFU};
    case REG_FORMAT_UINTFIELD:
        return {FieldParameterInt_s{4096, 0}, FieldParameterInt_s{0, 4096}};
    default:
        return {};
    }
}

class CountedCalls : public OnBothPorts {
  protected:
    CountedCalls() { hostCalls().record(false); }

    [[nodiscard]] unsigned dmaIndex() const { return static_cast<unsigned>(port()); }
    long allocationsOfSet(int id, const void* value, int* code) {
        return allocationsOf(
            [&] { *code = Fg_setParameterWithType(applet.handle(), id, value, dmaIndex(), 2); });
    }
    /// Lets an operation see every state of the applet that has reads and writes of its own.
    template <class Operation>
    void inEveryScene(Operation operation) {
        for (const Scene& scene : scenesOf(port())) {
            SCOPED_TRACE(scene.name);
            applet.wrapper().setDefaultValues();
            enter(applet, scene, port());
            operation();
        }
    }

    const std::string noFile;
    kavo::test::TemporaryFolder folder;
    std::string file = folder.path("a-name-that-is-longer-than-any-text-that-fits-into-an-object-itself.lut");
    std::array<std::uint32_t, 1024> words{};
};
FOR_BOTH_PORTS(CountedCalls);

class CountedLookUps : public testing::Test {
  protected:
    CountedLookUps() { hostCalls().record(false); }
    AppletOnBoard applet;
    Fg_Struct* handle = applet.handle();
};

/// A figure for the report of the run.
void report(const char* name, long value) {
    testing::Test::RecordProperty(name, static_cast<int>(value));
    std::cout << name << ": " << value << '\n';
}

class CountedCreation : public kavo::test::OnFreshBoard {
  protected:
    static constexpr long mostAllocationsOfCreation = 2800;
    /// The product's pointers are four bytes long.
    static constexpr long mostBytesOfWrapper = 140000 * static_cast<long>(sizeof(void*) / 4);
    static constexpr long mostAllocationsOfFile = 200;
    static constexpr long mostAllocationsOfXml = 600;
};

} // namespace

TEST_P(CountedCalls, AGetNeedsNoMemory) {
    ASSERT_EQ(applet.set(FG_LUT_SAVE_FILE, file.c_str(), port()), 0);
    ASSERT_EQ(applet.set(FG_LUT_CUSTOM_FILE, file.c_str(), port()), 0);
    const auto expectNone = [&](int id) {
        std::fill(words.begin(), words.end(), 0);
        int code = 0;
        EXPECT_EQ(allocationsOf([&] {
                      code = Fg_getParameterWithType(applet.handle(), id, words.data(), dmaIndex(), 2);
                  }),
                  0)
            << id;
        EXPECT_EQ(code, 0) << id;
    };
    inEveryScene([&] {
        std::for_each(std::begin(writableIds), std::end(writableIds), expectNone);
        std::for_each(std::begin(readOnlyIds), std::end(readOnlyIds), expectNone);
    });
}

TEST_P(CountedCalls, ARefusedGetNeedsNoMemory) {
    for (const int id : {FG_OVERFLOW, FG_FILLLEVEL, FG_DMASTATUS, FG_TRIGGER_FRAMESPERSECOND}) {
        hostCalls().failFrom(CallKind::read, 1, -4711);
        EXPECT_EQ(
            allocationsOf([&] { Fg_getParameterWithType(applet.handle(), id, words.data(), dmaIndex(), 2); }),
            0)
            << id;
        hostCalls().stopFailing();
    }
    EXPECT_EQ(allocationsOf([&] {
                  Fg_getParameterWithType(applet.handle(), FG_WIDTH, words.data(), 2, 2);
                  Fg_getParameterWithType(applet.handle(), FG_WIDTH, nullptr, dmaIndex(), 2);
                  Fg_getParameterWithType(applet.handle(), 99, words.data(), dmaIndex(), 2);
                  Fg_getParameterWithType(nullptr, FG_WIDTH, words.data(), dmaIndex(), 2);
              }),
              0);
}

TEST_P(CountedCalls, TheQueryForADescriptionNeedsNoMemory) {
    for (const StandardParameter& parameter : catalogue::standardParameters) {
        std::memcpy(words.data(), parameter.name, std::strlen(parameter.name) + 1);
        EXPECT_EQ(allocationsOf([&] {
                      Fg_getParameterWithType(applet.handle(), parameterDescriptionQuery, words.data(),
                                              dmaIndex(), 2);
                  }),
                  0)
            << parameter.name;
    }
}

TEST_P(CountedCalls, ASetNeedsNoMemory) {
    inEveryScene([&] {
        for (const int id : writableIds) {
            for (const TrialValue& value : trialValues(applet, id, port(), noFile)) {
                const RawValue raw(value);
                int code = 0;
                EXPECT_EQ(allocationsOfSet(id, raw.data(), &code), 0) << id << " <- " << value;
            }
        }
    });
}

TEST_P(CountedCalls, TextsAndTheirFilesTakeAFewBlocksAndGiveThemBack) {
    constexpr unsigned fromFile = 0;
    for (const NeedsMemory& entry : needingMemory) {
        const void* const value =
            entry.id == FG_LUT_TYPE ? static_cast<const void*>(&fromFile) : file.c_str();
        int code = 0;
        const long allocations = allocationsOfSet(entry.id, value, &code);
        EXPECT_EQ(code, 0) << entry.name;
        report(entry.name, allocations);
        EXPECT_GE(allocations, 1) << entry.name << ' ' << entry.reason << ": not any more?";
        EXPECT_LE(allocations, 8) << entry.name;
        const long kept = keptMemory().blocks;
        allocationsOfSet(entry.id, value, &code);
        EXPECT_EQ(keptMemory().blocks, kept) << entry.name;
    }
}

TEST_P(CountedCalls, ARefusedSetNeedsNoMemory) {
    inEveryScene([&] {
        for (const int id : writableIds) {
            for (const TrialValue& value : refusedValues(applet.record(id, port()))) {
                const RawValue raw(value);
                int code = 0;
                EXPECT_EQ(allocationsOfSet(id, raw.data(), &code), 0) << id << " <- " << value;
                EXPECT_LT(code, 0) << id << " <- " << value;
            }
            int code = 0;
            EXPECT_EQ(allocationsOfSet(id, nullptr, &code), 0) << id;
            EXPECT_LT(code, 0) << id;
        }
    });
    unsigned word = 1;
    for (const int id : readOnlyIds) {
        int code = 0;
        EXPECT_EQ(allocationsOfSet(id, &word, &code), 0) << id;
        EXPECT_EQ(code, kavo::error::notAvailable) << id;
    }
    EXPECT_EQ(allocationsOf([&] {
                  Fg_setParameterWithType(applet.handle(), 99, &word, dmaIndex(), 2);
                  Fg_setParameterWithType(applet.handle(), FG_WIDTH, &word, 2, 2);
                  Fg_setParameterWithType(nullptr, FG_WIDTH, &word, dmaIndex(), 2);
              }),
              0);
}

TEST_P(CountedCalls, ASetThatTheHostRefusesNeedsNoMemory) {
    inEveryScene([&] {
        for (const int id : writableIds) {
            const RawValue raw(trialValues(applet, id, port(), noFile).front());
            for (const CallKind kind : {CallKind::write, CallKind::read}) {
                hostCalls().failFrom(kind, 1, -4711);
                int code = 0;
                EXPECT_EQ(allocationsOfSet(id, raw.data(), &code), 0) << id;
                hostCalls().stopFailing();
            }
        }
    });
}

TEST_F(CountedLookUps, NamesAndIdsNeedNoMemory) {
    for (int index = -1; index <= standardParameterCount; ++index) {
        EXPECT_EQ(allocationsOf([&] {
                      Fg_getParameterIdByName(handle, Fg_getParameterName(handle, index));
                      Fg_getParameterId(handle, index);
                  }),
                  0)
            << index;
    }
    const std::string unknown(1000, 'x');
    EXPECT_EQ(allocationsOf([&] {
                  Fg_getNrOfParameter(handle);
                  Fg_getParameterIdByName(handle, unknown.c_str());
                  Fg_getParameterIdByName(handle, "");
                  Fg_getLastErrorNumber(handle);
                  Fg_getParameterInfo(handle, 0);
                  Fg_getParameterInfo(handle, 2);
              }),
              0);
}

TEST_F(CountedLookUps, EventsNeedNoMemory) {
    for (int bit = 0; bit < 64; ++bit) {
        EXPECT_EQ(allocationsOf([&] {
                      const char* name = Fg_getEventName(handle, std::uint64_t{1} << bit);
                      Fg_getEventMask(handle,
                                      name != nullptr ? name : "FG_NO_SUCH_EVENT_AT_ALL_ON_THIS_BOARD");
                  }),
                  0)
            << bit;
    }
    EXPECT_EQ(allocationsOf([&] {
                  Fg_getEventMask(handle, nullptr);
                  Fg_getEventName(handle, 3);
              }),
              0);
}

TEST_F(CountedLookUps, ForwardedCallsNeedNoMemory) {
    EXPECT_EQ(allocationsOf([&] {
                  Fg_AcquireEx(handle, 0, 1, 0, nullptr);
                  Fg_getLastPicNumberEx(handle, 0, nullptr);
                  Fg_getLastPicNumberBlockingEx(handle, 0, 0, 0, nullptr);
                  Fg_getStatusEx(handle, 1, 0, 0, nullptr);
                  Fg_stopAcquireEx(handle, 0, nullptr, 0);
                  Fg_getAppletId(handle, "Orbelline");
                  Fg_AllocShading(handle, 0, 0);
                  Shad_GetMaxLine(handle, nullptr);
              }),
              0);
}

TEST_F(CountedLookUps, ConstantsAreGatheredOnceForAll) {
    const auto ask = [](const char* name) {
        std::string text(name);
        auto* const value = reinterpret_cast<unsigned*>(text.data());
        return allocationsOf([&] { Info(4352, 0, 0, value, nullptr); });
    };
    EXPECT_LE(ask("FG_GRAY"), 200);
    EXPECT_EQ(ask("FG_GRAY"), 0);
    EXPECT_EQ(ask("FG_NO_SUCH_CONSTANT"), 0);
    EXPECT_EQ(allocationsOf([] {
                  for (int selector = 0; selector < 4352; ++selector) {
                      Info(selector, 0, 0, nullptr, nullptr);
                  }
              }),
              0);
}

TEST(CountedFamilies, RegistersAndParametersOfTheInnerHandleNeedNoMemory) {
    const ScopedEnvironment registers("KAVO_ENABLE_DRA", "on");
    const ScopedEnvironment inspected("KAVO_ENABLE_DQXA", "on");
    AppletOnBoard applet;
    hostCalls().record(false);
    const int inner = applet.wrapper().getParameterIdByName("Device1_Process0_Buffer_0_DRAM_A_0_XLength");
    ASSERT_GT(inner, 0);
    std::uint64_t value = 0;
    for (const int id :
         {family::registerIdBase + 1, family::registerIdBase + 12, family::registerIdBase + 100000,
          family::inspectedIdBase + inner, family::inspectedIdBase + 1}) {
        EXPECT_EQ(allocationsOf([&] {
                      Fg_getParameterWithType(applet.handle(), id, &value, 0, 2);
                      Fg_setParameterWithType(applet.handle(), id, &value, 0, 2);
                  }),
                  0)
            << id;
    }
}

TEST_F(CountedCreation, TakesABoundedAmountAndFreeingGivesAllOfItBack) {
    { const kavo::test::Creation warmUp; }
    for (const int slave : {0, 1}) {
        const kavo::test::KeptMemory before = keptMemory();
        const long allocationsBefore = kavo::test::allocationCount();
        Fg_Struct handle{Std_entry(board().device(), nullptr, slave)};
        const long allocations = kavo::test::allocationCount() - allocationsBefore;
        const long bytes = keptMemory().bytes - before.bytes;
        ASSERT_NE(handle.Master, nullptr);
        EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(Fg_FreeGrabber(&handle), 0); }), 0) << "freeing needs none";
        EXPECT_EQ(keptMemory().blocks, before.blocks);
        report(slave == 0 ? "AllocationsOfCreation" : "AllocationsOfSlaveCreation", allocations);
        report(slave == 0 ? "BytesOfWrapperWithRegistry" : "BytesOfSlaveWrapperWithRegistry", bytes);
        EXPECT_LE(allocations, mostAllocationsOfCreation);
        EXPECT_LE(bytes, mostBytesOfWrapper);
    }
}

TEST_F(CountedCreation, IsFollowedByOperationsThatGiveBackWhatTheyTake) {
    kavo::test::Creation creation;
    const kavo::test::TemporaryFolder folder;
    const std::string file = folder.path("settings.mcf");
    auto& wrapper = static_cast<FgQxWrapperImpl&>(*static_cast<FgQxWrapper*>(creation.handle()->Master));
    unsigned size = 0;
    const auto expectBalance = [](const char* name, long most, auto operation) {
        operation();
        const long before = keptMemory().blocks;
        const long allocations = allocationsOf(operation);
        EXPECT_EQ(keptMemory().blocks, before) << name;
        report(name, allocations);
        EXPECT_LE(allocations, most) << name;
    };
    expectBalance("AllocationsOfDefaults", 0, [&] { wrapper.setDefaultValues(); });
    expectBalance("AllocationsOfSaving", mostAllocationsOfFile,
                  [&] { EXPECT_EQ(Fg_saveConfig(creation.handle(), file.c_str()), 0); });
    expectBalance("AllocationsOfLoading", mostAllocationsOfFile,
                  [&] { EXPECT_EQ(Fg_loadConfig(creation.handle(), file.c_str()), 0); });
    expectBalance("AllocationsOfXml", mostAllocationsOfXml,
                  [&] { EXPECT_EQ(Fg_getParameterInfoXML(creation.handle(), 0, nullptr, &size), 0); });
}
