#include "console/TriggerDiagram.h"

#include "console/Duration.h"
#include "console/NumberText.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

namespace orbctl {

namespace {

struct Row {
    BoardSignalKind kind;
    const char* name;
    SignalShape shape;
    unsigned count;    ///< signals of this kind, numbered where there is more than one
    bool onlyIfUsed;   ///< left out where nothing happens
    bool isOfTheBoard; ///< the same for all ports
};

constexpr Row rows[] = {
    {boardSignalInput, "input", SignalShape::level, 8, true, true},
    {boardSignalDebouncedInput, "debounced", SignalShape::level, 8, true, true},
    {boardSignalQueueFillLevel, "queue", SignalShape::count, 1, false, false},
    {boardSignalGeneratorPulse, "generator pulse", SignalShape::instant, 1, false, false},
    {boardSignalPulseForm, "pulse form", SignalShape::level, 4, false, false},
    {boardSignalOutput, "output", SignalShape::level, 4, false, false},
    {boardSignalActionCommand, "action command", SignalShape::instant, 1, false, false},
    {boardSignalExposure, "exposure", SignalShape::level, 1, false, false},
    {boardSignalFrameStart, "frame start", SignalShape::instant, 1, false, false},
    {boardSignalFrameEnd, "frame end", SignalShape::instant, 1, false, false},
};

bool isInstant(std::int32_t kind) {
    return std::any_of(std::begin(rows), std::end(rows),
                       [&](const Row& row) { return row.kind == kind && row.shape == SignalShape::instant; });
}

using SignalKey = std::tuple<std::int32_t, unsigned, unsigned>;
using Recording = std::map<SignalKey, DiagramSignal>;

/// A recording begins with the levels of its first tick: they are where a signal starts, not changes.
Recording sorted(const std::vector<BoardSignalSample>& samples, const DiagramRequest& request) {
    Recording recording;
    for (const BoardSignalSample& sample : samples) {
        const auto [place, isFirst] = recording.try_emplace({sample.kind, sample.port, sample.index});
        const bool isStart = isFirst && sample.tick == request.begin && !isInstant(sample.kind);
        if (isStart || sample.tick < request.begin)
            place->second.initialValue = sample.value;
        else if (sample.tick <= request.end)
            place->second.changes.push_back({sample.tick, sample.value});
    }
    return recording;
}

/// Levels that are told again are no changes.
void dropRepetitions(DiagramSignal& signal) {
    if (signal.shape == SignalShape::instant)
        return;
    std::uint32_t value = signal.initialValue;
    const auto repeats = [&value](const DiagramSignal::Change& change) {
        return std::exchange(value, change.value) == change.value;
    };
    signal.changes.erase(std::remove_if(signal.changes.begin(), signal.changes.end(), repeats),
                         signal.changes.end());
}

std::string numbered(const Row& row, unsigned index) {
    return row.count == 1 ? row.name : row.name + std::string(" ") + textOf(std::uint64_t{index});
}

void addRow(TriggerDiagram& diagram, const Recording& recording, const Row& row, unsigned port,
            const std::string& suffix) {
    for (unsigned index = 0; index < row.count; ++index) {
        const auto found = recording.find({row.kind, port, index});
        DiagramSignal signal = found == recording.end() ? DiagramSignal{} : found->second;
        signal.kind = row.kind;
        signal.shape = row.shape;
        signal.name = numbered(row, index) + suffix;
        dropRepetitions(signal);
        if (!row.onlyIfUsed || !signal.changes.empty())
            diagram.signals.push_back(std::move(signal));
    }
}

} // namespace

std::uint32_t DiagramSignal::largestValue() const {
    std::uint32_t largest = initialValue;
    for (const Change& change : changes)
        largest = std::max(largest, change.value);
    return largest;
}

TriggerDiagram diagramOf(const std::vector<BoardSignalSample>& samples, const DiagramRequest& request) {
    TriggerDiagram diagram{request.title, request.begin, request.end, {}};
    const Recording recording = sorted(samples, request);
    for (const Row& row : rows)
        if (row.isOfTheBoard)
            addRow(diagram, recording, row, 0, "");
    for (const unsigned port : request.ports) {
        const std::string suffix = request.ports.size() < 2 ? "" : ", port " + textOf(std::uint64_t{port});
        for (const Row& row : rows)
            if (!row.isOfTheBoard)
                addRow(diagram, recording, row, port, suffix);
    }
    return diagram;
}

double markDistance(const TriggerDiagram& diagram, unsigned marks) {
    const double seconds = static_cast<double>(diagram.end - diagram.begin) / ticksPerSecond;
    const double least = seconds / marks;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * 0.999999)
            return factor * power * ticksPerSecond;
    return 10 * power * ticksPerSecond;
}

} // namespace orbctl
