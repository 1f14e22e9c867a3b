#include "console/HostLibrary.h"

#include "console/Failure.h"

#include <dlfcn.h>

namespace orbctl {

HostLibrary HostLibrary::open(const std::string& file, const std::string& role) {
    HostLibrary library;
    library.mFile = file;
    library.mHandle = std::shared_ptr<void>(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL), [](void* handle) {
        if (handle != nullptr)
            dlclose(handle);
    });
    if (library.isOpen())
        return library;
    const char* const reason = dlerror();
    throw Failure(ExitStatus::notFound,
                  "the " + role + " " + file + " cannot be opened: " + (reason == nullptr ? "" : reason));
}

HostLibrary HostLibrary::borrow(void* handle, const std::string& file) {
    HostLibrary library;
    library.mHandle = std::shared_ptr<void>(handle, [](void*) {});
    library.mFile = file;
    return library;
}

void* HostLibrary::symbol(const char* name) const { return isOpen() ? dlsym(mHandle.get(), name) : nullptr; }

} // namespace orbctl
