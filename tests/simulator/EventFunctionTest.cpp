#include "platform/BoardControl.h"
#include "platform/ErrorCodes.h"
#include "tests/simulator/OpenDesign.h"

#include <array>
#include <gtest/gtest.h>

namespace simulator::tests {

namespace {

constexpr unsigned boardNumber = 3;

/// A board without events, and the names of those that its design has.
class EventFunction : public testing::Test {
  protected:
    EventFunction() { mOpen.board().takeEvents(); }

    std::string name(std::size_t place) const { return mOpen.board().designEvents().at(place); }

    OpenDesign mOpen{boardNumber};
    std::array<BoardEvent, 4> mEvents{};
};

} // namespace

TEST_F(EventFunction, GivesTimeAndMaskOldestFirst) {
    mOpen.board().raiseEvent(name(5));
    mOpen.board().clock().advance(1000);
    mOpen.board().raiseEvent(name(0));
    ASSERT_EQ(Board_TakeEvents(boardNumber, mEvents.data(), 4), 2);
    EXPECT_EQ(mEvents[0].mask, 1U << 5);
    EXPECT_EQ(mEvents[1].mask, 1U);
    EXPECT_EQ(mEvents[1].tick - mEvents[0].tick, 1000U);
    EXPECT_EQ(Board_TakeEvents(boardNumber, mEvents.data(), 4), 0) << "each event is taken once";
}

TEST_F(EventFunction, LeavesWhatDoesNotFitForTheNextCall) {
    for (std::size_t place = 0; place < 5; ++place)
        mOpen.board().raiseEvent(name(place));
    EXPECT_EQ(Board_TakeEvents(boardNumber, nullptr, 0), 0);
    ASSERT_EQ(Board_TakeEvents(boardNumber, mEvents.data(), 4), 4);
    EXPECT_EQ(mEvents[3].mask, 1U << 3);
    ASSERT_EQ(Board_TakeEvents(boardNumber, mEvents.data(), 4), 1);
    EXPECT_EQ(mEvents[0].mask, 1U << 4);
}

TEST_F(EventFunction, GivesNoMaskToAnEventThatTheDesignDoesNotHave) {
    mOpen.board().raiseEvent("Device1_Unknown");
    ASSERT_EQ(Board_TakeEvents(boardNumber, mEvents.data(), 4), 1);
    EXPECT_EQ(mEvents[0].mask, 0U);
}

TEST_F(EventFunction, RefusesWhatCannotBe) {
    EXPECT_EQ(Board_TakeEvents(boardNumber, nullptr, 1), kavo::error::invalidParameter);
    EXPECT_LT(Board_TakeEvents(16, mEvents.data(), 4), 0);
}

} // namespace simulator::tests
