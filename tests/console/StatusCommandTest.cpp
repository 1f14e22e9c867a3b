#include "tests/console/ProgramRun.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orbctl::test {

TEST(StatusCommand, NamesTheBitsOfAPort) {
    const ProgramResult result = orbctl({"status", "--port", "1"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_EQ(result.output, "Port 1\n"
                             "  Fill level  0 %\n"
                             "  Overflow    no\n"
                             "  Camera      connected\n"
                             "  Extended    0x07\n"
                             "    bit 0     1  camera connected\n"
                             "    bit 1     1  link 0 up\n"
                             "    bit 2     1  link 1 up\n"
                             "    bit 3     0  acquiring\n"
                             "    bit 5     0  overflow\n"
                             "    bits 6-7  0  fill level below 25 %\n");
}

TEST(StatusCommand, SeesACameraThatIsOff) {
    const kavo::test::TemporaryFolder folder;
    const std::string scene = folder.makeFile("scene", "camera 1 power off\n");
    const std::string json =
        console().environment("ORBELLINE_BOARD_SCENE", scene).run({"status", "--json"}).output;
    EXPECT_EQ(evaluated(json, "[(p['port'], p['camera']['value'], p['bits']['cameraConnected'], "
                              "p['bits']['link1Up']) for p in data]"),
              "[(0, 1, True, True), (1, 0, False, False)]\n");
}

TEST(StatusCommand, SeesAFrameMemoryThatOverflows) {
    const kavo::test::TemporaryFolder folder;
    const std::string scene = folder.makeFile("scene", "camera 0 rate 1000\ncamera 0 exposure 10\n"
                                                       "camera 0 readout 10\n");
    const ProgramResult result =
        console()
            .environment("ORBELLINE_BOARD_SCENE", scene)
            .input("events OVERFLOW_CAM0 --watch -n 1 -t 20\nstatus -p 0\nstatus --json\n")
            .run({"run"});
    EXPECT_EQ(result.status, 0) << result.messages;
    EXPECT_NE(result.output.find(" s  FG_OVERFLOW_CAM0\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("  Overflow    yes, pictures were lost\n"), std::string::npos)
        << result.output;
    EXPECT_NE(result.output.find("  Fill level  100 %\n"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("    bit 5     1  overflow\n    bits 6-7  3  fill level 75 % and above\n"),
              std::string::npos)
        << result.output;
    const std::string json = result.output.substr(result.output.find("[\n"));
    EXPECT_EQ(evaluated(json, "data[0]['fillLevel'], data[0]['overflow'], data[0]['bits']['fillBand']"),
              "{'value': 100} {'value': 1} 3\n");
}

} // namespace orbctl::test
