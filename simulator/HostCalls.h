#pragma once

#include "simulator/Visibility.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct Fg_Struct;

namespace simulator {

/// What a call on one of the three host libraries is about.
enum class CallKind {
    designLoad,     ///< QelLoadDesignFromBuffer, QelLoadQelFileWithType: a failure gives null
    designUnload,   ///< QelUnloadQelFile
    designQuery,    ///< the other Qel functions; never made to fail
    registerRead,   ///< KavoRegisterRead
    registerWrite,  ///< KavoRegisterWrite
    initialisation, ///< Fg_InitHandleSlaveAware, Fg_InitHandle: a failure gives null, its code is the last
                    ///< error
    release,        ///< Fg_FreeGrabber on an inner handle
    idLookup,       ///< Fg_getParameterIdByName
    read,           ///< Fg_getParameter, Fg_getParameterWithType: a failure leaves the buffer alone
    write,          ///< Fg_setParameter, Fg_setParameterWithType: a failure changes nothing on the board
    parameterTree,  ///< Fg_getParameterInfo: a failure gives null
    acquisition,    ///< Fg_Acquire..., Fg_stopAcquire..., Fg_getLastPicNumber...
    status,         ///< Fg_getStatusEx, Fg_getAppletId
    configuration,  ///< Fg_saveConfig, Fg_loadConfig
    shading,        ///< Fg_AllocShading, Shad_...
    lastError,      ///< Fg_getLastErrorNumber; never made to fail
    routed, ///< any call on an outer handle, which the runtime passes to the applet; never made to fail here
};

/// One call as it reached a host library.
struct Call {
    CallKind kind;
    std::string function; ///< name of the library function
    std::string name; ///< design parameter, register, runtime parameter or file; empty where there is none
    int id = 0;       ///< parameter id or register number
    unsigned dmaIndex = 0; ///< 0 where the function has none
    int type = 0;          ///< type code; 0 for an untyped call
    /// What was written (only for writes): the 32-bit words of the value, low word first; one word for an
    /// untyped call. For a field entry its value and its index; for a whole field type, index and count, then
    /// the elements.
    std::vector<std::uint32_t> values;
    std::int64_t result = 0; ///< the answer; for a pointer 1, or 0 for null
};

/// The calls that reach libqelrt, libkavoiolibrt and libgrabcore5 in this process: recorded in order when
/// asked for, and made to fail when told. Every function may be called from any thread.
class SIMULATOR_PUBLIC HostCalls {
  public:
    HostCalls(const HostCalls&) = delete;
    HostCalls& operator=(const HostCalls&) = delete;

    /// Switches recording on or off; it is off at first. Switching keeps what was recorded.
    void record(bool on);
    bool isRecording() const;
    void clear();
    /// A copy of what was recorded since the last clear().
    std::vector<Call> calls() const;
    /// Those of one kind.
    std::vector<Call> calls(CallKind kind) const;

    /// Makes one call of a kind fail.
    /// \param nth   which one from now on: 1 is the next
    /// \param code  the answer (a null pointer where the function gives one)
    /// \param name  count only calls that concern this name (see Call::name); empty: every call of the kind
    void failOnce(CallKind kind, unsigned nth, int code, const std::string& name = {});
    /// The same for the nth call and every later one, until stopFailing().
    void failFrom(CallKind kind, unsigned nth, int code, const std::string& name = {});
    /// Forgets every failure that was asked for.
    void stopFailing();
    /// Failures that failOnce() asked for and that have not happened yet.
    std::size_t pendingFailures() const;

    /// Makes libgrabcore5.so lack a symbol: dlsym answers null for it until provideAllSymbols(). Takes
    /// effect for look-ups from now on; a pointer that was looked up before stays good.
    /// \throws std::invalid_argument  for a name that the library does not export
    void lackSymbol(const std::string& name);
    void provideAllSymbols();

    /// Recording off and empty, no failures, no symbol lacking.
    void reset();

    /// For the host libraries: whether anything is recorded or made to fail; one load, so that calls stay
    /// cheap.
    bool isListening() const;
    /// For the host libraries: whether this call shall fail, and with which code.
    bool shallFail(CallKind kind, const std::string& name, int& code);
    /// For the host libraries: notes a call if recording is on.
    void note(Call call);

  private:
    friend SIMULATOR_PUBLIC HostCalls& hostCalls();
    HostCalls();
    ~HostCalls();

    struct Private;
    std::unique_ptr<Private> d;
};

/// The calls of this process.
SIMULATOR_PUBLIC HostCalls& hostCalls();

} // namespace simulator
