// Host libraries that answer at once and do nothing: every read gives zeros, every write succeeds.

#include "platform/DesignRuntime.h"
#include "platform/FrameGrabber.h"
#include "platform/RegisterAccess.h"

#include <cstring>

// They stand for any device and design; nothing looks behind the pointers.
namespace {

[[maybe_unused]] Fg_Struct innerHandle{nullptr};
[[maybe_unused]] int design = 0;
[[maybe_unused]] unsigned long calls = 0;

} // namespace

extern "C" {

#if defined(NULL_QELRT)
fpga_design* QelLoadDesignFromBuffer(const void*, unsigned, int) {
    return reinterpret_cast<fpga_design*>(&design);
}
fpga_design* QelLoadQelFileWithType(const char*, int, int) { return nullptr; }
int QelUnloadQelFile(fpga_design*) { return 0; }
int QelGetNrOfRegister(fpga_design*) { return 0; }
const char* QelGetRegisterName(fpga_design*, int) { return nullptr; }
int QelGetRegisterByName(fpga_design*, const char*) { return 0; }
int QelGetRegisterBitRange(fpga_design*, int) { return 0; }
const QelEvent* QelGetEvent(fpga_design*, int index) {
    static const QelEvent event{0, "Device1_Process0_Overflow_Overflow"};
    return index == 0 ? &event : nullptr;
}
#endif

#if defined(NULL_KAVOIOLIBRT)
int KavoRegisterRead(QXdevice*, int, void* buffer) {
    std::memset(buffer, 0, 8);
    return 0;
}
int KavoRegisterWrite(QXdevice*, int, unsigned, unsigned) { return 0; }
#endif

#if defined(NULL_GRABCORE5)
/// How often a parameter was read, written or looked up so far.
unsigned long nullHostCalls() { return calls; }

Fg_Struct* Fg_InitHandleSlaveAware(const char*, QXdevice*, fpga_design*, int) { return &innerHandle; }
int Fg_FreeGrabber(Fg_Struct*) { return 0; }
int Fg_getLastErrorNumber(Fg_Struct*) { return 0; }
int Fg_getParameterIdByName(Fg_Struct*, const char*) {
    ++calls;
    return 1;
}
int Fg_setParameter(Fg_Struct*, int, const void*, unsigned) { return 0; }
int Fg_setParameterWithType(Fg_Struct*, int, const void*, unsigned, int) {
    ++calls;
    return 0;
}
int Fg_getParameter(Fg_Struct*, int, void* value, unsigned) {
    std::memset(value, 0, 4);
    return 0;
}
int Fg_getParameterWithType(Fg_Struct*, int, void* value, unsigned, int) {
    ++calls;
    std::memset(value, 0, 8);
    return 0;
}
RegisterInfo* Fg_getParameterInfo(Fg_Struct*, int) { return nullptr; }
#endif
}
