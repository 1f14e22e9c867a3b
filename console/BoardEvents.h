#pragma once

#include "console/HostFunctions.h"
#include "platform/BoardControl.h"

#include <vector>

namespace orbctl {

/// The events that a board in software raises.
class BoardEvents {
  public:
    /// Forgets the events that were raised before.
    /// \throws Failure (notFound) where the runtime does not tell the events of its board
    BoardEvents(const HostLibrary& runtime, unsigned board);

    /// The events since the last call, oldest first. \throws Failure (refused)
    std::vector<BoardEvent> take() const;

  private:
    unsigned mBoard;
    HostFunction<decltype(Board_TakeEvents)> mTakeEvents{"Board_TakeEvents"};
};

} // namespace orbctl
