#include "console/Acquisition.h"
#include "console/conformance/ParameterChecks.h"
#include "console/conformance/Preparation.h"
#include "console/conformance/ValueBytes.h"
#include "console/conformance/WritingTrial.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <memory>

namespace orbctl {

namespace error = kavo::error;

namespace {

constexpr int changeFlag = 4;
constexpr unsigned fewPictures = 2;

bool isTried(const Parameter& parameter) {
    const bool isPlain = isNumber(parameter) || parameter.kind == ValueKind::enumeration;
    return isPlain && parameter.isWritable() && parameter.isReadable();
}

void checkChange(const CheckContext& context, const Parameter& parameter) {
    const Preparation preparation(context, parameter);
    if (!preparation.isComplete())
        return;
    WritingTrial trial(context, parameter, "");
    const Reading& former = trial.former();
    if (!former.isGood())
        return;
    const std::string text = readableText(parameter, former);
    const int code = trial.write(former.value);
    if (trial.isStoodAgainst("can be written during an acquisition", text, code))
        return;
    if ((parameter.accessFlags & changeFlag) != 0)
        context.report.expectCode(subjectOf(parameter), "can be written during an acquisition", text,
                                  error::ok, code);
    const Reading after = readParameter(context.applet, parameter);
    context.report.expect(subjectOf(parameter), "keeps its value through a write during an acquisition", text,
                          after.isGood() && isSameValue(parameter, former.value, after.value), text,
                          readableText(parameter, after));
}

std::unique_ptr<PictureBatch> started(const CheckContext& context, unsigned port) {
    const CheckSubject subject{port, "Fg_AcquireEx"};
    try {
        return std::make_unique<PictureBatch>(context.applet, port, geometryOf(context.applet, port),
                                              fewPictures);
    } catch (const Failure& failure) {
        context.report.skip(subject, "can be written during an acquisition", failure.what());
        return nullptr;
    }
}

} // namespace

void checkWhileAcquiring(const CheckContext& context, const std::vector<Parameter>& parameters,
                         unsigned port) {
    const std::unique_ptr<PictureBatch> batch = started(context, port);
    if (batch == nullptr)
        return;
    for (const Parameter& parameter : parameters)
        if (parameter.port == port && isTried(parameter))
            checkChange(context, parameter);
}

} // namespace orbctl
