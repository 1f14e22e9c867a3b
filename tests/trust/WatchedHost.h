#pragma once

#include "platform/FrameGrabber.h"
#include "platform/RegisterAccess.h"

#include <atomic>
#include <cstdint>
#include <vector>

/// What applets ask of the runtime through its parameter functions, per inner handle, and of a board's
/// registers. A program gets it by linking WatchedHost.cpp and wrapping dlsym, KavoRegisterRead and
/// KavoRegisterWrite.
///
/// The entries of a handle are kept without a lock: what keeps them apart is the applet's own lock. Two
/// dispatches that overlap are counted, and are a data race for whoever looks for those.
class WatchedHost {
  public:
    struct Write {
        int id;
        unsigned dmaIndex;
        std::uint32_t value; ///< low word
    };

    struct Handle {
        std::atomic<const void*> handle{nullptr};
        std::atomic<const void*> device{nullptr}; ///< see watchRegisters
        std::atomic<int> inside{0};
        std::atomic<long> overlaps{0};
        std::atomic<long> entries{0};
        long unguardedEntries = 0;
        std::vector<Write> writes;
    };

    /// Forgets all handles; no applet may live.
    static void forget();
    /// The record of an inner handle.
    static Handle& of(const Fg_Struct* inner);
    /// Counts the accesses to the registers of a device as entries of an inner handle, which is to be the only
    /// one of the device. Registers of other devices are not watched.
    static void watchRegisters(const QXdevice* device, const Fg_Struct* inner);
};
