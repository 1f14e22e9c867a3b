#include "tests/support/LibraryCalls.h"

#include "simulator/HostCalls.h"

#include <dlfcn.h>

namespace kavo::test {

std::vector<std::string>& libraryCalls() {
    static std::vector<std::string> calls;
    return calls;
}

std::map<std::string, void*>& replacedSymbols() {
    static std::map<std::string, void*> symbols;
    return symbols;
}

bool& librariesAreMissing() {
    static bool missing = false;
    return missing;
}

} // namespace kavo::test

using kavo::test::libraryCalls;

/// The linker sees the wrapped names in shared libraries too, which could not refer to hidden functions.
#define EXPORTED __attribute__((visibility("default")))

// The linker passes the wrapped functions' calls from this program's objects to __wrap_ and gives the
// system's own as __real_.
extern "C" {

EXPORTED void* __real_dlopen(const char* file, int mode);
EXPORTED void* __real_dlsym(void* library, const char* name);
EXPORTED int __real_dlclose(void* library);
EXPORTED char* __real_setlocale(int category, const char* name);

EXPORTED void* __wrap_dlopen(const char* file, int mode);
EXPORTED void* __wrap_dlsym(void* library, const char* name);
EXPORTED int __wrap_dlclose(void* library);
EXPORTED char* __wrap_setlocale(int category, const char* name);

void* __wrap_dlopen(const char* file, int mode) {
    libraryCalls().push_back("open " + std::string(file) + ' ' + std::to_string(mode));
    return kavo::test::librariesAreMissing() ? nullptr : __real_dlopen(file, mode);
}

void* __wrap_dlsym(void* library, const char* name) {
    libraryCalls().push_back("symbol " + std::string(name));
    const auto& replaced = kavo::test::replacedSymbols();
    const auto found = replaced.find(name);
    return found != replaced.end() ? found->second : __real_dlsym(library, name);
}

int __wrap_dlclose(void* library) {
    const bool unloaded = !simulator::hostCalls().calls(simulator::CallKind::designUnload).empty();
    libraryCalls().push_back(unloaded ? "close after unloading" : "close");
    return __real_dlclose(library);
}

char* __wrap_setlocale(int category, const char* name) {
    libraryCalls().push_back("locale " + std::to_string(category) + ' ' +
                             (name != nullptr ? name : "(query)"));
    return __real_setlocale(category, name);
}
}
