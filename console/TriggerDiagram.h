#pragma once

#include "platform/BoardControl.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orbctl {

/// How a signal is drawn.
enum class SignalShape {
    level,   ///< low or high
    instant, ///< pulses without length
    count    ///< a number, such as the fill level of the queue
};

/// One row of a timing diagram.
struct DiagramSignal {
    struct Change {
        std::uint64_t tick = 0;
        std::uint32_t value = 0;
    };

    std::string name;
    BoardSignalKind kind = boardSignalInput;
    SignalShape shape = SignalShape::level;
    std::uint32_t initialValue = 0;
    std::vector<Change> changes; ///< in the order of time

    std::uint32_t largestValue() const;
};

/// Trigger signals over time, from the input pins to the exposures.
struct TriggerDiagram {
    std::string title;
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::vector<DiagramSignal> signals;
};

/// What is drawn of a recording.
struct DiagramRequest {
    std::string title;
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::vector<unsigned> ports;
};

/// Sorts a recording into rows: the pins on which something happened, then for each port the queue, the
/// generator, the pulse form generators, the outputs, the camera's action commands, exposures and pictures.
TriggerDiagram diagramOf(const std::vector<BoardSignalSample>& samples, const DiagramRequest& request);

/// Distance of the time marks below a diagram: 1, 2 or 5 of a power of ten of a second, in ticks, for at most
/// \p marks.
double markDistance(const TriggerDiagram& diagram, unsigned marks);

} // namespace orbctl
