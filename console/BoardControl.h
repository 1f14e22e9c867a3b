#pragma once

#include "console/HostFunctions.h"
#include "platform/BoardControl.h"

#include <vector>

namespace orbctl {

/// The control of a board in software, where the runtime has one.
class BoardControl {
  public:
    /// \throws Failure (notFound) where the runtime offers no such control
    BoardControl(const HostLibrary& runtime, unsigned board);

    static bool isOfferedBy(const HostLibrary& runtime);

    /// \throws Failure (refused), as everything below
    void stepByHand(bool byHand) const;
    void advance(std::uint64_t ticks) const;
    std::uint64_t time() const;
    void playInput(unsigned input, std::uint64_t first, std::uint64_t high, std::uint64_t low,
                   std::uint64_t count) const;
    void startTrace(unsigned capacity) const;
    void stopTrace() const;
    /// Levels at the beginning, then the samples.
    std::vector<BoardSignalSample> readTrace() const;

  private:
    unsigned mBoard;
    HostFunction<decltype(Board_StepByHand)> mStepByHand{"Board_StepByHand"};
    HostFunction<decltype(Board_Advance)> mAdvance{"Board_Advance"};
    HostFunction<decltype(Board_GetTime)> mGetTime{"Board_GetTime"};
    HostFunction<decltype(Board_PlayInput)> mPlayInput{"Board_PlayInput"};
    HostFunction<decltype(Board_StartTrace)> mStartTrace{"Board_StartTrace"};
    HostFunction<decltype(Board_StopTrace)> mStopTrace{"Board_StopTrace"};
    HostFunction<decltype(Board_ReadTrace)> mReadTrace{"Board_ReadTrace"};
};

/// While one lives, the time of the board stands still but for advance().
class SteppedTime {
  public:
    explicit SteppedTime(const BoardControl& control);
    ~SteppedTime();
    SteppedTime(const SteppedTime&) = delete;
    SteppedTime& operator=(const SteppedTime&) = delete;

  private:
    const BoardControl& mControl;
};

} // namespace orbctl
