#include "grabber_basis/Fg_Error.h"

#include <gtest/gtest.h>

namespace {

TEST(FgErrorTest, StartsWithSuccess) { EXPECT_EQ(Fg_Error().getErrorNumberBuffer(), 0); }

TEST(FgErrorTest, StoresTheLastCodeAndReturnsIt) {
    Fg_Error error;
    EXPECT_EQ(error.setErr(-6000), -6000);
    EXPECT_EQ(error.getErrorNumberBuffer(), -6000);
    EXPECT_EQ(error.setErr(0), 0);
    EXPECT_EQ(error.getErrorNumberBuffer(), 0);
}

TEST(FgErrorTest, RefusesASecondLevelAndKeepsTheStoredCode) {
    Fg_Error error;
    error.setErr(-2070);
    EXPECT_EQ(error.setErrLevel2(-500, "text"), -2130);
    EXPECT_EQ(error.getErrorNumberBuffer(), -2070);
}

} // namespace
