// Empty functions under the names that the applet links against. The linker needs them to record the sonames;
// at run time the host's own libraries of these sonames are loaded instead.

#include "platform/DesignRuntime.h"
#include "platform/RegisterAccess.h"

#define EXPORTED __attribute__((visibility("default")))

extern "C" {

#if defined(IMPORT_QELRT)
EXPORTED fpga_design* QelLoadDesignFromBuffer(const void*, unsigned, int) { return nullptr; }
EXPORTED fpga_design* QelLoadQelFileWithType(const char*, int, int) { return nullptr; }
EXPORTED int QelUnloadQelFile(fpga_design*) { return 0; }
EXPORTED int QelGetNrOfRegister(fpga_design*) { return 0; }
EXPORTED const char* QelGetRegisterName(fpga_design*, int) { return nullptr; }
EXPORTED int QelGetRegisterByName(fpga_design*, const char*) { return 0; }
EXPORTED int QelGetRegisterBitRange(fpga_design*, int) { return 0; }
EXPORTED const QelEvent* QelGetEvent(fpga_design*, int) { return nullptr; }
#endif

#if defined(IMPORT_KAVOIOLIBRT)
EXPORTED int KavoRegisterRead(QXdevice*, int, void*) { return 0; }
EXPORTED int KavoRegisterWrite(QXdevice*, int, unsigned, unsigned) { return 0; }
#endif
}
