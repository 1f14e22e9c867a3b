#include "console/conformance/ParameterChecks.h"
#include "console/conformance/Preparation.h"
#include "console/conformance/WritingTrial.h"
#include "console/ValueText.h"

#include <algorithm>

namespace orbctl {

namespace {

unsigned stepRule(const WritingTrial& trial) {
    return trial.context().rules.rule(trial.parameter().name).step;
}

void checkIllegalValues(WritingTrial& trial) {
    for (const TrialValue& illegal : illegalValues(trial.parameter(), stepRule(trial)))
        trial.refuses(illegal);
}

void checkRange(WritingTrial& trial) {
    for (const TrialValue& legal : legalValues(trial.parameter(), stepRule(trial)))
        trial.accepts(legal);
    trial.putBack();
    checkIllegalValues(trial);
}

/// What a parameter takes where another one has moved its limits or its access.
void checkMoved(const CheckContext& context, const Parameter& moved, const std::string& occasion) {
    if (!moved.isWritable()) {
        WritingTrial trial(context, moved, occasion);
        return checkReadOnly(trial);
    }
    const Preparation preparation(context, moved);
    if (!preparation.isComplete())
        return;
    WritingTrial trial(context, context.described(moved.port, moved.name), occasion);
    if (moved.kind == ValueKind::text)
        checkTextWriting(trial);
    else if (moved.isField())
        checkElementWriting(trial);
    else
        checkRange(trial);
}

bool needs(const CheckContext& context, const Parameter& parameter, const std::string& other) {
    const std::vector<Need>& all = context.rules.rule(parameter.name).needs;
    return std::any_of(all.begin(), all.end(), [&](const Need& need) { return need.parameter == other; });
}

/// The parameters whose description has changed since a value was written are tried as they are described
/// now.
void checkFollowers(const WritingTrial& trial, const ParameterValue& value) {
    const Parameter& parameter = trial.parameter();
    const CheckContext& context = trial.context();
    const std::string occasion = "with " + parameter.name + " = " + readableText(parameter, value);
    const BoardState now = context.state();
    for (const BoardState::Entry& entry : now.entries()) {
        const Parameter& other = entry.parameter;
        const BoardState::Entry* const before = trial.base().find(other.port, other.name);
        const bool isMoved = before != nullptr && !hasSameDescription(before->parameter, other);
        if (isMoved && other.name != parameter.name && !needs(context, other, parameter.name))
            checkMoved(context, other, occasion);
    }
}

void checkValues(WritingTrial& trial) {
    trial.acceptsEveryType();
    for (const TrialValue& legal : legalValues(trial.parameter(), stepRule(trial)))
        if (trial.accepts(legal))
            checkFollowers(trial, legal.value);
    trial.putBack();
    checkIllegalValues(trial);
}

void checkWritable(const CheckContext& context, const Parameter& parameter) {
    const Preparation preparation(context, parameter);
    if (!preparation.isComplete())
        return;
    WritingTrial trial(context, context.described(parameter.port, parameter.name), "");
    if (parameter.kind == ValueKind::text)
        checkTextWriting(trial);
    else if (parameter.isField())
        checkElementWriting(trial);
    else
        checkValues(trial);
    trial.refusesBadCalls();
}

} // namespace

void checkWriting(const CheckContext& context, const Parameter& parameter) {
    if (parameter.kind == ValueKind::unsupported)
        return context.report.skip(subjectOf(parameter), "can be written", "its kind is not known here");
    if (parameter.isDescribed && parameter.isWritable())
        return checkWritable(context, parameter);
    WritingTrial trial(context, parameter, "");
    if (parameter.isDescribed)
        checkReadOnly(trial);
    trial.refusesBadCalls();
}

} // namespace orbctl
