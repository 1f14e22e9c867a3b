#include "simulator/runtime/Answers.h"
#include "simulator/runtime/Service.h"
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

int refuse(InnerHandle& inner) { return inner.conclude(code::notSupported); }

} // namespace

#define SERVICE(kind, name)                                                                                  \
    simulator::Service { CallKind::kind, simulator::symbolNumber_##name, #name }

int answer_Fg_Acquire(Fg_Struct* handle, int dmaIndex, int frames) {
    return serve<decltype(Fg_AcquireEx)>(
        {CallKind::acquisition, simulator::symbolNumber_Fg_AcquireEx, "Fg_Acquire"}, handle,
        describeDma(dmaIndex, frames), refuse, dmaIndex, frames, 0, static_cast<dma_mem*>(nullptr));
}

int answer_Fg_AcquireEx(Fg_Struct* handle, int dmaIndex, int frames, int flag, dma_mem* memory) {
    return serve<decltype(Fg_AcquireEx)>(SERVICE(acquisition, Fg_AcquireEx), handle,
                                         describeDma(dmaIndex, frames), refuse, dmaIndex, frames, flag,
                                         memory);
}

int answer_Fg_stopAcquire(Fg_Struct* handle, int dmaIndex) {
    return serve<decltype(Fg_stopAcquireEx)>(
        {CallKind::acquisition, simulator::symbolNumber_Fg_stopAcquireEx, "Fg_stopAcquire"}, handle,
        describeDma(dmaIndex, 0), refuse, dmaIndex, static_cast<dma_mem*>(nullptr), 0);
}

int answer_Fg_stopAcquireEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory, int flag) {
    return serve<decltype(Fg_stopAcquireEx)>(SERVICE(acquisition, Fg_stopAcquireEx), handle,
                                             describeDma(dmaIndex, 0), refuse, dmaIndex, memory, flag);
}

int answer_Fg_getLastPicNumberEx(Fg_Struct* handle, int dmaIndex, dma_mem* memory) {
    return serve<decltype(Fg_getLastPicNumberEx)>(SERVICE(acquisition, Fg_getLastPicNumberEx), handle,
                                                  describeDma(dmaIndex, 0), refuse, dmaIndex, memory);
}

int answer_Fg_getLastPicNumberBlockingEx(Fg_Struct* handle, int picture, int dmaIndex, int timeout,
                                         dma_mem* memory) {
    return serve<decltype(Fg_getLastPicNumberBlockingEx)>(SERVICE(acquisition, Fg_getLastPicNumberBlockingEx),
                                                          handle, describeDma(dmaIndex, picture), refuse,
                                                          picture, dmaIndex, timeout, memory);
}

int answer_Fg_getStatusEx(Fg_Struct* handle, int param, int data, unsigned dmaIndex, dma_mem* memory) {
    return serve<decltype(Fg_getStatusEx)>(SERVICE(status, Fg_getStatusEx), handle,
                                           describeDma(static_cast<int>(dmaIndex), param), refuse, param,
                                           data, dmaIndex, memory);
}

int answer_Fg_getAppletId(Fg_Struct* handle, const char* name) {
    return serve<decltype(Fg_getAppletId)>(
        SERVICE(status, Fg_getAppletId), handle,
        [&](Call& call, InnerHandle*) { call.name = name != nullptr ? name : ""; },
        [](InnerHandle& inner) { return inner.conclude(inner.designType()); }, name);
}
