#pragma once

#include "platform/FrameGrabber.h"

#include <string>
#include <string_view>
#include <type_traits>

#define EXPORTED extern "C" __attribute__((visibility("default")))

/// An applet that passes every call on to the right one and does one thing wrong, which the environment
/// names: the library that it stands before is in ORBELLINE_RIGHT_APPLET, its fault in
/// ORBELLINE_APPLET_FAULT.
namespace wrong {

/// Whether the applet has this fault.
bool has(std::string_view fault);
/// What stands behind a fault's name and a colon; empty where the applet has another fault.
std::string textOf(std::string_view fault);

/// A function of the right applet.
void* rightFunction(const char* name);

#define RIGHT(name) reinterpret_cast<decltype(::name)*>(wrong::rightFunction(#name))

inline bool isMissing(const Fg_Struct* handle) { return handle == nullptr || handle->Master == nullptr; }

/// Passes a call on. With the fault "answersNoHandle" a missing handle is as good as any.
template <typename Result, typename... Values>
Result passOn(Result (*right)(Fg_Struct*, Values...), Fg_Struct* handle,
              std::common_type_t<Values>... values) {
    if (isMissing(handle) && has("answersNoHandle")) {
        static int something = 0;
        if constexpr (std::is_pointer_v<Result>)
            return reinterpret_cast<Result>(&something);
        else
            return static_cast<Result>(1);
    }
    return right(handle, values...);
}

} // namespace wrong
