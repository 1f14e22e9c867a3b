#include "simulator/runtime/Answers.h"
#include "simulator/runtime/Service.h"
#include "simulator/RuntimeCodes.h"

/// What the runtime leaves to applets: configuration files and shading. On an inner handle it supports
/// neither.

using simulator::Call;
using simulator::CallKind;
using simulator::InnerHandle;
using simulator::serve;

namespace {

namespace code = simulator::code;

void describeNothing(Call&, InnerHandle*) {}

int refuse(InnerHandle& inner) { return inner.conclude(code::notSupported); }

auto describeFile(const char* file) {
    return [file](Call& call, InnerHandle*) { call.name = file != nullptr ? file : ""; };
}

} // namespace

#define SERVICE(kind, name)                                                                                  \
    simulator::Service { CallKind::kind, simulator::symbolNumber_##name, #name }

int answer_Fg_saveConfig(Fg_Struct* handle, const char* file) {
    return serve<decltype(Fg_saveConfig)>(SERVICE(configuration, Fg_saveConfig), handle, describeFile(file),
                                          refuse, file);
}

int answer_Fg_loadConfig(Fg_Struct* handle, const char* file) {
    return serve<decltype(Fg_loadConfig)>(SERVICE(configuration, Fg_loadConfig), handle, describeFile(file),
                                          refuse, file);
}

ShadingMaster* answer_Fg_AllocShading(Fg_Struct* handle, int first, int second) {
    return serve<decltype(Fg_AllocShading)>(
        SERVICE(shading, Fg_AllocShading), handle, describeNothing,
        [](InnerHandle& inner) -> ShadingMaster* {
            refuse(inner);
            return nullptr;
        },
        first, second);
}

int answer_Fg_FreeShading(Fg_Struct* handle, ShadingMaster* shading) {
    return serve<decltype(Fg_FreeShading)>(SERVICE(shading, Fg_FreeShading), handle, describeNothing, refuse,
                                           shading);
}

int answer_Shad_SetSubValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                float value) {
    return serve<decltype(Shad_SetSubValueLine)>(SERVICE(shading, Shad_SetSubValueLine), handle,
                                                 describeNothing, refuse, shading, first, second, value);
}

int answer_Shad_SetMultValueLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                 float value) {
    return serve<decltype(Shad_SetMultValueLine)>(SERVICE(shading, Shad_SetMultValueLine), handle,
                                                  describeNothing, refuse, shading, first, second, value);
}

int answer_Shad_SetFixedPatternNoiseLine(Fg_Struct* handle, ShadingMaster* shading, int first, int second,
                                         int value) {
    return serve<decltype(Shad_SetFixedPatternNoiseLine)>(SERVICE(shading, Shad_SetFixedPatternNoiseLine),
                                                          handle, describeNothing, refuse, shading, first,
                                                          second, value);
}

int answer_Shad_GetMaxLine(Fg_Struct* handle, ShadingMaster* shading) {
    return serve<decltype(Shad_GetMaxLine)>(SERVICE(shading, Shad_GetMaxLine), handle, describeNothing,
                                            refuse, shading);
}

int answer_Shad_GetAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return serve<decltype(Shad_GetAccess)>(SERVICE(shading, Shad_GetAccess), handle, describeNothing, refuse,
                                           shading);
}

int answer_Shad_FreeAccess(Fg_Struct* handle, ShadingMaster* shading) {
    return serve<decltype(Shad_FreeAccess)>(SERVICE(shading, Shad_FreeAccess), handle, describeNothing,
                                            refuse, shading);
}

int answer_Shad_WriteActLine(Fg_Struct* handle, ShadingMaster* shading, int line) {
    return serve<decltype(Shad_WriteActLine)>(SERVICE(shading, Shad_WriteActLine), handle, describeNothing,
                                              refuse, shading, line);
}
