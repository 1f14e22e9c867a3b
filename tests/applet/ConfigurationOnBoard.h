#pragma once

#include "tests/applet/ConfigurationText.h"
#include "tests/applet/SetterFaults.h"
#include "tests/support/TemporaryFolder.h"

/// An applet, and a folder for its configuration files.
class ConfigurationOnBoard : public testing::Test {
  protected:
    int load(const std::string& text) { return loadFrom(folder.makeFile("load.mcf", text)); }
    int load(const Section& portA, const Section& portB) { return load(configurationText(portA, portB)); }
    int loadFrom(const std::string& path) { return Fg_loadConfig(applet.handle(), path.c_str()); }
    int saveTo(const std::string& path) { return Fg_saveConfig(applet.handle(), path.c_str()); }
    /// The bytes of a file that is saved now.
    std::string saved();

    /// What the getters of a port tell, in the words of a file.
    Section told(int port) { return told(applet, port); }
    static Section told(AppletOnBoard& applet, int port);
    void expectTold(const Section& expected, int port);
    /// The legal section beside the fresh one.
    Section other();
    /// Whether every value told is the one or the other.
    void expectEachValueFrom(const Section& before, const Section& after, int port);
    /// Compares the getters with the registers that carry their values.
    void expectGettersToTellTheHardware(int port);

    AppletOnBoard applet;
    kavo::test::TemporaryFolder folder;
};

/// The writes that put one port into its documented start state, when it is in that state already.
std::vector<RecordedWrite> writesOfFreshValues(int port, bool countersAreCleared);
