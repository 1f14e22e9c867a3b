#include "platform/ParameterValues.h"
#include "simulator/runtime/Answers.h"
#include "simulator/runtime/Service.h"
#include "simulator/RuntimeCodes.h"

/// Parameters: values, ids and descriptions.

using simulator::Call;
using simulator::CallKind;
using simulator::InnerHandle;
using simulator::serve;

namespace {

namespace code = simulator::code;

constexpr int untyped = 0;
/// The type that an untyped call on an outer handle passes to the applet.
constexpr int typeForApplets = kavo::type::unsigned32;

void describeParameter(Call& call, InnerHandle* inner, int id, unsigned dmaIndex, int type) {
    call.name = inner != nullptr ? inner->nameOf(id) : std::string();
    call.id = id;
    call.dmaIndex = dmaIndex;
    call.type = type;
}

int setParameter(const char* function, Fg_Struct* handle, int id, const void* value, unsigned dmaIndex,
                 int type) {
    return serve<decltype(Fg_setParameterWithType)>(
        {CallKind::write, simulator::symbolNumber_Fg_setParameterWithType, function}, handle,
        [&](Call& call, InnerHandle* inner) {
            describeParameter(call, inner, id, dmaIndex, type);
            call.values = inner != nullptr ? inner->wordsOf(id, value, type) : std::vector<std::uint32_t>();
        },
        [&](InnerHandle& inner) { return inner.conclude(inner.write(id, value, dmaIndex, type)); }, id, value,
        dmaIndex, type == untyped ? typeForApplets : type);
}

int getParameter(const char* function, Fg_Struct* handle, int id, void* value, unsigned dmaIndex, int type) {
    return serve<decltype(Fg_getParameterWithType)>(
        {CallKind::read, simulator::symbolNumber_Fg_getParameterWithType, function}, handle,
        [&](Call& call, InnerHandle* inner) { describeParameter(call, inner, id, dmaIndex, type); },
        [&](InnerHandle& inner) { return inner.conclude(inner.read(id, value, dmaIndex, type)); }, id, value,
        dmaIndex, type == untyped ? typeForApplets : type);
}

} // namespace

int answer_Fg_setParameter(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex) {
    return setParameter("Fg_setParameter", handle, id, value, dmaIndex, untyped);
}

int answer_Fg_setParameterWithType(Fg_Struct* handle, int id, const void* value, unsigned dmaIndex,
                                   int type) {
    return setParameter("Fg_setParameterWithType", handle, id, value, dmaIndex, type);
}

int answer_Fg_getParameter(Fg_Struct* handle, int id, void* value, unsigned dmaIndex) {
    return getParameter("Fg_getParameter", handle, id, value, dmaIndex, untyped);
}

int answer_Fg_getParameterWithType(Fg_Struct* handle, int id, void* value, unsigned dmaIndex, int type) {
    return getParameter("Fg_getParameterWithType", handle, id, value, dmaIndex, type);
}

int answer_Fg_getParameterIdByName(Fg_Struct* handle, const char* name) {
    return serve<decltype(Fg_getParameterIdByName)>(
        {CallKind::idLookup, simulator::symbolNumber_Fg_getParameterIdByName, "Fg_getParameterIdByName"},
        handle, [&](Call& call, InnerHandle*) { call.name = name != nullptr ? name : ""; },
        [&](InnerHandle& inner) { return inner.conclude(inner.idByName(name)); }, name);
}

RegisterInfo* answer_Fg_getParameterInfo(Fg_Struct* handle, int port) {
    return serve<decltype(Fg_getParameterInfo)>(
        {CallKind::parameterTree, simulator::symbolNumber_Fg_getParameterInfo, "Fg_getParameterInfo"}, handle,
        [&](Call& call, InnerHandle*) { call.id = port; },
        [&](InnerHandle& inner) {
            RegisterInfo* head = inner.parameterTree(port);
            inner.conclude(head != nullptr ? code::ok : code::invalidParameter);
            return head;
        },
        port);
}
