#pragma once

#include "platform/FrameGrabber.h"

#include <gtest/gtest.h>

#include <string>

namespace kavo::test {

/// The XML description of a port, taken as a program does: asked for its size, then for its text.
inline std::string xmlDescription(Fg_Struct* handle, int port) {
    unsigned size = 0;
    EXPECT_EQ(Fg_getParameterInfoXML(handle, port, nullptr, &size), 0);
    std::string text(size, '#');
    EXPECT_EQ(Fg_getParameterInfoXML(handle, port, text.data(), &size), 0);
    EXPECT_EQ(size, text.size());
    EXPECT_EQ(text.back(), '\0');
    text.pop_back();
    return text;
}

} // namespace kavo::test
