#include "console/AppletIdentity.h"
#include "console/conformance/FunctionChecks.h"
#include "console/conformance/GuardedBuffer.h"
#include "console/conformance/ParameterChecks.h"
#include "console/conformance/ValueBytes.h"
#include "console/NumberText.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"

#include <climits>
#include <set>

namespace orbctl {

namespace error = kavo::error;

namespace {

constexpr const char* strangeName = "FG_NO_SUCH_PARAMETER";
/// No applet has these ids: below all, between the families, behind the last standard one.
constexpr int strangeIds[] = {INT_MIN, -1, 0, 1000000};
constexpr int lastStandardId = 1000000;

void checkNames(const CheckContext& context) {
    const CheckSubject subject{std::nullopt, "Fg_getParameterIdByName"};
    const auto& idOf = context.functions().parameterIdByName;
    const char* const names[] = {nullptr, "", strangeName, "FG_"};
    for (const char* const name : names) {
        const std::string text = name == nullptr ? "null" : '"' + std::string(name) + '"';
        context.report.expectCode(subject, "refuses a name that is not there", text, error::invalidParameter,
                                  idOf(context.handle(), name));
        context.report.expectCode(subject, "keeps the code of a refused name as last error", text,
                                  error::invalidParameter, context.lastError());
    }
}

void checkIndices(const CheckContext& context) {
    const int count = context.functions().parameterCount(context.handle());
    for (const int index : {-1, count, INT_MAX, INT_MIN}) {
        const std::string text = textOf(std::int64_t{index});
        const CheckSubject names{std::nullopt, "Fg_getParameterName"};
        const char* const name = context.functions().parameterName(context.handle(), index);
        context.report.expectText(names, "has no name at an index that is not there", text, "none",
                                  name == nullptr ? "none" : name);
        context.report.expectCode(names, "keeps the code of a refused index as last error", text,
                                  error::invalidParameter, context.lastError());
        const CheckSubject ids{std::nullopt, "Fg_getParameterId"};
        context.report.expectCode(ids, "refuses an index that is not there", text, error::invalidParameter,
                                  context.functions().parameterId(context.handle(), index));
        context.report.expectCode(ids, "keeps the code of a refused index as last error", text,
                                  error::invalidParameter, context.lastError());
    }
}

std::set<int> unknownIds(const CheckContext& context) {
    std::set<int> known = {parameterDescriptionQuery};
    for (const std::string& name : listedNames(context))
        known.insert(context.functions().parameterIdByName(context.handle(), name.c_str()));
    std::set<int> unknown(std::begin(strangeIds), std::end(strangeIds));
    for (const int id : known)
        for (const int neighbour : {id - 1, id + 1})
            if (neighbour > 0 && neighbour <= lastStandardId)
                unknown.insert(neighbour);
    for (const int id : known)
        unknown.erase(id);
    return unknown;
}

void checkId(const CheckContext& context, unsigned port, int id) {
    const std::string text = "id " + textOf(std::int64_t{id});
    const HostFunctions& functions = context.functions();
    GuardedBuffer buffer(sizeof(std::uint64_t));
    context.report.expectCode(
        {port, "Fg_getParameterWithType"}, "refuses an id that is not there", text, error::invalidParameter,
        functions.getParameter(context.handle(), id, buffer.data(), port, untypedValue));
    context.report.expect({port, "Fg_getParameterWithType"}, "leaves the buffer of a strange id alone", text,
                          buffer.isUntouched(), "untouched", "overwritten");
    const std::uint64_t value = 0;
    context.report.expectCode({port, "Fg_setParameterWithType"}, "refuses an id that is not there", text,
                              error::invalidParameter,
                              functions.setParameter(context.handle(), id, &value, port, untypedValue));
}

void checkIds(const CheckContext& context) {
    const std::set<int> unknown = unknownIds(context);
    const BoardState before = context.state();
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        for (const int id : unknown)
            checkId(context, port, id);
    const std::string difference = differenceBetween(before, context.state(), nullptr);
    context.report.expect({std::nullopt, "Fg_setParameterWithType"}, "changes nothing by a strange id", "",
                          difference.empty(), "no change", difference);
}

/// The description of a parameter is asked for by its name in the buffer.
void checkDescriptionQuery(const CheckContext& context) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port) {
        char text[] = "FG_NO_SUCH_PARAMETER";
        const int code = context.functions().getParameter(context.handle(), parameterDescriptionQuery, text,
                                                          port, untypedValue);
        context.report.expectCode({port, "Fg_getParameterWithType"}, "has no description of a strange name",
                                  strangeName, error::invalidParameter, code);
        context.report.expectText({port, "Fg_getParameterWithType"}, "leaves a strange name alone",
                                  strangeName, strangeName, text);
    }
}

void checkSelectors(const CheckContext& context) {
    const CheckSubject subject{std::nullopt, "Info"};
    const auto& info = context.functions().info;
    unsigned number = 0;
    void* data = nullptr;
    constexpr int strangeSelector = 9999;
    context.report.expectCode(subject, "refuses a selector that is not there", "9999", error::notSupported,
                              info(strangeSelector, 0, 0, &number, &data));
    for (const InfoAnswer& answer : askEverything(context.functions())) {
        const std::string text = textOf(std::int64_t{answer.selector.number});
        context.report.expectText(
            subject, "answers without a place for its outputs", text, textOf(std::int64_t{answer.result}),
            textOf(std::int64_t{info(answer.selector.number, answer.port, 0, nullptr, nullptr)}));
        if (answer.selector.isPerPort)
            context.report.expectCode(
                subject, "refuses a port that is not there", text, error::invalidParameter,
                info(answer.selector.number, AppletHandle::numberOfPorts, 0, &number, &data));
    }
}

void checkConstants(const CheckContext& context) {
    const CheckSubject subject{std::nullopt, "Info"};
    const auto& info = context.functions().info;
    constexpr int constantSelector = 4352;
    context.report.expectCode(subject, "refuses a constant without a name", "", error::invalidParameter,
                              info(constantSelector, 0, 0, nullptr, nullptr));
    for (const char* const name : {"", "FG_NO_SUCH_CONSTANT"})
        context.report.expectCode(subject, "refuses a constant that is not there", name,
                                  error::invalidParameter, constantOf(context.functions(), name));
}

void checkTrees(const CheckContext& context) {
    for (const int port : {static_cast<int>(AppletHandle::numberOfPorts), 3})
        context.report.expect(
            {std::nullopt, "Fg_getParameterInfo"}, "has no tree for a port that is not there",
            "port " + textOf(std::int64_t{port}),
            context.functions().parameterInfo(context.handle(), port) == nullptr, "null", "a pointer");
}

} // namespace

void checkLookups(const CheckContext& context) {
    checkNames(context);
    checkIndices(context);
    checkIds(context);
    checkDescriptionQuery(context);
    checkTrees(context);
    if (!context.functions().info.isBound())
        return context.report.skip({std::nullopt, "Info"}, "answers", "the applet has no such function");
    checkSelectors(context);
    checkConstants(context);
}

} // namespace orbctl
