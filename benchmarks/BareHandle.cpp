#include "benchmarks/BareHandle.h"

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>

namespace {

template <class Function>
void find(void* library, Function& function, const char* name) {
    function = reinterpret_cast<Function>(dlsym(library, name));
    if (function == nullptr) {
        throw std::runtime_error(std::string("the host lacks ") + name);
    }
}

} // namespace

const Host& host() {
    static const Host functions = [] {
        // It is loaded already, with this program; it stays.
        void* library = dlopen("libgrabcore5.so", RTLD_NOW);
        Host found{};
        find(library, found.set, "Fg_setParameterWithType");
        find(library, found.get, "Fg_getParameterWithType");
        find(library, found.idByName, "Fg_getParameterIdByName");
        find(library, found.calls, "nullHostCalls");
        return found;
    }();
    return functions;
}

void callHost(unsigned long times) {
    std::uint64_t word = 0;
    for (unsigned long call = 0; call < times; ++call) {
        host().get(nullptr, static_cast<int>(call), &word, 0, anyType);
    }
}

BareHandle::BareHandle() {
    int error = 0;
    mHandle.Master = Std_entry(nullptr, &error, 0);
    if (mHandle.Master == nullptr) {
        throw std::runtime_error("the applet cannot be created: " + std::to_string(error));
    }
}

BareHandle::~BareHandle() { Fg_FreeGrabber(&mHandle); }

TemporaryFile::TemporaryFile(const char* suffix) : mFolder("/tmp/orbelline-benchmark-XXXXXX") {
    if (mkdtemp(mFolder.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    mPath = mFolder + "/file" + suffix;
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    std::filesystem::remove_all(mFolder, ignored);
}
