#include "simulator/runtime/RuntimeHandle.h"

#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace simulator {
namespace {

struct OpenHandles {
    std::shared_mutex lock;
    std::unordered_map<const Fg_Struct*, RuntimeHandle> handles;
};

OpenHandles& openHandles() {
    static OpenHandles handles;
    return handles;
}

} // namespace

void keepHandle(const Fg_Struct* handle, RuntimeHandle kept) {
    OpenHandles& open = openHandles();
    const std::unique_lock<std::shared_mutex> guard(open.lock);
    open.handles[handle] = std::move(kept);
}

RuntimeHandle findHandle(const Fg_Struct* handle) {
    OpenHandles& open = openHandles();
    const std::shared_lock<std::shared_mutex> guard(open.lock);
    const auto found = open.handles.find(handle);
    return found == open.handles.end() ? RuntimeHandle() : found->second;
}

void forgetHandle(const Fg_Struct* handle) {
    OpenHandles& open = openHandles();
    RuntimeHandle last; // what the handle held ends after the lock is left
    const std::unique_lock<std::shared_mutex> guard(open.lock);
    const auto found = open.handles.find(handle);
    if (found != open.handles.end()) {
        last = std::move(found->second);
        open.handles.erase(found);
    }
}

} // namespace simulator
