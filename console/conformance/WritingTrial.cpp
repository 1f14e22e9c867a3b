#include "console/conformance/WritingTrial.h"

#include "console/conformance/Preparation.h"
#include "console/conformance/ValueBytes.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <utility>
#include <vector>

namespace orbctl {

namespace error = kavo::error;

namespace {

/// Answers that tell of a conflict with other parameters, not of the value itself.
bool isConflict(int code) {
    return code == error::pulseReachesPeriod || code == error::downscaleReachesPeriod ||
           code == error::notSoftwareMode || code == error::triggerNotActive || code == error::triggerBusy;
}

bool isAboutFile(int code) { return code == error::fileNotFound || code == error::fileAccessFailed; }

/// Whether a parameter of the port names a file to be read.
bool namesFile(const CheckContext& context, unsigned port) {
    for (const Parameter& parameter : describedParameters(context.applet, port)) {
        const bool isFile = parameter.kind == ValueKind::text && !parameter.fileFilter.empty();
        if (isFile && context.settings.contains(parameter) &&
            readParameter(context.applet, parameter).value != ParameterValue(std::string()))
            return true;
    }
    return false;
}

} // namespace

WritingTrial::WritingTrial(const CheckContext& context, Parameter parameter, std::string occasion)
    : mContext(context), mParameter(std::move(parameter)), mSubject(subjectOf(mParameter)),
      mOccasion(std::move(occasion)), mFormer(readParameter(context.applet, mParameter)),
      mBase(context.state()) {}

std::string WritingTrial::detail(const std::string& text) const {
    return text + (text.empty() || mOccasion.empty() ? "" : " ") + mOccasion;
}

int WritingTrial::write(const ParameterValue& value) const {
    return patiently([&] { return writeParameter(mContext.applet, mParameter, value); });
}

bool WritingTrial::isStoodAgainst(const std::string& what, const std::string& text, int code) const {
    const bool isUnknownNeed = isConflict(code) && !mContext.rules.isKnown();
    const bool isOpen = isUnknownNeed || (isAboutFile(code) && namesFile(mContext, mParameter.port));
    if (isOpen)
        report().skip(mSubject, what,
                      "another parameter stands against " + text + " (" + textOf(std::int64_t{code}) + ")");
    return isOpen;
}

bool WritingTrial::accepts(const TrialValue& trial) {
    const std::string text = detail(readableText(mParameter, trial.value));
    const int code = write(trial.value);
    if (isStoodAgainst("accepts " + trial.what, text, code))
        return false;
    if (!report().expectCode(mSubject, "accepts " + trial.what, text, error::ok, code))
        return false;
    report().expectCode(mSubject, "leaves no error when it is written", text, error::ok,
                        mContext.lastError());
    const Reading reading = readParameter(mContext.applet, mParameter);
    report().expect(mSubject, "has the value that was written", text,
                    reading.isGood() && isSameValue(mParameter, trial.value, reading.value),
                    readableText(mParameter, trial.value), readableText(mParameter, reading));
    return true;
}

void WritingTrial::refuses(const std::string& what, const std::string& valueText, int code,
                           const std::function<int()>& writing) {
    const std::string text = detail(valueText);
    const int answer = writing();
    report().expectCode(mSubject, "refuses " + what, text, code, answer);
    report().expectCode(mSubject, "keeps the code of a refused write as last error", text, code,
                        mContext.lastError());
    keepsEverything(text);
}

void WritingTrial::refuses(const TrialValue& trial) {
    refuses(trial.what, readableText(mParameter, trial.value), trial.code,
            [&] { return writeParameter(mContext.applet, mParameter, trial.value); });
}

void WritingTrial::refusesAsReadOnly(const ParameterValue& value, int code) {
    const std::string text = detail(readableText(mParameter, value));
    report().expectCode(mSubject, "refuses to be written while it is read-only", text, code, write(value));
    report().expectCode(mSubject, "keeps the code of a refused write as last error", text, code,
                        mContext.lastError());
    if (mFormer.isGood() && mFormer.value != value) {
        // What is measured may move meanwhile, but hardly to the very value that was refused.
        const Reading after = readParameter(mContext.applet, mParameter);
        report().expect(mSubject, "keeps its value when it is read-only", text,
                        !after.isGood() || after.value != value, readableText(mParameter, mFormer),
                        readableText(mParameter, after));
    }
    keepsEverything(text);
}

void WritingTrial::keepsValue(const std::string& valueText, const BoardState& now) {
    const BoardState::Entry* const before = mBase.find(mParameter.port, mParameter.name);
    const BoardState::Entry* const after = now.find(mParameter.port, mParameter.name);
    if (before == nullptr || after == nullptr || !before->isSetting)
        return;
    report().expect(mSubject, "keeps its value when it refuses", valueText, hasSameValue(*before, *after),
                    readableText(mParameter, before->readings.front()),
                    readableText(mParameter, after->readings.front()));
}

/// Whatever did change is put back, so that one fault is not told as many.
void WritingTrial::keepsEverything(const std::string& valueText) {
    const BoardState now = mContext.state();
    keepsValue(valueText, now);
    const std::string difference = differenceBetween(mBase, now, &mParameter);
    report().expect(mSubject, "changes nothing else when it refuses", valueText, difference.empty(),
                    "no change", difference);
    if (differenceBetween(mBase, now, nullptr).empty())
        return;
    restore(mContext.applet, mContext.settings, mBase);
    mBase = mContext.state();
}

void WritingTrial::refusesBadCalls() {
    const auto& set = mContext.functions().setParameter;
    refuses("to be written from nothing", "", error::invalidParameter,
            [&] { return set(mContext.handle(), mParameter.id, nullptr, mParameter.port, untypedValue); });
    if (!mFormer.isGood())
        return;
    GuardedBuffer buffer = encoded(mParameter, mFormer.value);
    for (const unsigned dmaIndex : strangeDmaIndices())
        refuses("to be written on a port that is not there", "DMA index " + textOf(std::uint64_t{dmaIndex}),
                error::invalidParameter,
                [&] { return set(mContext.handle(), mParameter.id, buffer.data(), dmaIndex, untypedValue); });
}

void WritingTrial::acceptsEveryType() {
    if (mFormer.isGood())
        for (const int type : typeCodes())
            acceptsType(type);
}

void WritingTrial::acceptsType(int type) {
    const std::string text = detail("type code " + textOf(std::int64_t{type}));
    GuardedBuffer buffer = widened(mParameter, mFormer.value);
    const std::vector<unsigned char> before = buffer.bytes();
    const int code = patiently([&] {
        return mContext.functions().setParameter(mContext.handle(), mParameter.id, buffer.data(),
                                                 mParameter.port, type);
    });
    if (isStoodAgainst("can be written with every type code", text, code))
        return;
    report().expectCode(mSubject, "can be written with every type code", text, error::ok, code);
    report().expect(mSubject, "leaves the caller's value alone when it is written", text,
                    buffer.bytes() == before && buffer.isUntouchedBehind(buffer.size()), "untouched",
                    "overwritten");
    const Reading reading = readParameter(mContext.applet, mParameter);
    report().expect(mSubject, "has the value that was written with every type code", text,
                    reading.isGood() && isSameValue(mParameter, mFormer.value, reading.value),
                    readableText(mParameter, mFormer), readableText(mParameter, reading));
}

void WritingTrial::putBack() {
    if (mFormer.isGood() && !mParameter.isField()) {
        const int code = write(mFormer.value);
        const std::string text = detail(readableText(mParameter, mFormer));
        if (!isStoodAgainst("takes its former value back", text, code))
            report().expectCode(mSubject, "takes its former value back", text, error::ok, code);
    }
    // Another parameter may follow this one: a table that was computed anew, a limit of the other's.
    if (!differenceBetween(mBase, mContext.state(), nullptr).empty())
        restore(mContext.applet, mContext.settings, mBase);
}

} // namespace orbctl
