#include "appletwrappers-baselib/FgQxWrapper.h"

#include "appletwrappers-baselib/FgQxWrapperPrivate.h"
#include "platform/ErrorCodes.h"
#include "templates/TemporaryFiles.h"

#include <array>
#include <atomic>
#include <cstring>
#include <unistd.h>

namespace error = kavo::error;

namespace {

std::atomic<QXdevice*> lastDevice{nullptr};
std::atomic<fpga_design*> lastDesign{nullptr};

template <class Handle>
Handle* replaceAndQuery(std::atomic<Handle*>& remembered, Handle* handle) {
    if (handle != nullptr) {
        remembered = handle;
    }
    return remembered;
}

constexpr int eventMaskBits = 64;

} // namespace

FgQxWrapper::FgQxWrapper() : d(std::make_unique<FgQxWrapperPrivate>()) {}

FgQxWrapper::~FgQxWrapper() noexcept(false) = default;

// ---- the runtime

int FgQxWrapper::initializeDllFunctions(const char* library) {
    d->dll.reset(dlopen(library, RTLD_NOW));
    if (d->dll == nullptr) {
        return setError(error::runtimeMissing);
    }
#define X(name) d->bind(d->mWrapperFg->DLL_##name, #name);
    KAVO_BOUND_FUNCTIONS(X)
#undef X
    d->bind(d->DLL_Fg_getParameterIdByName, "Fg_getParameterIdByName");
    return error::ok;
}

int FgQxWrapper::runFgInit(const char* name, QXdevice* device, fpga_design* design, bool slave) {
    d->bind(d->Fg_Init_Func_Slave_Aware, "Fg_InitHandleSlaveAware");
    d->bind(d->Fg_Init_Func, "Fg_InitHandle");
    d->bind(d->DLL_Fg_getLastErrorNumber, "Fg_getLastErrorNumber");
    if (d->Fg_Init_Func_Slave_Aware != nullptr) {
        d->mGrabcoreFg = d->Fg_Init_Func_Slave_Aware(name, device, design, slave ? 1 : 0);
    } else if (d->Fg_Init_Func != nullptr) {
        d->mGrabcoreFg = d->Fg_Init_Func(name, device, design);
    } else {
        return setError(error::runtimeMissing);
    }
    if (d->mGrabcoreFg == nullptr) {
        return setError(d->DLL_Fg_getLastErrorNumber != nullptr ? d->DLL_Fg_getLastErrorNumber(nullptr)
                                                                : error::initialisationFailed);
    }
    accessDeviceHandle(device);
    accessDesignHandle(design);
    return error::ok;
}

void FgQxWrapper::initHandles(QXdevice* device, fpga_design* design) {
    d->mBoardHandle = device;
    d->mDesignHandle.reset(design);
}

QXdevice* FgQxWrapper::accessDeviceHandle(QXdevice* device) { return replaceAndQuery(lastDevice, device); }

fpga_design* FgQxWrapper::accessDesignHandle(fpga_design* design) {
    return replaceAndQuery(lastDesign, design);
}

fpga_design* FgQxWrapper::designHandle() const { return d->mDesignHandle.get(); }

QXdevice* FgQxWrapper::boardHandle() const { return d->mBoardHandle; }

Fg_Error& FgQxWrapper::fgError() { return d->mError; }

Fg_ParameterInfo& FgQxWrapper::parameterInfo() { return *d->mParameterInfo; }

const BoundFunctions& FgQxWrapper::wrapperFg() const { return *d->mWrapperFg; }

Fg_Struct* FgQxWrapper::grabcoreFg() const { return d->mGrabcoreFg; }

// ---- errors, descriptions and the inner handle's parameters

int FgQxWrapper::Fg_getLastErrorNumber() { return d->mError.getErrorNumberBuffer(); }

int FgQxWrapper::setError(int code) { return d->mError.setErr(code); }

int FgQxWrapper::Fg_getLastErrorNumberQx() {
    const auto function = d->mWrapperFg->DLL_Fg_getLastErrorNumber;
    return function != nullptr && d->mGrabcoreFg != nullptr ? function(d->mGrabcoreFg) : error::notAvailable;
}

RegisterInfo* FgQxWrapper::Fg_getParameterInfo(int port) {
    return port >= 0 && port < Fg_ParameterInfo::portCount ? d->mParameterInfo->getRegisterInfo(port)
                                                           : nullptr;
}

int FgQxWrapper::getParameterIdByName(const char* name) {
    const auto function = d->DLL_Fg_getParameterIdByName;
    return function != nullptr && d->mGrabcoreFg != nullptr ? function(d->mGrabcoreFg, name)
                                                            : error::notAvailable;
}

int FgQxWrapper::getUnwrappedParameter(int id, void* value, int port) {
    const auto function = d->mWrapperFg->DLL_Fg_getParameter;
    return function != nullptr && d->mGrabcoreFg != nullptr
               ? function(d->mGrabcoreFg, id, value, static_cast<unsigned>(port))
               : error::notAvailable;
}

int FgQxWrapper::setUnwrappedParameter(int id, const void* value, int port) {
    const auto function = d->mWrapperFg->DLL_Fg_setParameter;
    return function != nullptr && d->mGrabcoreFg != nullptr
               ? function(d->mGrabcoreFg, id, value, static_cast<unsigned>(port))
               : error::notAvailable;
}

RegisterInfo* FgQxWrapper::getUnwrappedParameterInfo() {
    const auto function = d->mWrapperFg->DLL_Fg_getParameterInfo;
    return function != nullptr && d->mGrabcoreFg != nullptr ? function(d->mGrabcoreFg, 0) : nullptr;
}

// ---- shading: no applet of this kind has any

ShadingMaster* FgQxWrapper::Fg_AllocShading(int, int) { return nullptr; }
int FgQxWrapper::Fg_FreeShading(ShadingMaster*) { return error::notSupported; }
int FgQxWrapper::Shad_SetSubValueLine(ShadingMaster*, int, int, float) { return error::notSupported; }
int FgQxWrapper::Shad_SetMultValueLine(ShadingMaster*, int, int, float) { return error::notSupported; }
int FgQxWrapper::Shad_SetFixedPatternNoiseLine(ShadingMaster*, int, int, int) { return error::notSupported; }
int FgQxWrapper::Shad_GetMaxLine(ShadingMaster*) { return error::notSupported; }
int FgQxWrapper::Shad_GetAccess(ShadingMaster*) { return error::notSupported; }
int FgQxWrapper::Shad_FreeAccess(ShadingMaster*) { return error::notSupported; }
int FgQxWrapper::Shad_WriteActLine(ShadingMaster*, int) { return error::notSupported; }

// ---- events

std::uint64_t FgQxWrapper::Fg_getEventMask(const char* name) {
    for (int index = 0; name != nullptr && index < eventMaskBits; ++index) {
        const QelEvent* event = QelGetEvent(designHandle(), index);
        if (event != nullptr && std::strcmp(event->name, name) == 0) {
            return std::uint64_t{1} << index;
        }
    }
    return 0;
}

const char* FgQxWrapper::Fg_getEventName(std::uint64_t mask) {
    for (int index = 0; index < eventMaskBits; ++index) {
        const QelEvent* event = QelGetEvent(designHandle(), index);
        if (event != nullptr && mask == std::uint64_t{1} << index) {
            return event->name;
        }
    }
    return nullptr;
}

// ---- field caches and temporary files

void FgQxWrapper::setFieldCache(std::uint32_t* cache, const FieldParameterInt_s* record) {
    if (record != nullptr) {
        cache[record->index] = record->value;
    }
}

void FgQxWrapper::getFieldCache(const std::uint32_t* cache, FieldParameterInt_s* record) {
    if (record != nullptr) {
        record->value = cache[record->index];
    }
}

void FgQxWrapper::setFieldCache(double* cache, const FieldParameterDouble_s* record) {
    if (record != nullptr) {
        cache[record->index] = record->value;
    }
}

void FgQxWrapper::getFieldCache(const double* cache, FieldParameterDouble_s* record) {
    if (record != nullptr) {
        record->value = cache[record->index];
    }
}

char* FgQxWrapper::createTempFile() {
    constexpr std::size_t nameCapacity = 32;
    constexpr int suffixLength = 5;
    auto name = std::make_unique<char[]>(nameCapacity);
    std::strcpy(name.get(), "/tmp/coef-XXXXXX.tiff");
    const int descriptor = kavo::templates::mkstemps(name.get(), suffixLength);
    if (descriptor < 0) {
        return nullptr;
    }
    close(descriptor);
    return name.release();
}

void FgQxWrapper::deleteTempFile(char* name) {
    const std::unique_ptr<char[]> owned(name);
    if (name != nullptr) {
        unlink(name);
    }
}
