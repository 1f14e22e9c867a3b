#pragma once

#include "applet/AppletWrapper.h"
#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"

#include <vector>

namespace kavo::fuzz {

/// An applet on a board of its own, stepped by hand. It is made once and brought back to its start state for
/// every input, which is far quicker than making it anew.
class LiveApplet {
  public:
    explicit LiveApplet(unsigned boardNumber);
    ~LiveApplet();
    LiveApplet(const LiveApplet&) = delete;
    LiveApplet& operator=(const LiveApplet&) = delete;

    Fg_Struct* handle() { return &mHandle; }
    simulator::Board& board() { return mBoard; }

    /// The state after creation: the board's, the values that the applet keeps and the limits that it
    /// describes. Host calls do not fail any more.
    void reset();

  private:
    struct Limits {
        RegisterInfo* record;
        RegisterInfo atStart;
    };

    FgQxWrapperImpl& wrapper();
    void remember();
    void writeAgain(const simulator::Call& call);
    std::vector<std::uint64_t> boardValues();

    simulator::Board& mBoard;
    Fg_Struct mHandle{nullptr};
    std::vector<simulator::Call> mWrites; ///< those of the creation
    StandardParameterCaches mValues;
    std::vector<Limits> mLimits;
};

} // namespace kavo::fuzz
