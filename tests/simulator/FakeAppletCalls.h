#pragma once

#include "platform/FrameGrabber.h"

#include <string>

namespace simulator::tests {

/// What reached the fake applet last.
struct FakeAppletCalls {
    std::string last;
    QXdevice* device = nullptr;
    int slave = -1;
    int id = 0;
    unsigned dmaIndex = 0;
    int type = -1;
    unsigned value = 0;
    dma_mem* memory = nullptr;
};

} // namespace simulator::tests
