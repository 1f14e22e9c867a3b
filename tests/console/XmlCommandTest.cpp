#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

TEST(XmlCommand, WritesTheDescriptionOfAPort) {
    const ProgramResult result = orbctl({"xml"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(result.output.rfind("<?xml version=\"1.0\"", 0), 0U);
    EXPECT_NE(result.output.find("ModelName=\"Orbelline\""), std::string::npos);
    EXPECT_NE(result.output.find("</RegisterDescription>"), std::string::npos);
    EXPECT_EQ(result.output.find('\0'), std::string::npos);
}

TEST(XmlCommand, WritesTheSameIntoAFile) {
    const kavo::test::TemporaryFolder folder;
    const std::string file = folder.path("port1.xml");
    const ProgramResult result = orbctl({"xml", "--port", "1", "-o", file});
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(kavo::test::fileContent(file), orbctl({"xml", "-p", "1"}).output);
    EXPECT_NE(kavo::test::fileContent(file), orbctl({"xml", "-p", "0"}).output);
}

TEST(XmlCommand, RefusesInWords) {
    const ProgramResult both = orbctl({"xml", "--port", "both"});
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(both.messages, "orbctl: an XML document describes one port; give --port 0 or --port 1\n");
    const ProgramResult nowhere = orbctl({"xml", "-o", "/nowhere/a.xml"});
    EXPECT_EQ(nowhere.status, 3);
    EXPECT_EQ(nowhere.messages, "orbctl: /nowhere/a.xml cannot be written\n");
}

} // namespace orbctl::test
