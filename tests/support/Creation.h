#pragma once

#include "applet/AppletQel.h"
#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/design/DesignImage.h"
#include "simulator/HostCalls.h"

#include <gtest/gtest.h>

namespace kavo::test {

/// One call of Std_entry on board 0, under whatever conditions a test has made. The applet is freed at the
/// end.
class Creation {
  public:
    explicit Creation(int slave = 0) {
        mHandle.Master = Std_entry(simulator::Board::at(0).device(), &mError, slave);
    }
    ~Creation() {
        if (mHandle.Master != nullptr) {
            Fg_FreeGrabber(&mHandle);
        }
    }
    Creation(const Creation&) = delete;
    Creation& operator=(const Creation&) = delete;

    [[nodiscard]] bool hasSucceeded() const { return mHandle.Master != nullptr; }
    [[nodiscard]] int error() const { return mError; }
    [[nodiscard]] Fg_Struct* handle() { return &mHandle; }

  private:
    static constexpr int untouched = 12345;

    int mError = untouched;
    Fg_Struct mHandle{nullptr};
};

/// The design that the applet carries, to be changed by a test.
inline simulator::DesignImage embeddedDesign() {
    return simulator::DesignImage::decode(rawQelData, rawQelDataSize).value();
}

/// A fixture that finds the board switched on anew and the host libraries without failures, and leaves them
/// so.
class OnFreshBoard : public testing::Test {
  protected:
    OnFreshBoard() { freshen(); }
    ~OnFreshBoard() override { freshen(); }

    [[nodiscard]] static simulator::Board& board() { return simulator::Board::at(0); }

  private:
    static void freshen() {
        simulator::hostCalls().reset();
        board().resetAndStepByHand();
    }
};

} // namespace kavo::test
