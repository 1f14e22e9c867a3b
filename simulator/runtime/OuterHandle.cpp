#include "simulator/runtime/OuterHandle.h"

#include "simulator/RuntimeCodes.h"

#include <dlfcn.h>

namespace simulator {
namespace {

#define SIMULATOR_SYMBOL_NAME(name) #name,
constexpr const char* symbolNames[] = {SIMULATOR_BOUND_SYMBOLS(SIMULATOR_SYMBOL_NAME)};
#undef SIMULATOR_SYMBOL_NAME

using StandardEntry = decltype(Std_entry);

/// Calls an applet's creation; whatever it throws ends here, while the library is still open.
void* createApplet(StandardEntry* entry, QXdevice* device, int slave, int& error) {
    try {
        return entry(device, &error, slave);
    } catch (...) {
        error = code::appletThrew;
        return nullptr;
    }
}

} // namespace

void OuterHandle::LibraryCloser::operator()(void* library) const { dlclose(library); }

OuterHandle::OuterHandle(Library library, Board& board) : mBoard(board), mLibrary(std::move(library)) {
    for (unsigned symbol = 0; symbol < numberOfBoundSymbols; ++symbol) {
        mExports[symbol] = dlsym(mLibrary.get(), symbolNames[symbol]);
    }
}

OuterHandle::~OuterHandle() = default;

std::shared_ptr<OuterHandle> OuterHandle::open(const char* appletFile, Board& board, int slave, int& error) {
    Library library(appletFile != nullptr ? dlopen(appletFile, RTLD_NOW | RTLD_LOCAL) : nullptr);
    auto* entry =
        library != nullptr ? reinterpret_cast<StandardEntry*>(dlsym(library.get(), "Std_entry")) : nullptr;
    if (entry == nullptr) {
        error = code::noApplet;
        return nullptr;
    }
    std::shared_ptr<OuterHandle> handle(new OuterHandle(std::move(library), board));
    error = 0;
    handle->mHandle.Master = createApplet(entry, board.device(), slave, error);
    if (handle->mHandle.Master == nullptr) {
        error = error != 0 ? error : kavo::error::initialisationFailed;
        return nullptr;
    }
    return handle;
}

} // namespace simulator
