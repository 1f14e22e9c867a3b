#pragma once

#include "appletwrappers-baselib/BoundFunctions.h"
#include "grabber_basis/Fg_Error.h"
#include "grabber_basis/parameterInfo.h"
#include "platform/ParameterValues.h"

#include <cstdint>
#include <map>
#include <memory>

class Fg_ConfigFileParser;
class FgQxWrapperPrivate;

/// What every applet of this kind has in common: the binding to the frame-grabber runtime, the inner handle
/// on the design, the registry of parameter descriptions, the last error, and the frames around configuration
/// files, the XML description and events. A runtime keeps a pointer to it in the Master field of its handle.
///
/// The virtual operations stand in the order in which the runtime's applets number them (their slots); the
/// two entries of the destructor are slots 6 and 7.
class FgQxWrapper {
  public:
    FgQxWrapper(const FgQxWrapper&) = delete;
    FgQxWrapper& operator=(const FgQxWrapper&) = delete;

    /// Reads the applet's keys from an open configuration file. False when a key is missing or refused.
    virtual bool loadConfig(Fg_ConfigFileParser& parser) = 0;
    /// Writes the applet's keys behind the header of an open configuration file.
    virtual void saveConfig(Fg_ConfigFileParser& parser) = 0;
    virtual int processChannelToDma(int process, int channel) = 0;
    virtual int mapDmaToFormat(int dmaIndex) = 0;
    virtual int setDmaAlignment(int dmaIndex, int alignment) = 0;
    virtual int getDmaAlignment(int dmaIndex) = 0;
    /// Closes the runtime library, then unloads the design. The inner handle must have been freed before.
    virtual ~FgQxWrapper() noexcept(false);

    virtual void createUserParameters() = 0;
    virtual int Fg_setParameter(int id, const void* value, int port) = 0;
    virtual int Fg_getParameter(int id, void* value, int port) = 0;
    virtual int Fg_getParameterIdByName(const char* name) = 0;
    virtual const char* Fg_getParameterName(int index) = 0;
    virtual int Fg_getParameterId(int index) = 0;
    virtual int Fg_getParameterCount() = 0;

    /// Writes a configuration file.
    /// \return 0, or -5001 when the name lacks ".mcf" or the file cannot be written
    virtual int Fg_saveConfig(Fg_Struct* handle, const char* file);
    /// Reads a configuration file and applies it.
    /// \return 0; -2076 when there is no such file (the last error is then -5000); -5000 when its content is
    /// refused
    virtual int Fg_loadConfig(Fg_Struct* handle, const char* file);
    /// Copies the XML description of a port, or tells its size.
    /// \param buffer  receives the text and a terminating zero; null asks for the size only
    /// \param size    bytes at buffer; receives the length of the text plus one
    /// \return 0; -2075 without a description; -500 when the buffer is too small
    virtual int Fg_getParameterInfoXML(Fg_Struct* handle, int port, char* buffer, unsigned* size);

    virtual ShadingMaster* Fg_AllocShading(int first, int second);
    virtual int Fg_FreeShading(ShadingMaster* shading);
    virtual int Shad_SetSubValueLine(ShadingMaster* shading, int first, int second, float value);
    virtual int Shad_SetMultValueLine(ShadingMaster* shading, int first, int second, float value);
    virtual int Shad_SetFixedPatternNoiseLine(ShadingMaster* shading, int first, int second, int value);
    virtual int Shad_GetMaxLine(ShadingMaster* shading);
    virtual int Shad_GetAccess(ShadingMaster* shading);
    virtual int Shad_FreeAccess(ShadingMaster* shading);
    virtual int Shad_WriteActLine(ShadingMaster* shading, int line);

    /// Mask of a design event by the event's own name; 0 for a null or unknown name.
    virtual std::uint64_t Fg_getEventMask(const char* name);
    /// Name of the design event with exactly this mask, or null.
    virtual const char* Fg_getEventName(std::uint64_t mask);

    virtual const char* getManufacturer() = 0;
    virtual const char* getCameraType() = 0;
    virtual const char* getCameraVersion() = 0;
    virtual int getAppletID() = 0;

    /// Opens the runtime library and binds its functions. A function that it lacks stays null.
    /// \return 0, or -2031 when the library cannot be opened
    int initializeDllFunctions(const char* library);
    /// Opens the inner handle on a loaded design.
    /// \return 0; -2031 when the runtime has no initialisation function; the runtime's own error, or -100,
    /// when it
    ///         returns no handle
    int runFgInit(const char* name, QXdevice* device, fpga_design* design, bool slave);
    /// Hands the device and the design to the wrapper, which unloads the design when it is destroyed.
    void initHandles(QXdevice* device, fpga_design* design);

    /// Replace (not null) and query the handles last used by any wrapper of the process.
    static QXdevice* accessDeviceHandle(QXdevice* device);
    static fpga_design* accessDesignHandle(fpga_design* design);

    [[nodiscard]] fpga_design* designHandle() const;
    [[nodiscard]] QXdevice* boardHandle() const;
    [[nodiscard]] Fg_Error& fgError();
    [[nodiscard]] Fg_ParameterInfo& parameterInfo();
    [[nodiscard]] const BoundFunctions& wrapperFg() const;
    /// The inner handle; null until runFgInit succeeded.
    [[nodiscard]] Fg_Struct* grabcoreFg() const;

    int Fg_getLastErrorNumber();
    /// Stores a last error and returns it.
    int setError(int code);
    /// The runtime's own last error of the inner handle; -12 without handle or function.
    int Fg_getLastErrorNumberQx();
    /// Head of a port's parameter tree; null for a port without one.
    RegisterInfo* Fg_getParameterInfo(int port);

    /// Calls on the inner handle: the runtime's result, or -12 (the tree: null) where it cannot be called.
    int getParameterIdByName(const char* name);
    int getUnwrappedParameter(int id, void* value, int port);
    int setUnwrappedParameter(int id, const void* value, int port);
    RegisterInfo* getUnwrappedParameterInfo();

    /// Copy one element between a record and an array that is long enough for the record's index; a null
    /// record does nothing.
    static void setFieldCache(std::uint32_t* cache, const FieldParameterInt_s* record);
    static void getFieldCache(const std::uint32_t* cache, FieldParameterInt_s* record);
    static void setFieldCache(double* cache, const FieldParameterDouble_s* record);
    static void getFieldCache(const double* cache, FieldParameterDouble_s* record);

    /// Creates an empty file for coefficients. The name is released by deleteTempFile; null when none could
    /// be made.
    static char* createTempFile();
    /// Removes the file and releases its name.
    static void deleteTempFile(char* name);

  protected:
    FgQxWrapper();

  private:
    std::unique_ptr<FgQxWrapperPrivate> d;

  protected:
    /// Port to parameter id to the parameter's record in the registry.
    std::map<int, std::map<int, RegisterInfo*>> register_info_map;
    /// Whether the design's registers are offered as parameters.
    bool draEnabled = false;
};
