#pragma once

#include "grabber_basis/Fg_Log.h"

#include <string>

namespace kavo::test {

/// A log whose file is open, which the applet's own never is.
class OpenLog : public Fg_Log {
  public:
    explicit OpenLog(const std::string& path) : Fg_Log(nullptr) {
        mHandleToFile = std::fopen(path.c_str(), "w");
    }
    bool isOpen() const { return mHandleToFile != nullptr; }
};

} // namespace kavo::test
