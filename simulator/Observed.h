#pragma once

#include "simulator/HostCalls.h"

#include <type_traits>
#include <utility>

namespace simulator {

template <class Result>
std::int64_t recordedResult(Result result) {
    if constexpr (std::is_pointer_v<Result>) {
        return result != nullptr ? 1 : 0;
    } else {
        return result;
    }
}

template <class Result>
Result failedResult([[maybe_unused]] int code) {
    if constexpr (std::is_pointer_v<Result>) {
        return nullptr;
    } else {
        return static_cast<Result>(code);
    }
}

/// Answers a call on a host library: records it and lets it fail when that was asked for.
/// \param describe  fills what the record says about the call; not called while nobody listens
/// \param perform   does what the call is for; not called when the call shall fail
/// \param refused   told the code of a call that was made to fail
template <class Describe, class Perform, class Refused>
auto observed(CallKind kind, const char* function, Describe&& describe, Perform&& perform,
              Refused&& refused) {
    using Result = decltype(perform());
    HostCalls& calls = hostCalls();
    if (!calls.isListening()) {
        return perform();
    }
    Call call{};
    call.kind = kind;
    call.function = function;
    describe(call);
    int code = 0;
    const bool fails = calls.shallFail(kind, call.name, code);
    const Result result = fails ? failedResult<Result>(code) : perform();
    if (fails) {
        refused(code);
    }
    call.result = recordedResult(result);
    calls.note(std::move(call));
    return result;
}

template <class Describe, class Perform>
auto observed(CallKind kind, const char* function, Describe&& describe, Perform&& perform) {
    return observed(kind, function, std::forward<Describe>(describe), std::forward<Perform>(perform),
                    [](int) {});
}

} // namespace simulator
