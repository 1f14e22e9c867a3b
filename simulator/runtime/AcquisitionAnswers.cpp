#include "platform/ParameterIds.h"
#include "simulator/runtime/Answers.h"
#include "simulator/runtime/ImageMemories.h"
#include "simulator/runtime/Service.h"
#include "simulator/runtime/StatusSelector.h"
#include "simulator/RuntimeCodes.h"

/// Acquisition and its status.

using simulator::Call;
using simulator::CallKind;
using simulator::InnerHandle;
using simulator::serve;

namespace {

namespace code = simulator::code;

auto describeDma(int dmaIndex, int number) {
    return [dmaIndex, number](Call& call, InnerHandle*) {
        call.dmaIndex = static_cast<unsigned>(dmaIndex);
        call.id = number;
    };
}

/// Starts an acquisition; a memory that is no memory is refused.
int acquire(InnerHandle& inner, int dmaIndex, int frames, const dma_mem* memory) {
    std::shared_ptr<dma_mem> known = simulator::findMemory(memory);
    if (dmaIndex < 0 || (memory != nullptr && known == nullptr)) {
        return inner.conclude(code::invalidParameter);
    }
    const auto channel = static_cast<unsigned>(dmaIndex);
    return inner.conclude(inner.model().startAcquisition(channel, frames, std::move(known), &inner));
}

int stop(InnerHandle& inner, int dmaIndex, const dma_mem* memory) {
    return inner.conclude(inner.model().stopAcquisition(static_cast<unsigned>(dmaIndex), memory));
}

int runtimeValue(InnerHandle& inner, int id, unsigned dmaIndex) {
    std::uint32_t value = 0;
    const int result = inner.model().readRuntimeParameter(id, dmaIndex, value);
    return result == code::ok ? static_cast<int>(value) : result;
}

int status(InnerHandle& inner, int selector, unsigned dmaIndex, const dma_mem* memory) {
    if (dmaIndex >= simulator::Board::numberOfPorts) {
        return code::invalidParameter;
    }
    switch (static_cast<simulator::StatusSelector>(selector)) {
    case simulator::StatusSelector::lastPicture:
        return inner.model().lastPicture(dmaIndex, memory);
    case simulator::StatusSelector::lostPictures:
        return static_cast<int>(inner.model().lostPictures(dmaIndex));
    case simulator::StatusSelector::acquisitionRuns:
        return runtimeValue(inner, FG_DMASTATUS, dmaIndex);
    case simulator::StatusSelector::transferredBytes:
        return runtimeValue(inner, FG_TRANSFER_LEN, dmaIndex);
    }
    return code::invalidParameter;
}

} // namespace

#define SERVICE(kind, name)                                                                                  \
    simulator::Service { CallKind::kind, simulator::symbolNumber_##name, #name }

int answer_Fg_Acquire(Fg_Struct* handle, int dmaIndex, int frames) {
    return serve<decltype(Fg_AcquireEx)>(
        {CallKind::acquisition, simulator::symbolNumber_Fg_AcquireEx, "Fg_Acquire"}, handle,
        describeDma(dmaIndex, frames),
        [&](InnerHandle& inner) { return acquire(inner, dmaIndex, frames, nullptr); }, dmaIndex, frames, 0,
        static_cast<dma_mem*>(nullptr));
}

int answer_Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory) {
    return serve<decltype(Fg_AcquireEx)>(
        SERVICE(acquisition, Fg_AcquireEx), handle, describeDma(dmaIndex, frames),
        [&](InnerHandle& inner) { return acquire(inner, dmaIndex, frames, memory); }, dmaIndex, frames, flag,
        memory);
}

int answer_Fg_stopAcquire(Fg_Struct* handle, int dmaIndex) {
    return serve<decltype(Fg_stopAcquireEx)>(
        {CallKind::acquisition, simulator::symbolNumber_Fg_stopAcquireEx, "Fg_stopAcquire"}, handle,
        describeDma(dmaIndex, 0), [&](InnerHandle& inner) { return stop(inner, dmaIndex, nullptr); },
        dmaIndex, static_cast<dma_mem*>(nullptr), 0);
}

int answer_Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag) {
    return serve<decltype(Fg_stopAcquireEx)>(
        SERVICE(acquisition, Fg_stopAcquireEx), handle, describeDma(dmaIndex, 0),
        [&](InnerHandle& inner) { return stop(inner, dmaIndex, memory); }, dmaIndex, memory, flag);
}

int answer_Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory) {
    return serve<decltype(Fg_getLastPicNumberEx)>(
        SERVICE(acquisition, Fg_getLastPicNumberEx), handle, describeDma(dmaIndex, 0),
        [&](InnerHandle& inner) {
            return inner.conclude(inner.model().lastPicture(static_cast<unsigned>(dmaIndex), memory));
        },
        dmaIndex, memory);
}

int answer_Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout,
                                         dma_mem* memory) {
    return serve<decltype(Fg_getLastPicNumberBlockingEx)>(
        SERVICE(acquisition, Fg_getLastPicNumberBlockingEx), handle, describeDma(dmaIndex, picture),
        [&](InnerHandle& inner) {
            return inner.conclude(
                inner.model().waitForPicture(static_cast<unsigned>(dmaIndex), picture, timeout, memory));
        },
        picture, dmaIndex, timeout, memory);
}

int answer_Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory) {
    return serve<decltype(Fg_getStatusEx)>(
        SERVICE(status, Fg_getStatusEx), handle, describeDma(static_cast<int>(dmaIndex), param),
        [&](InnerHandle& inner) { return inner.conclude(status(inner, param, dmaIndex, memory)); }, param,
        data, dmaIndex, memory);
}

int answer_Fg_getAppletId(Fg_Struct* handle, const char* name) {
    return serve<decltype(Fg_getAppletId)>(
        SERVICE(status, Fg_getAppletId), handle,
        [&](Call& call, InnerHandle*) { call.name = name != nullptr ? name : ""; },
        [](InnerHandle& inner) { return inner.conclude(inner.designType()); }, name);
}
