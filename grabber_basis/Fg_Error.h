#pragma once

#include "platform/ErrorCodes.h"

#include <atomic>

/// The last error code of a handle. A new code replaces the one before; 0 means success. Threads that share a
/// handle share it: each finds the code that was stored last.
class Fg_Error {
  public:
    /// Stores a code and returns it.
    int setErr(int code) {
        error_number_buffer.store(code, std::memory_order_relaxed);
        return code;
    }

    int getErrorNumberBuffer() const { return error_number_buffer.load(std::memory_order_relaxed); }

    /// Errors of a second level are not supported: keeps the stored code and returns -2130.
    int setErrLevel2(int /*code*/, const char* /*text*/) { return kavo::error::notSupported; }

  private:
    std::atomic<int> error_number_buffer{kavo::error::ok};
};
