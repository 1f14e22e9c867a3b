#include "tests/applet/ConfigurationOnBoard.h"
#include "tests/support/CommaLocale.h"

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

// Saving the settings of both ports into a file.

namespace {

/// Files of this process end at a size, as they do on a full disk, as long as the object lives.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        mHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit{bytes, mBefore.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

  private:
    rlimit mBefore{};
    void (*mHandler)(int) = nullptr;
};

} // namespace

class SaveConfiguration : public ConfigurationOnBoard {
  protected:
    void expectUnsaved(const char* path) {
        SCOPED_TRACE(path == nullptr ? "null" : path);
        EXPECT_EQ(Fg_saveConfig(applet.handle(), path), -5001);
        EXPECT_EQ(applet.lastError(), -5001);
    }
};

TEST_F(SaveConfiguration, AFreshAppletSavesItsDefaults) {
    EXPECT_EQ(saved(), freshConfiguration());
    EXPECT_EQ(applet.lastError(), 0);
}

TEST_F(SaveConfiguration, OtherSettingsAreSavedAsTheyAreTold) {
    ASSERT_EQ(load(other(), with(other(), "FG_WIDTH", "16")), 0);
    EXPECT_EQ(saved(), configurationText(other(), with(other(), "FG_WIDTH", "16")));
}

TEST_F(SaveConfiguration, NumbersHaveAPointUnderEveryLocale) {
    const kavo::test::CommaLocale locale;
    ASSERT_EQ(load(other(), freshSection()), 0);
    // The clock of the inputs is one for both ports.
    EXPECT_EQ(saved(), configurationText(with(other(), "FG_TRIGGERIN_DEBOUNCE", "1.008"), freshSection()));
}

TEST_F(SaveConfiguration, WritesNothingToTheDesignAndReadsOnlyTimes) {
    AppletOnBoard::forgetCalls();
    saved();
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    std::vector<std::string> expected;
    for (const int port : {0, 1}) {
        expected.emplace_back("Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period");
        for (const char generator : {'0', '1', '2', '3'}) {
            const std::string name = std::string("PulseFormGenerators_PulseFormGenerator") + generator + "_";
            expected.push_back(AppletOnBoard::trigger(port, name + "Delay_Delay"));
            expected.push_back(AppletOnBoard::trigger(port, name + "Width_Width"));
        }
    }
    EXPECT_EQ(AppletOnBoard::reads(), expected);
    for (const simulator::Call& call : simulator::hostCalls().calls(simulator::CallKind::read)) {
        EXPECT_EQ(call.type, 2);
    }
}

TEST_F(SaveConfiguration, TimesComeFromTheRegisters) {
    applet.board().setDesignValue(
        AppletOnBoard::trigger(1, "PulseFormGenerators_PulseFormGenerator2_Delay_Delay"), 4000000001);
    applet.board().setDesignValue("Device1_Process2_Trigger_TriggerInput_Debounce8_Prescale_Period", 63);
    const Section portA = with(freshSection(), "FG_TRIGGERIN_DEBOUNCE", "3.024");
    const Section portB = with(portA, "FG_TRIGGER_PULSEFORMGEN2_DELAY", "64000000.016");
    EXPECT_EQ(saved(), configurationText(portA, portB));
}

TEST_F(SaveConfiguration, AKeyThatCannotBeReadIsLeftOut) {
    std::vector<std::string> keys{"FG_TRIGGERIN_DEBOUNCE"};
    for (const char generator : {'0', '1', '2', '3'}) {
        keys.push_back(std::string("FG_TRIGGER_PULSEFORMGEN") + generator + "_DELAY");
        keys.push_back(std::string("FG_TRIGGER_PULSEFORMGEN") + generator + "_WIDTH");
    }
    for (unsigned read = 0; read < 2 * keys.size(); ++read) {
        SCOPED_TRACE(read);
        const Section less = without(freshSection(), keys[read % keys.size()]);
        AppletOnBoard::failRead(read + 1, runtimeFailure);
        EXPECT_EQ(saved(), read < keys.size() ? configurationText(less, freshSection())
                                              : configurationText(freshSection(), less));
        EXPECT_EQ(applet.lastError(), 0);
    }
    simulator::hostCalls().failFrom(simulator::CallKind::read, 1, runtimeFailure);
    Section least = freshSection();
    for (const std::string& key : keys) {
        least = without(least, key);
    }
    EXPECT_EQ(saved(), configurationText(least, least));
}

TEST_F(SaveConfiguration, AnotherNameIsRefusedAndMakesNoFile) {
    for (const char* name : {"settings", "settings.mc", "settings.MCF", "settingsmcf"}) {
        expectUnsaved(folder.path(name).c_str());
        EXPECT_FALSE(std::filesystem::exists(folder.path(name)));
    }
    EXPECT_EQ(saveTo(folder.path("a.mcf.old")), 0);
    EXPECT_EQ(kavo::test::fileContent(folder.path("a.mcf.old")), freshConfiguration());
}

TEST_F(SaveConfiguration, APathThatCannotBeOpenedIsReported) {
    expectUnsaved(nullptr);
    expectUnsaved("");
    expectUnsaved(folder.path("missing/settings.mcf").c_str());
    std::filesystem::create_directory(folder.path("folder.mcf"));
    expectUnsaved(folder.path("folder.mcf").c_str());
    expectUnsaved(folder.path(std::string(300, 'n') + ".mcf").c_str());
    expectUnsaved(folder.path(std::string(5000, 'n') + ".mcf").c_str());
}

TEST_F(SaveConfiguration, AFullDiskIsReported) {
    std::filesystem::create_symlink("/dev/full", folder.path("full.mcf"));
    expectUnsaved(folder.path("full.mcf").c_str());
    for (const rlim_t bytes : {0U, 1U, 300U}) {
        const std::string path = folder.path("cut.mcf");
        {
            const FileSizeLimit limit(bytes);
            expectUnsaved(path.c_str());
        }
        EXPECT_EQ(kavo::test::fileContent(path), freshConfiguration().substr(0, bytes));
    }
    EXPECT_EQ(saved(), freshConfiguration());
}

TEST_F(SaveConfiguration, ALongerFileIsReplacedWhole) {
    folder.makeFile("saved.mcf", std::string(100000, 'x'));
    EXPECT_EQ(saved(), freshConfiguration());
}

TEST_F(SaveConfiguration, LongPathsWork) {
    const std::string path = folder.makeDeepPath(1023, "settings.mcf");
    ASSERT_EQ(path.size(), 1023U);
    ASSERT_EQ(saveTo(path), 0);
    EXPECT_EQ(kavo::test::fileContent(path), freshConfiguration());
    EXPECT_EQ(loadFrom(path), 0);
}

TEST_F(SaveConfiguration, PortsKeepTheirOwnSections) {
    ASSERT_EQ(applet.set(FG_WIDTH, 512U, 0), 0);
    ASSERT_EQ(applet.set(FG_TIMEOUT, 7U, 1), 0);
    EXPECT_EQ(saved(), configurationText(with(freshSection(), "FG_WIDTH", "512"),
                                         with(freshSection(), "FG_TIMEOUT", "7")));
}
