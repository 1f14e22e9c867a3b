#include "console/conformance/Preparation.h"

#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <chrono>
#include <thread>

namespace orbctl {

namespace error = kavo::error;

namespace {

ParameterValue neededValue(const Parameter& parameter, const Need& need) {
    switch (need.value) {
    case Need::Value::minimum:
        return parameter.limits.from;
    case Need::Value::maximum:
        return parameter.limits.to;
    case Need::Value::given:
        break;
    }
    return valueFrom(parameter, need.text);
}

} // namespace

int patiently(const std::function<int()>& write) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(1);
    int code = write();
    while (code == error::triggerBusy && Clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::microseconds(100));
        code = write();
    }
    return code;
}

Preparation::Preparation(const CheckContext& context, const Parameter& parameter) : mContext(context) {
    for (const Need& need : context.rules.rule(parameter.name).needs)
        fulfil(parameter, need);
}

Preparation::~Preparation() {
    for (auto former = mFormer.rbegin(); former != mFormer.rend(); ++former)
        writeParameter(mContext.applet, former->parameter, former->value);
}

void Preparation::fulfil(const Parameter& parameter, const Need& need) {
    const Parameter needed = mContext.described(parameter.port, need.parameter);
    const ParameterValue value = neededValue(needed, need);
    const Reading former = readParameter(mContext.applet, needed);
    if (former.isGood() && former.value == value)
        return;
    const int code = writeParameter(mContext.applet, needed, value);
    mContext.report.expectCode(subjectOf(parameter), "gets what its values need",
                               needed.name + " = " + readableText(needed, value), error::ok, code);
    mIsComplete = mIsComplete && code == error::ok;
    if (code == error::ok && former.isGood())
        mFormer.push_back({needed, former.value});
}

} // namespace orbctl
