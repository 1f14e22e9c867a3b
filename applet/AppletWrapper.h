#pragma once

#include "applet/DesignParameters.h"
#include "applet/StandardParameterCaches.h"
#include "appletwrappers-baselib/FgQxWrapper.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "templates/Guards.h"
#include "templates/Locks.h"
#include "templates/PropertiesFile.h"

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

enum class TriggerStep;

/// The applet: the standard parameters of two camera ports on top of the design's own parameters.
///
/// Every parameter has members for either port (set_sdk_param_<name>_P0, get_sdk_param_<name>_P1,
/// cache_<name>_P0,
/// ...); they come from one list and forward to one body that takes the port. Inside, a failure is a code
/// that is returned; it is thrown as an integer only by the members that are documented to throw.
class FgQxWrapperImpl final : public FgQxWrapper, public DesignParameterIds, public StandardParameterCaches {
  public:
    using StringToIntMap = std::map<std::string, int, std::less<>>;
    /// So few entries that a search from the front is the quickest.
    using IntToIntMap = std::vector<std::pair<int, int>>;
    using IntToStringMap = std::map<int, std::string>;
    using StringToStringMap = std::map<std::string, std::string, std::less<>>;
    using EventNameToEventIdMap = std::map<std::string, std::uint64_t, std::less<>>;
    using EventIdToEventNameMap = std::map<std::uint64_t, const char*>;

    /// Reads KAVO_ENABLE_DRA; every cache starts at its documented default.
    FgQxWrapperImpl();
    ~FgQxWrapperImpl() noexcept(false) override;

    // ---- creation, in this order ----

    /// Fills the tables of names, ids, indices, descriptions and events.
    void initInternalMaps();
    /// Asks the runtime for the ids of all design parameters. Unknown names keep the runtime's error as their
    /// id.
    void retrieveIds();
    void createUserParameters() override;
    /// Outputs off, generators held, outputs on again, for both ports; a call that fails is left unfinished.
    void enterTriggerSafeState();
    /// Applies the documented default of every parameter of both ports. Values that are refused are left out.
    void setDefaultValues();

    // ---- operations of the wrapper ----

    bool loadConfig(Fg_ConfigFileParser& parser) override;
    void saveConfig(Fg_ConfigFileParser& parser) override;
    int processChannelToDma(int process, int channel) override;
    int mapDmaToFormat(int dmaIndex) override;
    int setDmaAlignment(int dmaIndex, int alignment) override;
    int getDmaAlignment(int dmaIndex) override;
    int Fg_setParameter(int id, const void* value, int port) override;
    int Fg_getParameter(int id, void* value, int port) override;
    int Fg_getParameterIdByName(const char* name) override;
    const char* Fg_getParameterName(int index) override;
    int Fg_getParameterId(int index) override;
    int Fg_getParameterCount() override;
    std::uint64_t Fg_getEventMask(const char* name) override;
    const char* Fg_getEventName(std::uint64_t mask) override;
    const char* getManufacturer() override;
    const char* getCameraType() override;
    const char* getCameraVersion() override;
    int getAppletID() override;

    // ---- dispatch of standard parameters; failures are thrown as integers ----

    /// The camera port of a DMA index; throws -2070 for an index without one.
    int mapDmaToProcess(int dmaIndex) const;
    void setParameter(int id, const void* value, int dmaIndex);
    void getParameter(int id, void* value, int dmaIndex);

#define X(name, Value, initial, write, read)                                                                 \
    void set_sdk_param_##name##_P0(Value::Argument value, bool throwOnError) {                               \
        fail(write_##name(0, value), throwOnError);                                                          \
    }                                                                                                        \
    void set_sdk_param_##name##_P1(Value::Argument value, bool throwOnError) {                               \
        fail(write_##name(1, value), throwOnError);                                                          \
    }
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
#define X(name, Value, ...)                                                                                  \
    void get_sdk_param_##name##_P0(Value::Result out) { fail(readChecked_##name(0, out), true); }            \
    void get_sdk_param_##name##_P1(Value::Result out) { fail(readChecked_##name(1, out), true); }
    ORBELLINE_WRITABLE_PARAMETERS(X)
    ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X

    // ---- design parameters by their full name; -2070 for a null value, the runtime's code otherwise ----

#define ORBELLINE_SET_ACCESSOR(name)                                                                         \
    void set_qx_param_##name(const void* value, int dmaIndex, int type, bool throwOnError) {                 \
        fail(setDesignParameter(qx_id_##name, value, dmaIndex, type), throwOnError);                         \
    }
#define ORBELLINE_GET_ACCESSOR(name)                                                                         \
    void get_qx_param_##name(void* value, int dmaIndex, int type, bool throwOnError) {                       \
        fail(getDesignParameter(qx_id_##name, value, dmaIndex, type), throwOnError);                         \
    }
    ORBELLINE_SET_ACCESSOR(Device1_Process0_LookupTable_LookupTable_LUTcontent)
    ORBELLINE_SET_ACCESSOR(Device1_Process1_LookupTable_LookupTable_LUTcontent)
    ORBELLINE_SET_ACCESSOR(Device1_Process2_Trigger_TriggerCam1_PulseFormGenerators_Enable_Select)
    ORBELLINE_GET_ACCESSOR(Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status)
#undef ORBELLINE_SET_ACCESSOR
#undef ORBELLINE_GET_ACCESSOR

    // ---- procedures of a port; failures are thrown as integers ----

#define ORBELLINE_PORT_PROCEDURE(name)                                                                       \
    void name##_P0() { fail(name(0), true); }                                                                \
    void name##_P1() { fail(name(1), true); }
#define ORBELLINE_PORT_SWITCH(name)                                                                          \
    void name##_P0(bool enable) { fail(name(0, enable), true); }                                             \
    void name##_P1(bool enable) { fail(name(1, enable), true); }
#define ORBELLINE_PORT_FILE(name)                                                                            \
    void name##_P0(const char* path) { fail(name(0, path), true); }                                          \
    void name##_P1(const char* path) { fail(name(1, path), true); }

    ORBELLINE_PORT_SWITCH(triggerOutputsEnable)
    ORBELLINE_PORT_SWITCH(triggerGeneratorEnable)
    ORBELLINE_PORT_PROCEDURE(triggerResetQueue)
    ORBELLINE_PORT_PROCEDURE(triggerClearDownscale)
    ORBELLINE_PORT_PROCEDURE(triggerClearPulseFormDownscales)
    ORBELLINE_PORT_PROCEDURE(updateLutProcessing)
    ORBELLINE_PORT_FILE(loadLutFile)
    ORBELLINE_PORT_FILE(saveLutFile)
#undef ORBELLINE_PORT_PROCEDURE
#undef ORBELLINE_PORT_SWITCH
#undef ORBELLINE_PORT_FILE

    void triggerSynchronEnable_P1(bool enable) { fail(triggerSynchronEnable(1, enable), true); }
    void setAllTriggerAccessModesToRWC_P0() { setAllTriggerAccessModesToRWC(0); }
    void setAllTriggerAccessModesToRWC_P1() { setAllTriggerAccessModesToRWC(1); }
    void switchTriggerModeAndState_P0(unsigned oldMode, unsigned oldState, unsigned newMode,
                                      unsigned newState) {
        fail(switchTriggerModeAndState(0, oldMode, oldState, newMode, newState), true);
    }
    void switchTriggerModeAndState_P1(unsigned oldMode, unsigned oldState, unsigned newMode,
                                      unsigned newState) {
        fail(switchTriggerModeAndState(1, oldMode, oldState, newMode, newState), true);
    }
    void setCameraAndMTUSize_P0(unsigned mtuSize, unsigned camType) {
        fail(setCameraAndMTUSize(0, mtuSize, camType), true);
    }
    void setCameraAndMTUSize_P1(unsigned mtuSize, unsigned camType) {
        fail(setCameraAndMTUSize(1, mtuSize, camType), true);
    }

    /// The registry's record of a parameter, or null.
    [[nodiscard]] RegisterInfo* description(int port, int id) const;

  private:
    friend struct PersistedKeys;

    // ---- the one body of every parameter; results are error codes, 0 is success ----

#define X(name, Value, initial, write, read)                                                                 \
    int write_##name(int port, Value::Argument value) { return write; }
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
#define X(name, Value, initial, write, read)                                                                 \
    int read_##name(int port, Value::Result out) { return read; }                                            \
    int readChecked_##name(int port, Value::Result out) {                                                    \
        return out != nullptr ? read_##name(port, out) : kavo::error::invalidParameter;                      \
    }
    ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
#define X(name, Value, read)                                                                                 \
    int read_##name([[maybe_unused]] int port, Value::Result out) { return read; }                           \
    int readChecked_##name(int port, Value::Result out) {                                                    \
        return out != nullptr ? read_##name(port, out) : kavo::error::invalidParameter;                      \
    }
    ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X

    /// Throws a failure, if asked.
    static void fail(int code, bool throwOnError) {
        if (code != kavo::error::ok && throwOnError) {
            throw code;
        }
    }

    // ---- dispatch ----

    [[nodiscard]] std::optional<int> processOf(int dmaIndex) const;
    /// Whether an id is the applet's own; the others are offered for the design's registers and the runtime.
    [[nodiscard]] bool isStandard(int id) const;
    int setOfferedParameter(int id, const void* value, int dmaIndex);
    int getOfferedParameter(int id, void* value, int dmaIndex);
    int setStandardParameter(int id, const void* value, int dmaIndex);
    int getStandardParameter(int id, void* value, int dmaIndex);
    int writeRegister(int index, const void* value);
    int readRegister(int index, void* value);
    int readDescription(int port, char* name);

    // ---- identifiers ----

    void inspectRuntimeParameters();
    void fillStandardNames();
    void fillRegisterNames();
    void fillInspectedNames();
    void fillEvents();
    void createRegisterParameters(int port);
    void createInspectedParameters(int port);
    RegisterInfo* addStandardParameter(RegisterInfo* group, const StandardParameter& parameter, int port);
    RegisterInfo* addInspectedParameter(RegisterInfo* group, const RegisterInfo& original, int id, int port);
    void enterRecord(int port, int id, RegisterInfo* record);

    // ---- shape of a handler ----

    /// Caches a value and writes it; a write that fails, or throws, puts the old value back.
    template <class Stored, class Write>
    int commit(Stored& cache, Stored value, Write write) {
        CacheChange<Stored> change(cache, std::move(value));
        const int code = write();
        change.keep(code == kavo::error::ok);
        return code;
    }
    /// The same for a value that is written unchanged to one design parameter.
    int commitPlain(int port, unsigned& cache, unsigned value, const DesignParameter& parameter);
    /// The same, for values of an enumeration only.
    int commitEnumerated(int port, unsigned& cache, unsigned value, const Enumeration& allowed,
                         const DesignParameter& parameter);

    template <class Stored>
    class CacheChange {
      public:
        CacheChange(Stored& cache, Stored value)
            : mCache(cache), mPrevious(std::exchange(cache, std::move(value))) {}
        ~CacheChange() {
            if (!mKept) {
                mCache = std::move(mPrevious);
            }
        }
        CacheChange(const CacheChange&) = delete;
        CacheChange& operator=(const CacheChange&) = delete;
        void keep(bool kept) { mKept = kept; }

      private:
        Stored& mCache;
        Stored mPrevious;
        bool mKept = false;
    };

    int writeDesign(int port, const DesignParameter& parameter, std::uint64_t value);
    int writeDesignTyped(int port, const DesignParameter& parameter, const void* value, int type);
    /// Writes one of the two constant words.
    int writeLevel(int port, const DesignParameter& parameter, bool level);
    using DesignWrite = std::pair<const DesignParameter&, std::uint64_t>;
    /// Stops at the first write that fails.
    int writeDesignInOrder(int port, std::initializer_list<DesignWrite> writes);
    int readDesign(int port, const DesignParameter& parameter, unsigned* out);
    int readDesignTyped(int port, const DesignParameter& parameter, void* value, int type);
    int setDesignParameter(int id, const void* value, int dmaIndex, int type);
    int getDesignParameter(int id, void* value, int dmaIndex, int type);
    static int readConstant(unsigned value, unsigned* out);
    static int readCache(unsigned value, unsigned* out);
    static int readCache(double value, double* out);
    static int readCache(const std::string& value, char* out);

    void setLowerLimit(int port, int id, unsigned from);
    void setUpperLimit(int port, int id, unsigned to);
    void setAccess(int port, int id, int flags);

    // ---- image geometry, camera input, output format ----

    int setTimeout(int port, unsigned value);
    /// Writes both halves of the frame memory, then limits the parameter that shares its side.
    int commitRegion(int port, unsigned& cache, unsigned value, const std::array<DesignParameter, 2>& halves,
                     int limitedId);
    int setCameraType(int port, unsigned value);
    int setMtuSize(int port, unsigned value);
    int setCameraAndMTUSize(int port, unsigned mtuSize, unsigned camType);
    int setSwapChannels(int port, unsigned value);
    int setCameraWidth(int port, unsigned value);
    int setWidth(int port, unsigned value);
    int setHeight(int port, unsigned value);
    int setXOffset(int port, unsigned value);
    int setYOffset(int port, unsigned value);
    int setFormat(int port, unsigned value);
    int setBitAlignment(int port, unsigned value);

    // ---- lookup table ----

    int setLutType(int port, unsigned value);
    int setLutEntry(int port, const FieldParameterInt_s* entry);
    int readLutEntry(int port, FieldParameterInt_s* entry);
    int setLutCustomFile(int port, const char* path);
    int setLutSaveFile(int port, const char* path);
    int setProcessingOffset(int port, double value);
    int setProcessingGain(int port, double value);
    int setProcessingGamma(int port, double value);
    int setProcessingInvert(int port, unsigned value);
    int commitProcessing(int port, double& cache, double value, const Limits& limits);
    int updateLutProcessing(int port);
    int loadLutFile(int port, const char* path);
    int saveLutFile(int port, const char* path);
    int writeLut(int port, const TableEntryValue::Stored& previous);

    // ---- trigger mode and state ----

    int setAreaTriggerMode(int port, unsigned value);
    int setTriggerState(int port, unsigned value);
    int switchTriggerModeAndState(int port, unsigned oldMode, unsigned oldState, unsigned newMode,
                                  unsigned newState);
    int runTriggerStep(int port, TriggerStep step);
    int triggerOutputsEnable(int port, bool enable);
    int triggerGeneratorEnable(int port, bool enable);
    int restartTriggerGenerator(int port, bool queued);
    int triggerResetQueue(int port);
    int triggerClearDownscale(int port);
    int triggerClearPulseFormDownscales(int port);
    int triggerSynchronEnable(int port, bool enable);
    void setAllTriggerAccessModesToRWC(int port);

    // ---- trigger timing ----

    int setFramesPerSecond(int port, double value);
    int readFramesPerSecond(int port, double* out);
    int setGeneratorDelay(int port, int generator, double value);
    int setGeneratorWidth(int port, int generator, double value);
    int setGeneratorDownscale(int port, int generator, unsigned value);
    int setGeneratorPhase(int port, int generator, unsigned value);
    int readGeneratorDelay(int port, int generator, double* out);
    int readGeneratorWidth(int port, int generator, double* out);
    int readGeneratorTime(int port, const DesignParameter& parameter, double* microseconds);
    int setMultiplyPulses(int port, unsigned value);
    int sendSoftwareTrigger(int port, unsigned pulses);
    int readSoftwareTriggerBusy(int port, unsigned* out);
    int readGeneratorBusy(int port, bool& isBusy);
    int readSoftwareTriggerQueue(int port, unsigned* out);
    int setQueueMode(int port, unsigned value);
    int readQueueFillLevel(int port, unsigned* out);
    int setQueueOnThreshold(int port, unsigned value);
    int setQueueOffThreshold(int port, unsigned value);
    int setQueueThreshold(int port, unsigned& cache, unsigned value, const DesignParameter& parameter);
    [[nodiscard]] double cachedPeriod(int port);

    // ---- trigger inputs and outputs, statistics, monitoring ----

    int setDebounce(int port, double value);
    int readDebounce(int port, double* out);
    int setTriggerInSource(int port, unsigned value);
    int setTriggerInPolarity(int port, unsigned value);
    int setTriggerInBypassSource(int port, unsigned value);
    int setTriggerInDownscale(int port, unsigned value);
    int setTriggerInPhase(int port, unsigned value);
    int setTriggerOutput(int port, int output, unsigned value);
    int setActionCommandSource(int port, unsigned value);
    int commitOutput(int port, unsigned& cache, unsigned value, const DesignParameter& select,
                     const DesignParameter& polarity);
    int setOutputStatisticsSource(int port, unsigned value);
    int setOutputEventSource(int port, unsigned value);
    int commitClear(int port, unsigned& cache, unsigned value, const DesignParameter& parameter);
    int clearInputPulseCount(int port, unsigned value);
    int clearOutputPulseCount(int port, unsigned value);
    int clearExceededPeriodLimits(int port, unsigned value);
    int clearMissingFrameResponse(int port, unsigned value);
    int clearMinMaxFrequency(int port, unsigned value);
    int readFrequency(int port, const DesignParameter& parameter, double* out);
    int readMonitoringFlag(int port, const std::array<unsigned, 2>& masks, unsigned* out);
    int readExceededPeriodLimits(int port, unsigned* out);
    int readMissingFrameResponse(int port, unsigned* out);

    // ---- status ----

    int readFillLevel(int port, unsigned* out);
    int readOverflow(int port, unsigned* out);
    int readCameraStatus(int port, unsigned* out);
    int readExtendedCameraStatus(int port, unsigned* out);

    // ---- configuration files ----

    bool loadPort(Fg_ConfigFileParser& parser, int port);

    kavo::templates::platform::CriticalSection mParameterLock;
    kavo::templates::platform::PropertiesFile inspectProperties;
    /// Base name of the runtime library, the first part of the inspected properties' keys.
    std::string dllBaseName;
    const std::uint32_t constZero = 0;
    const std::uint32_t constOne = 1;

    IntToIntMap map_dma_process;
    StringToIntMap map_parameter_name_parameter_id;
    StringToIntMap map_inspect_parameter_name_parameter_id;
    IntToStringMap map_parameter_index_parameter_name;
    std::array<StringToStringMap, 2> map_parameter_name_parameter_description;
    EventNameToEventIdMap map_event_name_event_id;
    EventIdToEventNameMap map_event_id_event_name;
};
