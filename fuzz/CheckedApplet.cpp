#include "fuzz/CheckedApplet.h"

#include "applet/ParameterFamilies.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/GuardedBuffer.h"
#include "platform/ErrorCodes.h"
#include "simulator/HostCalls.h"

#include <cmath>
#include <limits>
#include <memory>

namespace kavo::fuzz {

namespace {

constexpr std::uint32_t tableEntries = 4096;

bool isAnyOf(int code, std::initializer_list<int> codes) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

/// Copies a value to memory of exactly its size, so that reading past it is noticed.
std::vector<char> bytesOf(Crossing crossing, const GivenValue& value) {
    const auto bytes = [](const auto& number) {
        const auto* first = reinterpret_cast<const char*>(&number);
        return std::vector<char>(first, first + sizeof number);
    };
    switch (crossing) {
    case Crossing::word:
        return bytes(value.word);
    case Crossing::real:
        return bytes(value.real);
    case Crossing::entry:
        return bytes(value.entry);
    case Crossing::text:
        break;
    }
    return {value.text.c_str(), value.text.c_str() + value.text.size() + 1};
}

double tolerance(int id, double value) {
    constexpr double halfTriggerTick = 0.008001;
    constexpr double halfDebounceStep = 0.024001;
    if (id >= FG_TRIGGER_PULSEFORMGEN0_DOWNSCALE && id <= FG_TRIGGER_PULSEFORMGEN3_WIDTH) {
        return halfTriggerTick;
    }
    return id == FG_TRIGGERIN_DEBOUNCE ? halfDebounceStep : std::abs(value) * 1e-12;
}

bool changesTable(int id) {
    return id == FG_LUT_TYPE || id == FG_LUT_CUSTOM_FILE ||
           (id >= FG_PROCESSING_GAIN && id <= FG_PROCESSING_INVERT);
}

bool isInLimits(const RegisterInfo& record, std::uint32_t value) {
    return value >= record.u.uiReg.from && value <= record.u.uiReg.to;
}

bool hasEntry(const EnumReg& entries, std::uint32_t value) {
    const int* first = entries.enumValues;
    const int* end = first + entries.nrOfElements;
    return std::find(first, end, static_cast<int>(value)) != end;
}

} // namespace

CheckedApplet::CheckedApplet(Fg_Struct* handle, Role role) : mHandle(handle), mRole(role), mValues(handle) {
    for (const unsigned port : {0U, 1U}) {
        walkParameterTree(Fg_getParameterInfo(handle, static_cast<int>(port)),
                          [&](const RegisterInfo& each) { take(each, port); });
    }
}

void CheckedApplet::take(const RegisterInfo& described, unsigned port) {
    mRecords[port].push_back(&described);
    const AccessibleParameter* parameter = findParameter(described.id);
    // The number of pulses to send is kept, and its limit follows the queue.
    if (described.format == REG_FORMAT_UINT && parameter != nullptr && parameter->isWritable &&
        described.id != FG_SENDSOFTWARETRIGGER) {
        mLimitedWords.emplace_back(&described, port);
    }
}

const RegisterInfo* CheckedApplet::record(int id, unsigned port) const {
    const auto& records = mRecords[port];
    const auto found = std::find_if(records.begin(), records.end(),
                                    [id](const RegisterInfo* each) { return each->id == id; });
    return found != records.end() ? *found : nullptr;
}

void CheckedApplet::requireKnownValues() {
    mValues.requireSame(AppletValues(mHandle), "a call changes only what it is for");
}

void CheckedApplet::expectBoardChanges() {
    mValues.takeBoardSettings(AppletValues(mHandle));
    mIsTorn = true;
}

// ---- writes

int CheckedApplet::write(int id, unsigned dmaIndex, int type, const GivenValue& value,
                         const AccessibleParameter* known) {
    const std::vector<char> bytes = fuzz::bytesOf(known != nullptr ? known->crossing : Crossing::real, value);
    const auto exact = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), exact.get());
    const int code =
        Fg_setParameterWithType(mHandle, id, value.isNull ? nullptr : exact.get(), dmaIndex, type);
    simulator::hostCalls().stopFailing();
    require(std::equal(bytes.begin(), bytes.end(), exact.get()), "a value that is set is only read");
    require(Fg_getLastErrorNumber(mHandle) == code, "the result of a set is the last error");
    return code;
}

void CheckedApplet::set(int id, unsigned dmaIndex, int type, const GivenValue& value, bool maybeFault) {
    const AccessibleParameter* known = id <= family::registerIdBase ? findParameter(id) : nullptr;
    const int code = write(id, dmaIndex, type, value, known);
    if (value.isNull) {
        require(code == error::invalidParameter, "a null value is refused");
    } else if (id > family::registerIdBase) {
        // Past the applet, straight to the board.
        require(code <= 0, "the host libraries answer with codes");
        expectBoardChanges();
    } else if (dmaIndex >= portCount) {
        require(code == error::invalidParameter, "a DMA index without a port is refused");
    } else if (id == parameterDescriptionQuery || (known != nullptr && !known->isWritable)) {
        require(code == error::notAvailable, "what only can be read is not written");
    } else if (known == nullptr) {
        require(code == error::invalidParameter, "an unknown parameter is refused");
    } else {
        judgeSet(*known, dmaIndex, value, code, maybeFault);
        if (code == error::ok) {
            takeSetValue(*known, dmaIndex, value);
        }
    }
    requireKnownValues();
    requireTrueLimits();
}

void CheckedApplet::judgeSet(const AccessibleParameter& parameter, unsigned port, const GivenValue& value,
                             int code, bool maybeFault) {
    if (maybeFault) {
        require(code <= 0, "a set answers with a code");
        return;
    }
    require(isAnyOf(code, {error::ok, error::triggerBusy, error::fileNotFound, error::downscaleReachesPeriod,
                           error::pulseReachesPeriod, error::notSoftwareMode, error::triggerNotActive,
                           error::fileAccessFailed, error::outOfRange, error::offStep}),
            "a set answers with a code that is told of");
    const RegisterInfo* described = record(parameter.id, port);
    if (described == nullptr || mRole == Role::slave || mIsTorn) {
        return;
    }
    if (described->format == REG_FORMAT_UINT || described->format == REG_FORMAT_ENUM) {
        judgeWord(*described, value, code);
    } else if (described->format == REG_FORMAT_DOUBLE) {
        // Delays are judged in single precision.
        const double slack = std::abs(described->u.dReg.to) * std::numeric_limits<float>::epsilon();
        const bool isOutside =
            !(value.real >= described->u.dReg.from - slack) || !(value.real <= described->u.dReg.to + slack);
        require(!isOutside || code == error::outOfRange, "a real outside its limits is out of range");
    } else if (parameter.crossing == Crossing::entry) {
        const bool isLegal = value.entry.index < tableEntries && value.entry.value < tableEntries;
        require(code == (isLegal ? error::ok : error::outOfRange), "an entry is legal or out of range");
    }
}

void CheckedApplet::judgeWord(const RegisterInfo& described, const GivenValue& value, int code) const {
    const std::uint32_t word = value.word;
    const bool isEnumerated = described.format == REG_FORMAT_ENUM;
    const bool isInside = isEnumerated ? hasEntry(described.u.eReg, word) : isInLimits(described, word);
    require((code == error::outOfRange) == !isInside,
            "a word outside its limits, and no other, is out of range");
    require(code != error::offStep || described.id == FG_GBE_CAMTYPE || !isEnumerated,
            "an enumeration has no steps");
    if (isInside && !isEnumerated && described.id != FG_MTU_SIZE) {
        require((code == error::offStep) == (word % described.u.uiReg.steps != 0),
                "only values off the step are refused for it");
    }
}

void CheckedApplet::takeSetValue(const AccessibleParameter& parameter, unsigned port,
                                 const GivenValue& value) {
    const AppletValues now(mHandle);
    requireReadBack(parameter, port, value);
    mValues.take(now, parameter.id, static_cast<int>(port));
    if (changesTable(parameter.id)) {
        mValues.take(now, FG_LUT_VALUE, static_cast<int>(port));
    }
    if (parameter.id == FG_TRIGGERIN_DEBOUNCE) {
        // The ports share one debouncer.
        mValues.take(now, parameter.id, static_cast<int>(1 - port));
    }
}

void CheckedApplet::requireReadBack(const AccessibleParameter& parameter, unsigned port,
                                    const GivenValue& value) {
    if (parameter.crossing == Crossing::text) {
        require(AppletValues(mHandle).text(parameter.id, static_cast<int>(port)) == value.text,
                "a text that was set is read");
        return;
    }
    GuardedBuffer buffer(sizeof(double));
    if (parameter.crossing == Crossing::entry) {
        buffer.put(FieldParameterInt_s{0, value.entry.index});
    }
    require(Fg_getParameterWithType(mHandle, parameter.id, buffer.data(), port, kavo::type::unsigned32) ==
                error::ok,
            "what was set can be read");
    if (parameter.crossing == Crossing::real) {
        require(std::abs(buffer.as<double>() - value.real) <= tolerance(parameter.id, value.real),
                "a real that was set is read");
    } else {
        const bool isEntry = parameter.crossing == Crossing::entry;
        const std::uint32_t expected = isEntry ? value.entry.value : value.word;
        require(buffer.as<std::uint32_t>() == expected, "a word that was set is read");
    }
}

void CheckedApplet::requireTrueLimits() const {
    if (mRole == Role::slave || mIsTorn) {
        return;
    }
    for (const auto& [described, port] : mLimitedWords) {
        std::uint32_t value = 0;
        Fg_getParameterWithType(mHandle, described->id, &value, port, kavo::type::unsigned32);
        require(isInLimits(*described, value), "a setting lies in the limits that are described");
    }
}

// ---- reads

std::size_t CheckedApplet::bytesOf(const AccessibleParameter& parameter, unsigned port) const {
    switch (parameter.crossing) {
    case Crossing::word:
        return sizeof(std::uint32_t);
    case Crossing::real:
        return sizeof(double);
    case Crossing::entry:
        return sizeof(FieldParameterInt_s);
    case Crossing::text:
        break;
    }
    constexpr std::size_t designFileBytes = sizeof "Orbelline.qel";
    return parameter.isWritable ? mValues.text(parameter.id, static_cast<int>(port)).size() + 1
                                : designFileBytes;
}

void CheckedApplet::get(int id, unsigned dmaIndex, int type, std::uint32_t index, bool isNull,
                        bool maybeFault) {
    const bool isCleared = type == kavo::type::signed64 || type == kavo::type::unsigned64;
    const AccessibleParameter* known = id <= family::registerIdBase ? findParameter(id) : nullptr;
    const bool isStandard = known != nullptr && dmaIndex < portCount;
    const std::size_t bytes = isStandard ? bytesOf(*known, dmaIndex) : sizeof(std::uint64_t);
    GuardedBuffer buffer(isCleared ? std::max(bytes, sizeof(std::uint64_t)) : bytes);
    const bool isEntry = isStandard && known->crossing == Crossing::entry && !isCleared;
    if (isEntry) {
        buffer.put(FieldParameterInt_s{0, index});
    }
    const int code = Fg_getParameterWithType(mHandle, id, isNull ? nullptr : buffer.data(), dmaIndex, type);
    simulator::hostCalls().stopFailing();
    require(Fg_getLastErrorNumber(mHandle) == code, "the result of a get is the last error");
    buffer.requireGuards();
    if (isNull || (!isStandard && id <= family::registerIdBase)) {
        require(code == error::invalidParameter, "a read of nothing is refused");
    }
    if (isStandard && !isNull && !maybeFault) {
        const bool isReadable = !isEntry || index < tableEntries;
        require(code == (isReadable ? error::ok : error::invalidParameter), "a parameter is read");
    }
    if (code != error::ok && !isNull && !isEntry) {
        require(buffer.isUntouchedFrom(isCleared ? sizeof(std::uint64_t) : 0),
                "a failed read writes nothing");
        require(!isCleared || buffer.as<std::uint64_t>() == 0, "a wide buffer is cleared before a read");
    }
    if (code == error::ok && isCleared && isStandard && known->crossing == Crossing::word) {
        require(buffer.as<std::uint64_t>() <= UINT32_MAX, "the upper word of a wide buffer is clear");
    }
}

void CheckedApplet::describe(const char* name, unsigned dmaIndex) {
    constexpr std::size_t longestSentence = 512;
    const std::string asked(name);
    GuardedBuffer buffer(asked.size() + longestSentence);
    std::copy_n(asked.c_str(), asked.size() + 1, buffer.text());
    const int code = Fg_getParameterWithType(mHandle, parameterDescriptionQuery, buffer.data(), dmaIndex,
                                             kavo::type::unsigned32);
    require(isAnyOf(code, {error::ok, error::invalidParameter}), "a description is told or refused");
    require(code == error::ok ? std::strlen(buffer.text()) > 0 : buffer.text() == asked,
            "the name becomes a sentence or stays");
    buffer.requireGuards();
}

// ---- configuration files

void CheckedApplet::save(unsigned file, SavedValues& saved, bool maybeFault) {
    const int code = Fg_saveConfig(mHandle, configurationFile(file));
    simulator::hostCalls().stopFailing();
    require(Fg_getLastErrorNumber(mHandle) == code, "the result of a save is the last error");
    require(code == (file < saved.size() ? error::ok : error::fileAccessFailed),
            "a save works or is refused");
    if (file < saved.size()) {
        // A key whose register could not be read is left out.
        saved[file] = maybeFault || mIsTorn ? std::nullopt : std::optional(mValues);
    }
    requireKnownValues();
}

void CheckedApplet::load(unsigned file, const SavedValues& saved, bool maybeFault) {
    const int code = Fg_loadConfig(mHandle, configurationFile(file));
    simulator::hostCalls().stopFailing();
    require(isAnyOf(code, {error::ok, error::configurationLoadFailed, error::fileNotFound}),
            "a load answers with a code that is told of");
    const int expected = code == error::fileNotFound ? error::configurationLoadFailed : code;
    require(Fg_getLastErrorNumber(mHandle) == expected, "a load that fails tells so");
    const AppletValues now(mHandle);
    if (file >= saved.size() || code == error::fileNotFound) {
        require(code != error::ok && now.isSame(mValues),
                "a load that finds no configuration changes nothing");
    } else if (maybeFault || !saved[file]) {
        mIsTorn = true;
    } else {
        require(code == error::ok, "what was saved can be loaded");
        if (!mIsTorn && saved[file]->isSame(mValues)) {
            // Single entries of a table are not in the file; the table is computed or loaded anew.
            mValues.take(now, FG_LUT_VALUE, 0);
            mValues.take(now, FG_LUT_VALUE, 1);
            mValues.requireSame(now, "loading the present state changes nothing");
        }
    }
    mValues = now;
    requireTrueLimits();
}

} // namespace kavo::fuzz
