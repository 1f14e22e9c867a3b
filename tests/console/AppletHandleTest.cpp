#include "console/AppletHandle.h"

#include <gtest/gtest.h>

namespace orbctl {

namespace {

std::string openingFailure(const std::string& runtime) {
    try {
        const HostLibrary library = HostLibrary::open(runtime, "runtime");
        const AppletHandle applet(library, "/nowhere/libApplet.so", 0, false);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.status(), ExitStatus::notFound);
        return failure.what();
    }
    return "opened";
}

} // namespace

TEST(AppletHandle, NamesARuntimeThatCannotBeOpened) {
    EXPECT_EQ(
        openingFailure("/nowhere/libgrabcore5.so").rfind("the runtime /nowhere/libgrabcore5.so cannot", 0),
        0U);
}

TEST(AppletHandle, NamesTheFunctionThatARuntimeLacks) {
    EXPECT_EQ(openingFailure("libm.so.6"),
              "neither the runtime nor the applet has the function Fg_OpenBoard");
}

} // namespace orbctl
