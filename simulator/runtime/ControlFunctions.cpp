#include "platform/BoardControl.h"
#include "simulator/Board.h"
#include "simulator/RuntimeCodes.h"

#include <algorithm>
#include <map>
#include <stdexcept>

/// The control API for programs that know the board through its runtime library only.

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

namespace code = simulator::code;

/// Calls something on a board of a number; its exceptions become codes.
template <typename Work>
int withBoard(unsigned number, Work work) {
    if (number >= simulator::Board::numberOfBoards) {
        return code::noBoard;
    }
    try {
        return work(simulator::Board::at(number));
    } catch (const std::logic_error&) {
        return code::invalidParameter;
    }
}

BoardSignalKind kindOf(simulator::TriggerSignalKind kind) {
    switch (kind) {
    case simulator::TriggerSignalKind::Input:
        return boardSignalInput;
    case simulator::TriggerSignalKind::DebouncedInput:
        return boardSignalDebouncedInput;
    case simulator::TriggerSignalKind::QueueFillLevel:
        return boardSignalQueueFillLevel;
    case simulator::TriggerSignalKind::GeneratorPulse:
        return boardSignalGeneratorPulse;
    case simulator::TriggerSignalKind::PulseForm:
        return boardSignalPulseForm;
    case simulator::TriggerSignalKind::Output:
        return boardSignalOutput;
    case simulator::TriggerSignalKind::ActionCommand:
        return boardSignalActionCommand;
    case simulator::TriggerSignalKind::FrameStart:
        return boardSignalFrameStart;
    case simulator::TriggerSignalKind::FrameEnd:
        return boardSignalFrameEnd;
    case simulator::TriggerSignalKind::Exposure:
        break;
    }
    return boardSignalExposure;
}

BoardSignalSample sampleOf(const simulator::TriggerSignal& signal, std::uint64_t tick, std::uint32_t value) {
    return {tick, kindOf(signal.kind), signal.port, signal.index, value};
}

std::vector<BoardSignalSample> samplesOf(const simulator::TriggerTrace& trace) {
    std::vector<BoardSignalSample> samples;
    samples.reserve(trace.levelsBefore().size() + trace.samples().size());
    for (const simulator::TriggerTrace::Level& level : trace.levelsBefore()) {
        samples.push_back(sampleOf(level.signal, trace.begin(), level.value));
    }
    for (const simulator::TriggerTrace::Sample& sample : trace.samples()) {
        samples.push_back(sampleOf(sample.signal, sample.tick, sample.value));
    }
    return samples;
}

/// The mask that an applet gives each event of a design: the bit of the first place where the name stands.
std::map<std::string, std::uint64_t> masksOf(const std::vector<std::string>& designEvents) {
    constexpr std::size_t bitsOfMask = 64;
    std::map<std::string, std::uint64_t> masks;
    for (std::size_t place = 0; place < std::min(designEvents.size(), bitsOfMask); ++place) {
        masks.emplace(designEvents[place], std::uint64_t{1} << place);
    }
    return masks;
}

} // namespace

EXPORTED int Board_StepByHand(unsigned board, int byHand) {
    return withBoard(board, [&](simulator::Board& found) {
        byHand != 0 ? found.clock().stepByHand() : found.clock().useWallClock();
        return code::ok;
    });
}

EXPORTED int Board_Advance(unsigned board, std::uint64_t ticks) {
    return withBoard(board, [&](simulator::Board& found) {
        found.clock().advance(ticks);
        return code::ok;
    });
}

EXPORTED int Board_GetTime(unsigned board, std::uint64_t* tick) {
    return withBoard(board, [&](simulator::Board& found) {
        if (tick == nullptr) {
            return code::invalidParameter;
        }
        *tick = found.clock().now();
        return code::ok;
    });
}

EXPORTED int Board_PlayInput(unsigned board, unsigned input, std::uint64_t first, std::uint64_t high,
                             std::uint64_t low, std::uint64_t count) {
    return withBoard(board, [&](simulator::Board& found) {
        found.playInput(input, {first, high, low, count});
        return code::ok;
    });
}

EXPORTED int Board_StartTrace(unsigned board, unsigned capacity) {
    return withBoard(board, [&](simulator::Board& found) {
        found.startTrace(capacity);
        return code::ok;
    });
}

EXPORTED int Board_StopTrace(unsigned board) {
    return withBoard(board, [](simulator::Board& found) {
        found.stopTrace();
        return code::ok;
    });
}

EXPORTED int Board_ReadTrace(unsigned board, BoardSignalSample* samples, unsigned capacity,
                             std::uint64_t* dropped) {
    return withBoard(board, [&](simulator::Board& found) {
        const simulator::TriggerTrace trace = found.trace();
        const std::vector<BoardSignalSample> all = samplesOf(trace);
        if (samples == nullptr && capacity > 0) {
            return code::invalidParameter;
        }
        std::copy_n(all.begin(), std::min<std::size_t>(capacity, all.size()), samples);
        if (dropped != nullptr) {
            *dropped = trace.dropped();
        }
        return static_cast<int>(all.size());
    });
}

EXPORTED int Board_TakeEvents(unsigned board, BoardEvent* events, unsigned capacity) {
    return withBoard(board, [&](simulator::Board& found) {
        if (events == nullptr && capacity > 0) {
            return code::invalidParameter;
        }
        const std::map<std::string, std::uint64_t> masks = masksOf(found.designEvents());
        const std::vector<simulator::RaisedEvent> taken = found.takeEvents(capacity);
        std::transform(taken.begin(), taken.end(), events, [&](const simulator::RaisedEvent& event) {
            const auto mask = masks.find(event.name);
            return BoardEvent{event.tick, mask == masks.end() ? 0 : mask->second};
        });
        return static_cast<int>(taken.size());
    });
}
