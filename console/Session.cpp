#include "console/Session.h"

#include "console/HostLocation.h"
#include "console/Setting.h"

#include <cstdlib>
#include <utility>

namespace orbctl {

const char* const sceneVariable = "ORBELLINE_BOARD_SCENE";

const HostLibrary& Session::runtime() {
    if (!mRuntime.isOpen()) {
        mRuntime = HostLibrary::open(runtimeFile(mOptions.runtime), "runtime");
        mCompanions = openCompanions(mRuntime.file());
    }
    return mRuntime;
}

std::string Session::appletName() const { return appletFile(mOptions.applet); }

AppletHandle& Session::applet() {
    if (!mApplet) {
        if (!mOptions.scene.empty())
            setenv(sceneVariable, mOptions.scene.c_str(), 1);
        auto opened = std::make_unique<AppletHandle>(runtime(), appletName(), mOptions.board, mOptions.slave);
        if (mKeepsStartValues && !mOptions.slave)
            mStartValues.emplace(*opened);
        for (const std::string& text : mOptions.settings) {
            const PortSetting setting = portSettingFrom(text);
            applySettings(*opened, setting.ports, {setting.setting});
        }
        mApplet = std::move(opened);
    }
    return *mApplet;
}

HostLibrary Session::openAppletLibrary() {
    runtime();
    return HostLibrary::open(appletName(), "applet");
}

const ParameterSnapshot& Session::startValues() {
    applet();
    if (mOptions.slave)
        throw Failure(ExitStatus::refused,
                      "a slave shares the board as it is: its start values are not known");
    if (!mStartValues)
        throw Failure(ExitStatus::refused, "the start values were not recorded when the board was opened");
    return *mStartValues;
}

bool Session::beginScript() { return !std::exchange(mIsScripted, true); }

void Session::offerRegisters() { setenv("KAVO_ENABLE_DRA", "1", 1); }

} // namespace orbctl
