#include "simulator/HostCalls.h"

#include "simulator/runtime/BoundSymbols.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <mutex>
#include <stdexcept>

volatile unsigned char simulatorLackingSymbols[simulator::numberOfBoundSymbols] = {};

namespace simulator {
namespace {

#define SIMULATOR_SYMBOL_NAME(name) #name,
const char* const boundSymbolNames[] = {SIMULATOR_BOUND_SYMBOLS(SIMULATOR_SYMBOL_NAME)};
#undef SIMULATOR_SYMBOL_NAME

struct Failure {
    CallKind kind;
    unsigned callsUntil;
    int code;
    std::string name;
    bool forEver;

    bool concerns(CallKind callKind, const std::string& callName) const {
        return kind == callKind && (name.empty() || name == callName);
    }
};

} // namespace

struct HostCalls::Private {
    mutable std::mutex lock;
    std::vector<Call> calls;
    std::vector<Failure> failures;
    std::atomic<bool> recording{false};
    std::atomic<bool> listening{false};

    void listenIfNeeded() { listening = recording || !failures.empty(); }
};

HostCalls& hostCalls() {
    static HostCalls calls;
    return calls;
}

HostCalls::HostCalls() : d(std::make_unique<Private>()) {}
HostCalls::~HostCalls() = default;

void HostCalls::record(bool on) {
    const std::lock_guard<std::mutex> guard(d->lock);
    d->recording = on;
    d->listenIfNeeded();
}

bool HostCalls::isRecording() const { return d->recording; }

void HostCalls::clear() {
    const std::lock_guard<std::mutex> guard(d->lock);
    d->calls.clear();
}

std::vector<Call> HostCalls::calls() const {
    const std::lock_guard<std::mutex> guard(d->lock);
    return d->calls;
}

std::vector<Call> HostCalls::calls(CallKind kind) const {
    const std::lock_guard<std::mutex> guard(d->lock);
    std::vector<Call> chosen;
    std::copy_if(d->calls.begin(), d->calls.end(), std::back_inserter(chosen),
                 [kind](const Call& call) { return call.kind == kind; });
    return chosen;
}

void HostCalls::failOnce(CallKind kind, unsigned nth, int code, const std::string& name) {
    const std::lock_guard<std::mutex> guard(d->lock);
    d->failures.push_back({kind, std::max(nth, 1u), code, name, false});
    d->listenIfNeeded();
}

void HostCalls::failFrom(CallKind kind, unsigned nth, int code, const std::string& name) {
    const std::lock_guard<std::mutex> guard(d->lock);
    d->failures.push_back({kind, std::max(nth, 1u), code, name, true});
    d->listenIfNeeded();
}

void HostCalls::stopFailing() {
    const std::lock_guard<std::mutex> guard(d->lock);
    d->failures.clear();
    d->listenIfNeeded();
}

std::size_t HostCalls::pendingFailures() const {
    const std::lock_guard<std::mutex> guard(d->lock);
    const auto isPending = [](const Failure& failure) { return !failure.forEver; };
    return static_cast<std::size_t>(std::count_if(d->failures.begin(), d->failures.end(), isPending));
}

void HostCalls::lackSymbol(const std::string& name) {
    const auto* found = std::find(std::begin(boundSymbolNames), std::end(boundSymbolNames), name);
    if (found == std::end(boundSymbolNames)) {
        throw std::invalid_argument("libgrabcore5.so has no symbol " + name + " that an applet binds");
    }
    simulatorLackingSymbols[found - std::begin(boundSymbolNames)] = 1;
}

void HostCalls::provideAllSymbols() {
    for (volatile unsigned char& lacking : simulatorLackingSymbols) {
        lacking = 0;
    }
}

void HostCalls::reset() {
    record(false);
    clear();
    stopFailing();
    provideAllSymbols();
}

bool HostCalls::isListening() const { return d->listening.load(std::memory_order_relaxed); }

bool HostCalls::shallFail(CallKind kind, const std::string& name, int& code) {
    const std::lock_guard<std::mutex> guard(d->lock);
    bool fails = false;
    for (Failure& failure : d->failures) {
        if (!failure.concerns(kind, name) || (failure.callsUntil > 0 && --failure.callsUntil > 0)) {
            continue;
        }
        code = fails ? code : failure.code;
        fails = true;
    }
    const auto isSpent = [](const Failure& failure) { return failure.callsUntil == 0 && !failure.forEver; };
    d->failures.erase(std::remove_if(d->failures.begin(), d->failures.end(), isSpent), d->failures.end());
    d->listenIfNeeded();
    return fails;
}

void HostCalls::note(Call call) {
    const std::lock_guard<std::mutex> guard(d->lock);
    if (d->recording) {
        d->calls.push_back(std::move(call));
    }
}

} // namespace simulator
