#include "tests/trust/FaultFixture.h"

FaultSubject::FaultSubject(const Scene& scene, const std::vector<int>& ports)
    : mView(prepared(scene, ports)) {}

AppletOnBoard& FaultSubject::prepared(const Scene& scene, const std::vector<int>& ports) {
    simulator::hostCalls().record(false);
    for (const int port : ports) {
        enter(applet, scene, port);
    }
    return applet;
}

FaultFixture::FaultFixture() {
    FaultSubject subject;
    save(subject);
    load(subject);
    static_cast<void>(subject.look());
    std::filesystem::remove(file);
}

Scene FaultFixture::changed() const {
    return {"Changed",
            {{FG_TRIGGER_FRAMESPERSECOND, 5.0},
             {FG_AREATRIGGERMODE, unsigned{modeSoftware}},
             {FG_TRIGGERSTATE, unsigned{stateActive}},
             {FG_WIDTH, 512U},
             {FG_XOFFSET, 64U},
             {FG_LUT_TYPE, unsigned{lookupTableCustom}},
             {FG_LUT_CUSTOM_FILE, tableFile},
             {FG_TRIGGERIN_DOWNSCALE, 5U},
             {FG_TRIGGER_PULSEFORMGEN1_DELAY, 80.0}}};
}

std::string FaultFixture::differencesFromTwin(std::optional<FaultSubject>& subject) {
    const std::string told = folder.path("told.mcf");
    EXPECT_EQ(Fg_saveConfig(subject->applet.handle(), told.c_str()), 0);
    const AppletView::Picture picture = subject->look();
    subject.reset();
    FaultSubject twin;
    EXPECT_EQ(Fg_loadConfig(twin.applet.handle(), told.c_str()), 0);
    const AppletView::Picture other = twin.look();
    return twin.view().differencesInHardware(picture, other);
}

std::size_t FaultFixture::openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}
