#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

TEST(InfoCommand, ShowsIdentitySelectorsAndConstants) {
    const ProgramResult result = orbctl({"info"});
    EXPECT_EQ(result.status, 0) << result.messages;
    for (const char* const expected : {"  name         Orbelline\n", "  version      2.4.2.2\n",
                                       "  build        2.4.2.2.20170406.045837\n", "  design type  3652\n",
                                       "  1041          0       3164 bytes\n", "  4704  port 1  8\n",
                                       "  NOT_INPUT_BYPASS             11\n"})
        EXPECT_NE(result.output.find(expected), std::string::npos) << expected << "in\n" << result.output;
}

TEST(InfoCommand, NeedsNoBoard) { EXPECT_EQ(orbctl({"--board", "4000", "info"}).status, 0); }

TEST(InfoCommand, WritesTheIcon) {
    const kavo::test::TemporaryFolder folder;
    EXPECT_EQ(orbctl({"info", "--icon", folder.path("icon.png")}).status, 0);
    const std::string icon = kavo::test::fileContent(folder.path("icon.png"));
    EXPECT_EQ(icon.size(), 3164U);
    EXPECT_EQ(icon.substr(1, 3), "PNG");
    EXPECT_EQ(orbctl({"info", "--icon", "/nowhere/icon.png"}).status, 3);
}

TEST(InfoCommand, WritesTheDesignImage) {
    const kavo::test::TemporaryFolder folder;
    EXPECT_EQ(orbctl({"info", "--design", folder.path("design.qel")}).status, 0);
    EXPECT_EQ(kavo::test::fileContent(folder.path("design.qel")),
              kavo::test::fileContent(ORBELLINE_DESIGN_IMAGE_FILE));
}

} // namespace orbctl::test
