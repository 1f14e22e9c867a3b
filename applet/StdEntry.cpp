// Creation of the applet on a board.

#include "applet/AppletQel.h"
#include "applet/AppletWrapper.h"
#include "applet/Identity.h"
#include "platform/DesignRuntime.h"

#include <cstdlib>
#include <memory>
#include <new>

namespace error = kavo::error;

namespace {

constexpr const char* runtimeLibrary = "libgrabcore5.so";
constexpr const char* externalDesignSwitch = "__KAVO_FORCE_EXTERNAL_QEL";

fpga_design* loadDesign() {
    return std::getenv(externalDesignSwitch) != nullptr
               ? QelLoadQelFileWithType(identity::designFile, identity::designType, 1)
               : QelLoadDesignFromBuffer(rawQelData, rawQelDataSize, 1);
}

/// Frees the inner handle of a wrapper when its creation ends in an exception.
class InnerHandleGuard {
  public:
    explicit InnerHandleGuard(const FgQxWrapper& wrapper) : mWrapper(wrapper) {}
    ~InnerHandleGuard() {
        const auto freeGrabber = mWrapper.wrapperFg().DLL_Fg_FreeGrabber;
        if (!mIsKept && freeGrabber != nullptr) {
            freeGrabber(mWrapper.grabcoreFg());
        }
    }
    InnerHandleGuard(const InnerHandleGuard&) = delete;
    InnerHandleGuard& operator=(const InnerHandleGuard&) = delete;
    void keep() { mIsKept = true; }

  private:
    const FgQxWrapper& mWrapper;
    bool mIsKept = false;
};

} // namespace

extern "C" __attribute__((visibility("default"))) void* Std_entry(QXdevice* device, int* errorCode,
                                                                  int slave) {
    int unwantedError = 0;
    int& result = errorCode != nullptr ? *errorCode : unwantedError;

    std::unique_ptr<FgQxWrapperImpl> wrapper(new (std::nothrow) FgQxWrapperImpl);
    if (wrapper == nullptr) {
        return nullptr;
    }
    result = wrapper->initializeDllFunctions(runtimeLibrary);
    if (result != error::ok) {
        return nullptr;
    }
    fpga_design* design = loadDesign();
    if (design == nullptr) {
        result = error::initialisationFailed;
        // Kept on purpose: on this path alone the wrapper, and with it the runtime library, stays.
        static_cast<void>(wrapper.release());
        return nullptr;
    }
    result = wrapper->runFgInit(identity::designFile, device, design, slave != 0);
    if (result != error::ok) {
        QelUnloadQelFile(design);
        return nullptr;
    }
    wrapper->initHandles(device, design);
    InnerHandleGuard innerHandle(*wrapper);
    wrapper->initInternalMaps();
    wrapper->retrieveIds();
    static_cast<FgQxWrapper&>(*wrapper).createUserParameters();
    wrapper->enterTriggerSafeState();
    if (slave == 0) {
        wrapper->setDefaultValues();
    }
    innerHandle.keep();
    return static_cast<FgQxWrapper*>(wrapper.release());
}
