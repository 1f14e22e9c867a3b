// Writes to what is no plain number: read-only parameters, texts and tables.

#include "console/conformance/ValueBytes.h"
#include "console/conformance/WritingTrial.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterValues.h"

#include <algorithm>
#include <limits>

namespace orbctl {

namespace error = kavo::error;

namespace {

std::string fileName(const WritingTrial& trial, const std::string& name) {
    const std::string& filter = trial.parameter().fileFilter;
    return trial.context().folder + "/" + name + (filter.empty() ? "" : filter.substr(filter.find('.')));
}

bool isFormer(const WritingTrial& trial, const ParameterValue& value) {
    return trial.former().isGood() && trial.former().value == value;
}

/// A value that the parameter could have but has not; the one that it has where there is no other.
ParameterValue otherValue(const WritingTrial& trial) {
    const Parameter& parameter = trial.parameter();
    const ParameterValue& former = trial.former().value;
    if (parameter.kind == ValueKind::text)
        return fileName(trial, "other");
    if (hasOpenLimits(parameter) && std::holds_alternative<std::uint64_t>(former))
        return std::get<std::uint64_t>(former) + 1;
    for (const TrialValue& legal : legalValues(parameter))
        if (!isFormer(trial, legal.value))
            return legal.value;
    return former;
}

void remembers(WritingTrial& trial, const ParameterValue& value) {
    const Parameter& parameter = trial.parameter();
    const std::string text = trial.detail(readableText(parameter, value));
    trial.report().expectCode(trial.subject(), "remembers what is written while it is read-only", text,
                              error::ok, trial.write(value));
    const Reading reading = readParameter(trial.context().applet, parameter);
    trial.report().expect(trial.subject(), "has the value that it remembers", text,
                          reading.isGood() && isSameValue(parameter, value, reading.value),
                          readableText(parameter, value), readableText(parameter, reading));
    trial.putBack();
}

/// A text that names a file is taken whole, or refused and forgotten.
void takesOrRefuses(WritingTrial& trial, const std::string& path) {
    const Parameter& parameter = trial.parameter();
    const std::string text = trial.detail(path);
    const int code = trial.write(path);
    const bool isKnown = code == error::ok || code == error::fileNotFound || code == error::fileAccessFailed;
    trial.report().expect(trial.subject(), "takes a file name or says what is wrong with the file", text,
                          isKnown, "0, -2076 or -5001", textOf(std::int64_t{code}));
    if (code != error::ok)
        return trial.keepsEverything(text);
    const Reading reading = readParameter(trial.context().applet, parameter);
    trial.report().expect(trial.subject(), "has the file name that was written", text,
                          reading.isGood() && reading.value == ParameterValue(path), path,
                          readableText(parameter, reading));
    trial.putBack();
}

/// A file that another parameter has saved brings a table back.
void loadsWhatWasSaved(WritingTrial& trial) {
    const CheckContext& context = trial.context();
    const Parameter& loader = trial.parameter();
    const ParameterRule& rule = context.rules.rule(loader.name);
    const Parameter writer = context.described(loader.port, rule.fileWriter);
    const Parameter table = context.described(loader.port, rule.table);
    const Reading named = readParameter(context.applet, writer);
    if (named.value != ParameterValue(std::string()))
        return trial.report().skip(trial.subject(), "loads a file that was saved",
                                   writer.name + " names a file, which would be written");
    const std::string path = fileName(trial, "saved");
    trial.report().expectCode(trial.subject(), "has a file saved for it", trial.detail(writer.name),
                              error::ok, writeParameter(context.applet, writer, path));
    const Reading saved = readParameter(context.applet, table);
    const bool isMaximum = saved.value == table.limits.to;
    writeParameter(context.applet, table, isMaximum ? table.limits.from : table.limits.to);
    trial.report().expectCode(trial.subject(), "loads a file that was saved", trial.detail(writer.name),
                              error::ok, trial.write(path));
    trial.report().expectText(trial.subject(), "brings back the table that was saved",
                              trial.detail(table.name), readableText(table, saved),
                              readableText(table, readParameter(context.applet, table)));
    trial.putBack();
}

void refusesAbsentFile(WritingTrial& trial) {
    const std::string absent = fileName(trial, "absent");
    trial.refuses("a file that is not there", absent, error::fileNotFound,
                  [&] { return trial.write(absent); });
}

int writeElement(const WritingTrial& trial, const ParameterValue& value, std::uint32_t element) {
    return writeParameter(trial.context().applet, trial.parameter(), value, element);
}

void takesElement(WritingTrial& trial, const TrialValue& legal, std::uint32_t element) {
    const Parameter& parameter = trial.parameter();
    const std::string text = trial.detail("element " + textOf(std::uint64_t{element}) + ": " +
                                          readableText(parameter, legal.value));
    const int code = writeElement(trial, legal.value, element);
    trial.report().expectCode(trial.subject(), "accepts an element", text, error::ok, code);
    const Reading reading = readParameter(trial.context().applet, parameter, element);
    trial.report().expect(trial.subject(), "has the element that was written", text,
                          reading.isGood() && isSameValue(parameter, legal.value, reading.value),
                          readableText(parameter, legal.value), readableText(parameter, reading));
}

} // namespace

void checkReadOnly(WritingTrial& trial) {
    if (trial.parameter().isField())
        return;
    const int answer = trial.context().rules.rule(trial.parameter().name).answerWhileReadOnly;
    const ParameterValue value = otherValue(trial);
    if (answer == error::ok)
        remembers(trial, value);
    else
        trial.refusesAsReadOnly(value, answer);
}

void checkTextWriting(WritingTrial& trial) {
    if (!isFormer(trial, std::string()))
        return trial.report().skip(trial.subject(), "takes a file name",
                                   "it names a file, which writing it again would touch");
    if (trial.context().rules.rule(trial.parameter().name).fileWriter.empty()) {
        takesOrRefuses(trial, fileName(trial, "chosen"));
        takesOrRefuses(trial, trial.context().folder + "/absent/chosen");
        return;
    }
    refusesAbsentFile(trial);
    loadsWhatWasSaved(trial);
}

void checkElementWriting(WritingTrial& trial) {
    const Parameter& parameter = trial.parameter();
    for (const std::uint32_t index : {0U, 7U, 15U})
        for (const TrialValue& legal : legalValues(parameter))
            takesElement(trial, legal, elementAt(parameter, TableDepth::some, index));
    trial.putBack();
    for (const TrialValue& illegal : illegalValues(parameter))
        trial.refuses(illegal);
    for (const std::uint32_t element : {parameter.elementCount, std::numeric_limits<std::uint32_t>::max()})
        trial.refuses("an element behind its last", textOf(std::uint64_t{element}), error::outOfRange,
                      [&] { return writeElement(trial, parameter.limits.from, element); });
}

} // namespace orbctl
