#include "simulator/runtime/ImageMemories.h"

#include "platform/RuntimeForPrograms.h"
#include "simulator/runtime/InnerHandle.h"
#include "simulator/runtime/OuterHandle.h"
#include "simulator/runtime/RuntimeHandle.h"
#include "simulator/RuntimeCodes.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>
#include <vector>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace simulator {
namespace {

struct KeptMemory {
    const Fg_Struct* owner;
    BoardModel* board;
    std::shared_ptr<dma_mem> memory;
};

struct KeptMemories {
    std::mutex lock;
    std::map<const dma_mem*, KeptMemory> memories;
};

KeptMemories& keptMemories() {
    static KeptMemories memories;
    return memories;
}

/// The board behind a handle of either kind, or null.
Board* boardOf(const Fg_Struct* handle) {
    const RuntimeHandle found = findHandle(handle);
    if (found.inner != nullptr) {
        return &found.inner->board();
    }
    return found.outer != nullptr ? &found.outer->board() : nullptr;
}

} // namespace

dma_mem* keepMemory(const Fg_Struct* owner, BoardModel& board, std::shared_ptr<dma_mem> memory) {
    KeptMemories& kept = keptMemories();
    dma_mem* handle = memory.get();
    const std::lock_guard<std::mutex> guard(kept.lock);
    kept.memories[handle] = {owner, &board, std::move(memory)};
    return handle;
}

std::shared_ptr<dma_mem> findMemory(const dma_mem* memory) {
    KeptMemories& kept = keptMemories();
    const std::lock_guard<std::mutex> guard(kept.lock);
    const auto found = kept.memories.find(memory);
    return found == kept.memories.end() ? nullptr : found->second.memory;
}

int releaseMemory(const dma_mem* memory) {
    KeptMemories& kept = keptMemories();
    const std::lock_guard<std::mutex> guard(kept.lock);
    const auto found = kept.memories.find(memory);
    if (found == kept.memories.end()) {
        return code::invalidParameter;
    }
    if (found->second.memory->isInUse) {
        return code::busy;
    }
    kept.memories.erase(found);
    return code::ok;
}

void releaseMemoriesOf(const Fg_Struct* owner) {
    KeptMemories& kept = keptMemories();
    const std::lock_guard<std::mutex> guard(kept.lock);
    for (auto entry = kept.memories.begin(); entry != kept.memories.end();) {
        if (entry->second.owner == owner) {
            entry->second.board->stopAcquisitionsInto(entry->first);
            entry = kept.memories.erase(entry);
        } else {
            ++entry;
        }
    }
}

} // namespace simulator

EXPORTED dma_mem* Fg_CreateImageMemory(Fg_Struct* handle, void* const* pictures, unsigned count,
                                       std::size_t pictureBytes) {
    simulator::Board* board = simulator::boardOf(handle);
    const auto isNull = [](const void* picture) { return picture == nullptr; };
    if (board == nullptr || pictures == nullptr || count == 0 ||
        std::any_of(pictures, pictures + count, isNull)) {
        return nullptr;
    }
    auto memory = std::make_shared<dma_mem>();
    std::transform(pictures, pictures + count, std::back_inserter(memory->pictures),
                   [](void* picture) { return static_cast<std::uint8_t*>(picture); });
    memory->pictureBytes = pictureBytes;
    return simulator::keepMemory(handle, board->model(), std::move(memory));
}

EXPORTED int Fg_ReleaseImageMemory(Fg_Struct* handle, dma_mem* memory) {
    return simulator::boardOf(handle) != nullptr ? simulator::releaseMemory(memory)
                                                 : simulator::code::noHandle;
}
