#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Image memory of a program: the runtime's handle for it points here. Never changed once made, but for its
/// use.
struct dma_mem {
    std::vector<std::uint8_t*> pictures; ///< at least one
    std::size_t pictureBytes = 0;
    std::atomic<bool> isInUse{false}; ///< an acquisition fills it
};
