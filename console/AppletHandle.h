#pragma once

#include "console/HostFunctions.h"
#include "console/HostLibrary.h"

#include <string>

namespace orbctl {

/// A board opened with an applet; closed when this goes.
class AppletHandle {
  public:
    static constexpr unsigned numberOfPorts = 2;

    /// \param runtime  the frame-grabber runtime; stays open as long as this
    /// \param applet   applet library, as the runtime looks for it
    /// \throws Failure (notFound where the applet or the board is missing, refused where the applet cannot
    /// start)
    AppletHandle(const HostLibrary& runtime, const std::string& applet, unsigned board, bool slave);
    ~AppletHandle();
    AppletHandle(const AppletHandle&) = delete;
    AppletHandle& operator=(const AppletHandle&) = delete;

    const HostFunctions& functions() const { return mFunctions; }
    Fg_Struct* handle() const { return mHandle; }

    /// Typed access to a parameter: 0 or the error code.
    int set(int id, const void* value, unsigned port, int type) const;
    int get(int id, void* value, unsigned port, int type) const;
    /// The applet's one-sentence description of a parameter; empty where it has none.
    std::string description(const std::string& parameterName, unsigned port) const;

  private:
    HostLibrary mRuntime;
    HostFunctions mFunctions;
    Fg_Struct* mHandle = nullptr;
};

} // namespace orbctl
