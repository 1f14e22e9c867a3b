// Every change of trigger mode and trigger state: what it writes, and what it leaves when an access fails.

#include "tests/applet/TriggerChange.h"

namespace {

class TriggerChangeTest : public testing::TestWithParam<TriggerChange> {
  protected:
    TriggerChangeTest() { applyRecognizableSettings(applet, change.port); }

    void prepare() {
        bringTo(applet, change.port, change.oldMode, change.oldState);
        markAccessFlags(applet, change.port);
    }

    void expectPair(unsigned mode, unsigned state) {
        EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, change.port), mode);
        EXPECT_EQ(applet.get(FG_TRIGGERSTATE, change.port), state);
    }

    const TriggerChange change = GetParam();
    AppletOnBoard applet;
};
using FailingTriggerChangeTest = TriggerChangeTest;

const auto byName = [](const auto& suiteInfo) { return nameOf(suiteInfo.param); };
INSTANTIATE_TEST_SUITE_P(Changes, TriggerChangeTest, testing::ValuesIn(allTriggerChanges()), byName);
INSTANTIATE_TEST_SUITE_P(Changes, FailingTriggerChangeTest, testing::ValuesIn(writingTriggerChanges()),
                         byName);

TEST_P(TriggerChangeTest, TakesItsStepsInOrderAndRenewsTheAccessRights) {
    prepare();
    const int otherPort = 1 - change.port;
    const auto flagsOfOther = accessFlagsOf(applet, otherPort);
    AppletOnBoard::forgetCalls();
    ASSERT_EQ(make(applet, change), 0);
    EXPECT_EQ(recordedAccesses(), accessesOf(change.port, stepsOf(change)));
    expectPair(change.newMode, change.newState);
    EXPECT_EQ(accessFlagsOf(applet, change.port),
              accessFlagsAfterChangeTo(applet, change.port, change.newMode));
    EXPECT_EQ(accessFlagsOf(applet, otherPort), flagsOfOther);
    EXPECT_EQ(applet.get(FG_AREATRIGGERMODE, otherPort), generatorMode);
    EXPECT_EQ(applet.get(FG_TRIGGERSTATE, otherPort), syncStop);
}

TEST_P(FailingTriggerChangeTest, StopsAtTheFailedAccessAndKeepsTheOldPair) {
    expectEachFailureIsPassedOn(
        applet, accessesOf(change.port, stepsOf(change)), [this] { prepare(); },
        [this] { return make(applet, change); },
        [this] {
            expectPair(change.oldMode, change.oldState);
            EXPECT_DOUBLE_EQ(applet.getReal(FG_TRIGGER_FRAMESPERSECOND, change.port), 100.0);
            for (const auto& [id, flags] : accessFlagsOf(applet, change.port)) {
                EXPECT_EQ(flags, markedAccess) << "parameter " << id;
            }
        });
}

} // namespace
