#pragma once

#include "simulator/Observed.h"
#include "simulator/runtime/InnerHandle.h"
#include "simulator/runtime/OuterHandle.h"
#include "simulator/runtime/RuntimeHandle.h"
#include "simulator/RuntimeCodes.h"

#include <utility>

namespace simulator {

/// One function of the runtime: how it is recorded, and which export of an applet answers it on an outer
/// handle.
struct Service {
    CallKind kind;
    SymbolNumber routedTo;
    const char* function;
};

/// Passes a call on an outer handle to the applet's export.
template <class Function, class... Arguments>
auto route(const Service& service, OuterHandle& outer, Arguments... arguments) {
    using Result = decltype(std::declval<Function*>()(outer.handle(), arguments...));
    HostCalls& calls = hostCalls();
    if (calls.isListening()) {
        Call call{};
        call.kind = CallKind::routed;
        call.function = service.function;
        calls.note(std::move(call));
    }
    Function* exported = outer.exported<Function>(service.routedTo);
    return exported != nullptr ? exported(outer.handle(), arguments...)
                               : failedResult<Result>(code::notAvailable);
}

/// Answers a call on an inner handle, or passes it on for an outer one.
/// \tparam Function  type of the applet's export
/// \param describe   fills the record: describe(call, inner); inner may be null
/// \param perform    answers the call: perform(inner)
/// \param arguments  what the applet's export takes after the handle
template <class Function, class Describe, class Perform, class... Arguments>
auto serve(const Service& service, Fg_Struct* handle, Describe describe, Perform perform,
           Arguments... arguments) {
    using Result = decltype(perform(std::declval<InnerHandle&>()));
    const RuntimeHandle found = findHandle(handle);
    if (found.outer != nullptr) {
        return static_cast<Result>(route<Function>(service, *found.outer, arguments...));
    }
    InnerHandle* inner = found.inner.get();
    return observed(
        service.kind, service.function, [&](Call& call) { describe(call, inner); },
        [&] { return inner != nullptr ? perform(*inner) : failedResult<Result>(code::noHandle); },
        [&](int code) {
            if (inner != nullptr) {
                inner->conclude(code);
            }
        });
}

} // namespace simulator
