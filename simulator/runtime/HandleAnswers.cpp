#include "platform/RuntimeForPrograms.h"
#include "simulator/runtime/Answers.h"
#include "simulator/runtime/ImageMemories.h"
#include "simulator/runtime/Service.h"
#include "simulator/RuntimeCodes.h"
#include "simulator/SceneFile.h"

#include <iostream>

/// Opening and closing handles.

using simulator::CallKind;
using simulator::InnerHandle;
using simulator::OuterHandle;

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

namespace code = simulator::code;

/// What the last opening of a handle came to: the answer to a question for the last error without a handle.
/// Threads that open handles at the same time do not answer for each other.
thread_local int lastOpeningError = 0;

Fg_Struct* openInner(QXdevice* device, fpga_design* design) {
    simulator::Board* board = simulator::Board::of(device);
    const simulator::SharedDesign known = simulator::findDesign(design);
    if (board == nullptr || known == nullptr) {
        lastOpeningError = code::invalidParameter;
        return nullptr;
    }
    auto inner = std::make_shared<InnerHandle>(*board, known);
    Fg_Struct* handle = inner->handle();
    simulator::keepHandle(handle, {std::move(inner), nullptr});
    lastOpeningError = 0;
    return handle;
}

Fg_Struct* observedOpening(const char* function, const char* name, QXdevice* device, fpga_design* design,
                           int slave) {
    return simulator::observed(
        CallKind::initialisation, function,
        [&](simulator::Call& call) {
            call.name = name != nullptr ? name : "";
            call.id = slave;
        },
        [&] { return openInner(device, design); }, [](int code) { lastOpeningError = code; });
}

simulator::Board* boardOfNumber(unsigned number) {
    return number < simulator::Board::numberOfBoards ? &simulator::Board::at(number) : nullptr;
}

/// A program that only knows the runtime has no other place for words.
bool setScene(simulator::Board& board) {
    try {
        simulator::setSceneFromEnvironment(board);
        return true;
    } catch (const std::exception& mistake) {
        std::cerr << "board in software: " << mistake.what() << std::endl;
        return false;
    }
}

} // namespace

Fg_Struct* answer_Fg_InitHandleSlaveAware(const char* name, QXdevice* device, fpga_design* design,
                                          int slave) {
    return observedOpening("Fg_InitHandleSlaveAware", name, device, design, slave);
}

Fg_Struct* answer_Fg_InitHandle(const char* name, QXdevice* device, fpga_design* design) {
    return observedOpening("Fg_InitHandle", name, device, design, 0);
}

int answer_Fg_FreeGrabber(Fg_Struct* handle) {
    const simulator::RuntimeHandle keptUntilTheEnd = simulator::findHandle(handle);
    const int result = simulator::serve<decltype(Fg_FreeGrabber)>(
        {CallKind::release, simulator::symbolNumber_Fg_FreeGrabber, "Fg_FreeGrabber"}, handle,
        [](simulator::Call&, InnerHandle*) {}, [](InnerHandle&) { return code::ok; });
    if (keptUntilTheEnd.outer != nullptr || result == code::ok) {
        simulator::releaseMemoriesOf(handle);
        simulator::forgetHandle(handle);
    }
    return result;
}

int answer_Fg_getLastErrorNumber(Fg_Struct* handle) {
    if (handle == nullptr) {
        return simulator::observed(
            CallKind::lastError, "Fg_getLastErrorNumber", [](simulator::Call&) {},
            [] { return lastOpeningError; });
    }
    return simulator::serve<decltype(Fg_getLastErrorNumber)>(
        {CallKind::lastError, simulator::symbolNumber_Fg_getLastErrorNumber, "Fg_getLastErrorNumber"}, handle,
        [](simulator::Call&, InnerHandle*) {}, [](InnerHandle& inner) { return inner.lastError(); });
}

EXPORTED Fg_Struct* Fg_OpenBoard(const char* appletFile, unsigned board, int slave, int* error) {
    int unheard = 0;
    int& outcome = error != nullptr ? *error : unheard;
    simulator::Board* wanted = boardOfNumber(board);
    if (wanted == nullptr) {
        outcome = code::noBoard;
        return nullptr;
    }
    if (!setScene(*wanted)) {
        outcome = code::noScene;
        return nullptr;
    }
    std::shared_ptr<OuterHandle> outer = OuterHandle::open(appletFile, *wanted, slave, outcome);
    if (outer == nullptr) {
        return nullptr;
    }
    Fg_Struct* handle = outer->handle();
    simulator::keepHandle(handle, {nullptr, std::move(outer)});
    return handle;
}

EXPORTED void* Fg_AppletLibrary(Fg_Struct* handle) {
    const simulator::RuntimeHandle found = simulator::findHandle(handle);
    return found.outer != nullptr ? found.outer->library() : nullptr;
}
