#pragma once

#include "platform/ErrorCodes.h"

/// The last error code of a handle. A new code replaces the one before; 0 means success.
class Fg_Error {
  public:
    /// Stores a code and returns it.
    int setErr(int code) {
        error_number_buffer = code;
        return code;
    }

    int getErrorNumberBuffer() const { return error_number_buffer; }

    /// Errors of a second level are not supported: keeps the stored code and returns -2130.
    int setErrLevel2(int /*code*/, const char* /*text*/) { return kavo::error::notSupported; }

  private:
    int error_number_buffer = kavo::error::ok;
};
