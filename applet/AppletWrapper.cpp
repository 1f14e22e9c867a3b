#include "applet/AppletWrapper.h"

#include "applet/EnvironmentSwitch.h"
#include "applet/Identity.h"

using kavo::templates::platform::CriticalSectionGuard;

FgQxWrapperImpl::FgQxWrapperImpl() : dllBaseName("libgrabcore5") {
    draEnabled = environmentSwitchIsOn("KAVO_ENABLE_DRA");
}

FgQxWrapperImpl::~FgQxWrapperImpl() noexcept(false) = default;

const char* FgQxWrapperImpl::getManufacturer() { return identity::manufacturer; }

const char* FgQxWrapperImpl::getCameraType() { return identity::appletName; }

const char* FgQxWrapperImpl::getCameraVersion() { return identity::cameraVersion; }

int FgQxWrapperImpl::getAppletID() { return 0; }

void FgQxWrapperImpl::enterTriggerSafeState() {
    const CriticalSectionGuard guard(&mParameterLock);
    for (const int port : {0, 1}) {
        static_cast<void>(triggerOutputsEnable(port, false));
        static_cast<void>(triggerGeneratorEnable(port, false));
        static_cast<void>(triggerOutputsEnable(port, true));
    }
}
