#include "fuzz/CallScript.h"

#include "fuzz/FuzzInput.h"
#include "platform/ErrorCodes.h"
#include "tests/support/ScopedEnvironment.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace kavo::fuzz {

using simulator::CallKind;
using simulator::hostCalls;

namespace {

constexpr unsigned emptyHandle = 5;
constexpr int defaultType = kavo::type::unsigned32;

std::size_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

/// A design that cannot be loaded is left out: creation keeps its wrapper then.
constexpr std::array<std::pair<std::string_view, CallKind>, 10> failingKinds{{
    {"write", CallKind::write},
    {"read", CallKind::read},
    {"register-write", CallKind::registerWrite},
    {"register-read", CallKind::registerRead},
    {"initialisation", CallKind::initialisation},
    {"release", CallKind::release},
    {"id", CallKind::idLookup},
    {"tree", CallKind::parameterTree},
    {"acquisition", CallKind::acquisition},
    {"status", CallKind::status},
}};

/// The element that a word names; a word that names none stands for one all the same.
template <class Elements, class Name>
const auto& named(const Elements& elements, std::string_view word, Name name) {
    for (const auto& element : elements) {
        if (name(element) == word) {
            return element;
        }
    }
    std::size_t sum = 0;
    for (const char character : word) {
        sum += static_cast<unsigned char>(character);
    }
    return elements[sum % elements.size()];
}

} // namespace

const std::array<CallScript::Operation, 21> CallScript::operations{{
    {"set", &CallScript::set},         {"get", &CallScript::get},         {"describe", &CallScript::describe},
    {"name", &CallScript::name},       {"id", &CallScript::id},           {"xml", &CallScript::xml},
    {"event", &CallScript::event},     {"mask", &CallScript::mask},       {"tree", &CallScript::tree},
    {"save", &CallScript::save},       {"load", &CallScript::load},       {"make", &CallScript::make},
    {"free", &CallScript::free},       {"acquire", &CallScript::acquire}, {"stop", &CallScript::stop},
    {"picture", &CallScript::picture}, {"status", &CallScript::status},   {"shade", &CallScript::shade},
    {"tick", &CallScript::tick},       {"input", &CallScript::input},     {"fail", &CallScript::fail},
}};

CallScript::CallScript() {
    mHandles[0].runtime = mFirst.handle();
    Fg_Struct* owned = mOwned.data();
    for (const unsigned number : {1U, 2U, slaveHandle, emptyHandle}) {
        mHandles[number].runtime = owned++;
    }
}

void CallScript::begin() {
    mHandles[0].applet = std::make_unique<CheckedApplet>(mFirst.handle(), CheckedApplet::Role::master);
    mTablesWritten = 0;
    mCreations = 0;
    mMaybeFault = false;
    mOpenFiles = openFiles();
}

void CallScript::run(std::string_view text) {
    CallLine line(text);
    const Operation& operation =
        named(operations, line.takeWord(), [](const Operation& each) { return each.name; });
    if (operation.run == &CallScript::fail) {
        fail(line);
        return;
    }
    (this->*operation.run)(line);
    hostCalls().stopFailing();
    mMaybeFault = false;
}

void CallScript::end() {
    hostCalls().stopFailing();
    for (Handle& handle : mHandles) {
        if (handle.applet != nullptr) {
            handle.applet->requireKnownValues();
        }
    }
    for (const unsigned number : {1U, 2U, slaveHandle}) {
        if (mHandles[number].applet != nullptr) {
            require(release(mHandles[number]) == error::ok, "an applet is freed");
        }
    }
    mHandles[0].applet.reset();
    mFirst.reset();
    for (unsigned file = 0; file < mSaved.size(); ++file) {
        std::filesystem::remove(configurationFile(file));
        mSaved[file].reset();
    }
    std::filesystem::remove(tableFile(writtenTableFile));
    require(openFiles() == mOpenFiles, "no file stays open");
}

CallScript::Handle& CallScript::takeHandle(CallLine& line) {
    mNumber = line.takeBelow(handleCount);
    return mHandles[mNumber];
}

simulator::Board& CallScript::board() const {
    constexpr unsigned boards = 3;
    return simulator::Board::at(mNumber % boards);
}

void CallScript::tellTheOther() {
    if (mNumber == 0 || mNumber == slaveHandle) {
        const std::unique_ptr<CheckedApplet>& other = mHandles[slaveHandle - mNumber].applet;
        if (other != nullptr && mHandles[slaveHandle].applet != nullptr) {
            other->expectBoardChanges();
        }
    }
}

// ---- parameters

std::string CallScript::takeTableFile(unsigned number, int id) {
    constexpr std::array<unsigned, 4> targets{0, missingTableFile, folderTableFile, writtenTableFile};
    constexpr int mostTables = 2;
    if (id != FG_LUT_SAVE_FILE) {
        return tableFile(number);
    }
    // Writing a table is slow.
    const bool isTooMuch = ++mTablesWritten > mostTables;
    return tableFile(isTooMuch ? 0 : targets[number % targets.size()]);
}

GivenValue CallScript::takeValue(CallLine& line, int id, unsigned dmaIndex) {
    const std::string word(line.takeWord());
    GivenValue value;
    value.isNull = word == "null";
    const bool isUpper = word[0] == '>';
    const bool isLimit = isUpper || word[0] == '<';
    const char* number = word.c_str() + (isLimit ? 1 : 0);
    value.word = static_cast<std::uint32_t>(std::strtoll(number, nullptr, 0));
    value.real = std::strtod(number, nullptr);
    const std::unique_ptr<CheckedApplet>& applet = mHandles[mNumber].applet;
    const RegisterInfo* record = isLimit && applet != nullptr ? applet->record(id, dmaIndex & 1) : nullptr;
    if (record != nullptr && record->format == REG_FORMAT_UINT) {
        value.word += isUpper ? record->u.uiReg.to : record->u.uiReg.from;
    } else if (record != nullptr && record->format == REG_FORMAT_DOUBLE) {
        value.real += isUpper ? record->u.dReg.to : record->u.dReg.from;
    }
    value.text = takeTableFile(value.word, id);
    value.entry.value = value.word;
    return value;
}

void CallScript::set(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const int id = line.takeParameterId();
    const unsigned dmaIndex = line.takeUnsigned();
    GivenValue value = takeValue(line, id, dmaIndex);
    const int type = line.takeIntegerOr(defaultType);
    value.entry.index = line.takeUnsigned();
    if (handle.applet == nullptr) {
        require(Fg_setParameterWithType(handle.runtime, id, &value.real, dmaIndex, type) == error::noHandle,
                "nothing is set without an applet");
        return;
    }
    handle.applet->set(id, dmaIndex, type, value, mMaybeFault);
    tellTheOther();
}

void CallScript::get(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const int id = line.takeParameterId();
    const unsigned dmaIndex = line.takeUnsigned();
    const int type = line.takeIntegerOr(defaultType);
    const std::string_view index = line.takeWord();
    if (handle.applet == nullptr) {
        require(Fg_getParameterWithType(handle.runtime, id, nullptr, dmaIndex, type) == error::noHandle,
                "nothing is read without an applet");
        return;
    }
    handle.applet->get(id, dmaIndex, type, CallLine(index).takeUnsigned(), index == "null", mMaybeFault);
}

void CallScript::describe(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const std::string name(line.takeWord());
    if (handle.applet != nullptr) {
        handle.applet->describe(name.c_str(), line.takeUnsigned());
    }
}

// ---- configuration files

void CallScript::save(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const unsigned file = line.takeBelow(configurationFileCount);
    if (handle.applet == nullptr) {
        require(Fg_saveConfig(handle.runtime, configurationFile(file)) == error::noHandle,
                "nothing is saved without an applet");
        return;
    }
    handle.applet->save(file, mSaved, mMaybeFault);
}

void CallScript::load(CallLine& line) {
    const Handle& handle = takeHandle(line);
    const unsigned file = line.takeBelow(configurationFileCount);
    if (handle.applet == nullptr) {
        require(Fg_loadConfig(handle.runtime, configurationFile(file)) == error::noHandle,
                "nothing is loaded without an applet");
        return;
    }
    handle.applet->load(file, mSaved, mMaybeFault);
    tellTheOther();
}

// ---- handles

void CallScript::make(CallLine& line) {
    mNumber = 1 + line.takeBelow(slaveHandle);
    const bool hasFamilies = line.takeBelow(2) != 0;
    // Creation takes longer than anything else.
    constexpr int mostCreations = 2;
    if (mHandles[mNumber].applet != nullptr || mCreations == mostCreations) {
        return;
    }
    ++mCreations;
    if (hasFamilies) {
        const kavo::test::ScopedEnvironment registers("KAVO_ENABLE_DRA", "1");
        const kavo::test::ScopedEnvironment inspected("KAVO_ENABLE_DQXA", "1");
        makeApplet(mNumber);
    } else {
        makeApplet(mNumber);
    }
    tellTheOther();
}

void CallScript::makeApplet(unsigned number) {
    const bool isSlave = number == slaveHandle;
    if (!isSlave) {
        board().resetAndStepByHand();
    }
    Handle& handle = mHandles[number];
    int error = 1;
    handle.runtime->Master = Std_entry(board().device(), &error, isSlave ? 1 : 0);
    hostCalls().stopFailing();
    require((handle.runtime->Master != nullptr) == (error == error::ok), "creation tells how it went");
    require(error <= 0 && (mMaybeFault || error == error::ok), "an applet is made");
    if (error == error::ok && mMaybeFault) {
        // It works as far as the failure lets it.
        require(Fg_FreeGrabber(handle.runtime) == error::ok, "an applet that lacks something is freed");
    } else if (error == error::ok) {
        const auto role = isSlave ? CheckedApplet::Role::slave : CheckedApplet::Role::master;
        handle.applet = std::make_unique<CheckedApplet>(handle.runtime, role);
    }
}

int CallScript::release(Handle& handle) {
    handle.applet.reset();
    const int result = Fg_FreeGrabber(handle.runtime);
    require(handle.runtime->Master == nullptr, "a handle that was freed has no applet");
    require(Fg_getLastErrorNumber(handle.runtime) == error::noHandle, "a handle that was freed is none");
    return result;
}

void CallScript::free(CallLine& line) {
    Handle& handle = takeHandle(line);
    if (mNumber == 0) {
        return;
    }
    if (handle.applet == nullptr) {
        require(Fg_FreeGrabber(handle.runtime) == error::noHandle, "what is no handle is not freed");
        return;
    }
    const int result = release(handle);
    require(result == error::ok || mMaybeFault, "an applet is freed");
}

// ---- the board

void CallScript::tick(CallLine& line) {
    constexpr unsigned mostTicks = 1U << 18U;
    takeHandle(line);
    board().clock().advance(line.takeBelow(mostTicks));
    // Whatever was due happens now.
    static_cast<void>(board().exposures(0));
}

void CallScript::input(CallLine& line) {
    takeHandle(line);
    const unsigned number = line.takeBelow(simulator::Board::numberOfInputs);
    board().driveInput(number, line.takeBelow(2) != 0);
}

void CallScript::fail(CallLine& line) {
    const auto& kind = named(failingKinds, line.takeWord(), [](const auto& each) { return each.first; });
    constexpr unsigned mostCalls = 1000;
    const unsigned nth = 1 + line.takeBelow(mostCalls);
    constexpr int lowestCode = 10000;
    hostCalls().failOnce(kind.second, nth, -1 - static_cast<int>(line.takeBelow(lowestCode)));
    mMaybeFault = true;
}

} // namespace kavo::fuzz
