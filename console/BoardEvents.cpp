#include "console/BoardEvents.h"

#include "console/ErrorText.h"

namespace orbctl {

BoardEvents::BoardEvents(const HostLibrary& runtime, unsigned board) : mBoard(board) {
    mTakeEvents.bind(runtime);
    if (!mTakeEvents.isBound())
        throw Failure(ExitStatus::notFound, "the runtime " + runtime.file() +
                                                " does not tell the events of its board: only a board in "
                                                "software does");
    take();
}

std::vector<BoardEvent> BoardEvents::take() const {
    constexpr unsigned atOnce = 1024;
    std::vector<BoardEvent> events;
    int taken = 0;
    do {
        const std::size_t before = events.size();
        events.resize(before + atOnce);
        taken = mTakeEvents(mBoard, events.data() + before, atOnce);
        if (taken < 0)
            throw Failure(ExitStatus::refused, "the board does not tell its events: " + withCode(taken));
        events.resize(before + static_cast<std::size_t>(taken));
    } while (taken == static_cast<int>(atOnce));
    return events;
}

} // namespace orbctl
