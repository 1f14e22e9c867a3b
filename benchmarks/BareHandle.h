#pragma once

#include "platform/FrameGrabber.h"

#include <string>

/// The calls that reach the host, past the applet's functions of the same names.
struct Host {
    decltype(&::Fg_setParameterWithType) set;
    decltype(&::Fg_getParameterWithType) get;
    decltype(&::Fg_getParameterIdByName) idByName;
    unsigned long (*calls)();
};
const Host& host();

/// How often an operation reads, writes or looks up a parameter of the host.
template <class Operation>
unsigned long hostCallsOf(Operation operation) {
    const unsigned long before = host().calls();
    operation();
    return host().calls() - before;
}

/// As many bare calls on the host.
void callHost(unsigned long times);

constexpr int anyType = 2;

/// An applet over the host that does nothing.
class BareHandle {
  public:
    BareHandle();
    ~BareHandle();
    BareHandle(const BareHandle&) = delete;
    BareHandle& operator=(const BareHandle&) = delete;

    Fg_Struct* get() { return &mHandle; }

  private:
    Fg_Struct mHandle{nullptr};
};

/// A file name in a temporary folder that goes with the object.
class TemporaryFile {
  public:
    explicit TemporaryFile(const char* suffix);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const char* path() const { return mPath.c_str(); }

  private:
    std::string mFolder;
    std::string mPath;
};
