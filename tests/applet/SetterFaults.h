#pragma once

#include "tests/support/AppletOnBoard.h"

#include <string>

/// A code of the runtime that the applet never gives itself.
constexpr int runtimeFailure = -4711;

inline RecordedWrite processWrite(int port, const std::string& name, std::uint32_t value) {
    return {AppletOnBoard::process(port, name), value, static_cast<unsigned>(port), 2};
}

inline RecordedWrite triggerWrite(int port, const std::string& name, std::uint32_t value) {
    return {AppletOnBoard::trigger(port, name), value, static_cast<unsigned>(port), 2};
}

inline unsigned valueOf(AppletOnBoard& applet, int id, int port, unsigned) { return applet.get(id, port); }
inline double valueOf(AppletOnBoard& applet, int id, int port, double) { return applet.getReal(id, port); }

/// Sets a value that takes the given number of writes, with each of them failing in turn: the code comes
/// through, no later write follows, the parameter keeps its value, and the same set succeeds afterwards.
template <class Value>
void expectEachFailedWriteToBeUndone(AppletOnBoard& applet, int id, int port, Value before, Value after,
                                     unsigned writeCount) {
    for (unsigned nth = 1; nth <= writeCount; ++nth) {
        SCOPED_TRACE("parameter " + std::to_string(id) + ", write " + std::to_string(nth) + " fails");
        ASSERT_EQ(applet.set(id, before, port), 0);
        AppletOnBoard::forgetCalls();
        AppletOnBoard::failWrite(nth, runtimeFailure);
        EXPECT_EQ(applet.set(id, after, port), runtimeFailure);
        EXPECT_EQ(applet.lastError(), runtimeFailure);
        EXPECT_EQ(AppletOnBoard::writes().size(), nth);
        EXPECT_EQ(valueOf(applet, id, port, after), before);
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(id, after, port), 0);
        EXPECT_EQ(AppletOnBoard::writes().size(), writeCount);
        EXPECT_EQ(valueOf(applet, id, port, after), after);
    }
}

/// The integer that a call throws, or 0.
template <class Call>
int thrownBy(Call call) {
    try {
        call();
    } catch (int code) {
        return code;
    }
    return 0;
}
