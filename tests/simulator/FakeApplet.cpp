#include "platform/FrameGrabber.h"
#include "tests/simulator/FakeAppletCalls.h"

#include <memory>
#include <stdexcept>

/// An applet that only notes what it is asked. What its creation comes to is chosen when it is built.

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

simulator::tests::FakeAppletCalls calls;

int note(const char* function, int answer) {
    calls.last = function;
    return answer;
}

} // namespace

EXPORTED simulator::tests::FakeAppletCalls* fakeAppletCalls() { return &calls; }

EXPORTED void* Std_entry(QXdevice* device, int* error, int slave) {
    calls.device = device;
    calls.slave = slave;
#if defined(FAKE_APPLET_REFUSES)
    *error = -77;
    return nullptr;
#elif defined(FAKE_APPLET_IS_SILENT)
    *error = 0;
    return nullptr;
#elif defined(FAKE_APPLET_THROWS)
    (void)error;
    throw std::runtime_error("no applet today");
#else
    *error = 0;
    return std::make_unique<int>(1).release();
#endif
}

EXPORTED int Fg_FreeGrabber(Fg_Struct* handle) {
    const std::unique_ptr<int> master(static_cast<int*>(handle->Master));
    handle->Master = nullptr;
    return -5;
}

EXPORTED int Fg_setParameterWithType(Fg_Struct*, int id, const void* value, unsigned dmaIndex, int type) {
    calls.id = id;
    calls.dmaIndex = dmaIndex;
    calls.type = type;
    calls.value = *static_cast<const unsigned*>(value);
    return note("Fg_setParameterWithType", 11);
}

EXPORTED int Fg_getParameterWithType(Fg_Struct*, int, void* value, unsigned, int type) {
    calls.type = type;
    *static_cast<unsigned*>(value) = 4711;
    return note("Fg_getParameterWithType", 12);
}

EXPORTED int Fg_getParameterIdByName(Fg_Struct*, const char*) { return note("Fg_getParameterIdByName", 13); }
EXPORTED int Fg_getLastErrorNumber(Fg_Struct*) { return note("Fg_getLastErrorNumber", -14); }

EXPORTED int Fg_AcquireEx(Fg_Struct*, int dmaIndex, int frames, int flag, dma_mem* memory) {
    calls.dmaIndex = static_cast<unsigned>(dmaIndex);
    calls.id = frames;
    calls.type = flag;
    calls.memory = memory;
    return note("Fg_AcquireEx", 15);
}

EXPORTED int Fg_stopAcquireEx(Fg_Struct*, int, dma_mem*, int) { return note("Fg_stopAcquireEx", 16); }
EXPORTED int Fg_saveConfig(Fg_Struct*, const char*) { return note("Fg_saveConfig", 17); }
EXPORTED int Shad_GetMaxLine(Fg_Struct*, ShadingMaster*) { return note("Shad_GetMaxLine", 18); }
