#pragma once

#include <cstdint>

/// libgrabcore5.so, the frame-grabber runtime, and the entry points of an applet library, which bear the same
/// names.
///
/// A program holds an outer handle. Its Master field carries the applet's wrapper; the runtime passes every
/// call on that handle to the applet's function of the same name. The applet holds an inner handle, whose
/// calls the runtime answers itself; the inner handle's Master is null.

struct fpga_design;
struct QXdevice;
struct RegisterInfo;

/// A board handle. The runtime keeps more behind the first field; an applet knows that field only.
struct Fg_Struct {
    void* Master;
};

/// Image memory of one acquisition. Only the runtime knows its layout.
struct dma_mem;
/// A shading object. No applet of this project makes one.
struct ShadingMaster;

extern "C" {

// ---- entry points that only an applet has

/// Creates the applet for a board.
/// \param device  the board
/// \param error   receives 0 or an error code; may be null
/// \param slave   not 0: share the board, apply no default values
/// \return the wrapper, to be stored in Master, or null
void* Std_entry(QXdevice* device, int* error, int slave);
/// Answers a fixed property of the applet, without a handle. Unknown selectors give -2130.
int Info(int selector, unsigned index, int subIndex, unsigned* value, void** data);

int Fg_getNrOfParameter(Fg_Struct* handle);
const char* Fg_getParameterName(Fg_Struct* handle, int index);
int Fg_getParameterId(Fg_Struct* handle, int index);
int Fg_getParameterInfoXML(Fg_Struct* handle, int port, char* buffer, unsigned* bufferSize);
std::uint64_t Fg_getEventMask(Fg_Struct* handle, const char* name);
const char* Fg_getEventName(Fg_Struct* handle, std::uint64_t mask);

// ---- functions that the runtime and an applet both have

int Fg_setParameterWithType(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex, int type);
int Fg_getParameterWithType(Fg_Struct* handle, int id, void* value, unsigned dmaIndex, int type);
int Fg_getParameterIdByName(Fg_Struct* handle, const char* name);
/// The head of a port's parameter tree, owned by the handle; null where there is none.
RegisterInfo* Fg_getParameterInfo(Fg_Struct* handle, int port);
int Fg_saveConfig(Fg_Struct* handle, const char* file);
int Fg_loadConfig(Fg_Struct* handle, const char* file);
int Fg_getAppletId(Fg_Struct* handle, const char* name);
int Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory);
int Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory);
int Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag);
int Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory);
int Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout, dma_mem* memory);
int Fg_getLastErrorNumber(Fg_Struct* handle);
int Fg_FreeGrabber(Fg_Struct* handle);

ShadingMaster* Fg_AllocShading(Fg_Struct* handle, int first, int second);
int Fg_FreeShading(Fg_Struct* handle, ShadingMaster* shading);
int Shad_SetSubValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second, float value);
int Shad_SetMultValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second, float value);
int Shad_SetFixedPatternNoiseLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                  int value);
int Shad_GetMaxLine(Fg_Struct* handle, ShadingMaster* shading);
int Shad_GetAccess(Fg_Struct* handle, ShadingMaster* shading);
int Shad_FreeAccess(Fg_Struct* handle, ShadingMaster* shading);
int Shad_WriteActLine(Fg_Struct* handle, ShadingMaster* shading, int line);

// ---- functions that only the runtime has

/// Opens an inner handle on a loaded design. The name is a text for messages.
Fg_Struct* Fg_InitHandleSlaveAware(const char* name, QXdevice* device, fpga_design* design, int slave);
Fg_Struct* Fg_InitHandle(const char* name, QXdevice* device, fpga_design* design);
int Fg_setParameter(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex);
int Fg_getParameter(Fg_Struct* handle, int id, void* value, unsigned dmaIndex);
int Fg_Acquire(Fg_Struct* handle, int dmaIndex, int frames);
int Fg_stopAcquire(Fg_Struct* handle, int dmaIndex);
}
