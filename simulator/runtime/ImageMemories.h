#pragma once

#include "platform/FrameGrabber.h"
#include "simulator/model/BoardModel.h"
#include "simulator/model/ImageMemory.h"

#include <memory>

namespace simulator {

/// Keeps an image memory for a handle; the pointer is its handle.
/// \param board  the board whose acquisitions may fill it
dma_mem* keepMemory(const Fg_Struct* owner, BoardModel& board, std::shared_ptr<dma_mem> memory);
/// Null for a pointer that is no image memory; it is compared and never followed.
std::shared_ptr<dma_mem> findMemory(const dma_mem* memory);
/// Releases a memory, or refuses: -2070 for an unknown one, busy while an acquisition fills it.
int releaseMemory(const dma_mem* memory);
/// Releases every memory of a handle; acquisitions that fill one are stopped.
void releaseMemoriesOf(const Fg_Struct* owner);

} // namespace simulator
