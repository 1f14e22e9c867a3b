#pragma once

#include "platform/FrameGrabber.h"

#include <memory>

namespace simulator {

class InnerHandle;
class OuterHandle;

/// What stands behind a handle: exactly one of the two.
struct RuntimeHandle {
    std::shared_ptr<InnerHandle> inner;
    std::shared_ptr<OuterHandle> outer;
};

/// The handles that are open. A pointer that a program gives is looked up here and never followed before.
void keepHandle(const Fg_Struct* handle, RuntimeHandle kept);
/// Empty for a pointer that is no open handle, null included.
RuntimeHandle findHandle(const Fg_Struct* handle);
void forgetHandle(const Fg_Struct* handle);

} // namespace simulator
