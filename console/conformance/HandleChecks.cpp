#include "console/conformance/AppletExports.h"
#include "console/conformance/FunctionChecks.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"

#include <type_traits>

namespace orbctl {

namespace error = kavo::error;

namespace {

template <typename Result>
std::string answerText(Result answer) {
    if constexpr (std::is_pointer_v<Result>)
        return answer == nullptr ? "null" : "a pointer";
    else if constexpr (std::is_signed_v<Result>)
        return withCode(answer);
    else
        return textOf(answer);
}

/// What a function of this kind answers where there is no applet behind the handle.
template <typename Result>
Result missingAnswer() {
    if constexpr (std::is_pointer_v<Result>)
        return nullptr;
    else if constexpr (std::is_signed_v<Result>)
        return error::noHandle;
    else
        return 0;
}

class HandleTrial {
  public:
    explicit HandleTrial(const CheckContext& context) : mContext(context) {}

    template <typename Result, typename... Values>
    void check(HostFunction<Result(Fg_Struct*, Values...)> function, std::decay_t<Values>... values) const {
        const CheckSubject subject{std::nullopt, function.name()};
        function.bind(mContext.library);
        if (!mContext.report.expect(subject, "is exported", "", function.isBound(), "a function", "none"))
            return;
        const std::string expected = answerText(missingAnswer<Result>());
        mContext.report.expectText(subject, "answers a null handle", "", expected,
                                   answerText(function(nullptr, values...)));
        Fg_Struct empty{nullptr};
        mContext.report.expectText(subject, "answers a handle without an applet", "", expected,
                                   answerText(function(&empty, values...)));
    }

  private:
    const CheckContext& mContext;
};

void checkParameterFunctions(const HandleTrial& trial, const AppletExports& exports) {
    unsigned value = 0;
    unsigned size = 0;
    trial.check(exports.setParameter, FG_WIDTH, &value, 0U, 0);
    trial.check(exports.getParameter, FG_WIDTH, &value, 0U, 0);
    trial.check(exports.parameterCount);
    trial.check(exports.parameterName, 0);
    trial.check(exports.parameterId, 0);
    trial.check(exports.parameterIdByName, "FG_WIDTH");
    trial.check(exports.parameterInfo, 0);
    trial.check(exports.parameterXml, 0, nullptr, &size);
    trial.check(exports.eventMask, "");
    trial.check(exports.eventName, std::uint64_t{1});
    trial.check(exports.saveConfiguration, "");
    trial.check(exports.loadConfiguration, "");
    trial.check(exports.lastError);
    trial.check(exports.freeGrabber);
}

void checkAcquisitionFunctions(const HandleTrial& trial, const AppletExports& exports) {
    trial.check(exports.appletId, "");
    trial.check(exports.status, 0, 0, 0U, nullptr);
    trial.check(exports.acquire, 0, 0, 0, nullptr);
    trial.check(exports.stopAcquire, 0, nullptr, 0);
    trial.check(exports.lastPicture, 0, nullptr);
    trial.check(exports.waitForPicture, 0, 0, 0, nullptr);
}

void checkShadingFunctions(const HandleTrial& trial, const AppletExports& exports) {
    trial.check(exports.allocateShading, 0, 0);
    trial.check(exports.freeShading, nullptr);
    trial.check(exports.setSubValue, nullptr, 0, 0, 0.0F);
    trial.check(exports.setMultValue, nullptr, 0, 0, 0.0F);
    trial.check(exports.setNoise, nullptr, 0, 0, 0);
    trial.check(exports.maxLine, nullptr);
    trial.check(exports.getAccess, nullptr);
    trial.check(exports.freeAccess, nullptr);
    trial.check(exports.writeLine, nullptr, 0);
}

} // namespace

void checkHandles(const CheckContext& context) {
    const HandleTrial trial(context);
    const AppletExports exports;
    checkParameterFunctions(trial, exports);
    checkAcquisitionFunctions(trial, exports);
    checkShadingFunctions(trial, exports);
}

} // namespace orbctl
