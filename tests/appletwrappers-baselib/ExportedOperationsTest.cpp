// Every exported function that calls an operation of the wrapper: the operation, its arguments, its result,
// the last error, and what a handle without a wrapper gives.

#include "tests/appletwrappers-baselib/BareWrapper.h"

#include "platform/ErrorCodes.h"
#include "platform/FrameGrabber.h"

#include <gtest/gtest.h>

namespace error = kavo::error;
using kavo::test::callText;
using kavo::test::RecordingWrapper;

namespace {

char file[] = "a file";
char name[] = "a name";
std::uint64_t buffer = 0;
unsigned size = 0;
ShadingMaster* const shading = reinterpret_cast<ShadingMaster*>(&buffer);

struct IntExport {
    const char* function;
    int (*call)(Fg_Struct* handle);
    std::string operation;
    bool keepsResultAsError = false;
};

std::ostream& operator<<(std::ostream& out, const IntExport& exported) { return out << exported.function; }

std::vector<IntExport> intExports() {
    const void* constantBuffer = &buffer;
    void* anyBuffer = &buffer;
    const auto* noHandle = static_cast<Fg_Struct*>(nullptr);
    return {
        {"Fg_setParameterWithType",
         [](Fg_Struct* handle) { return Fg_setParameterWithType(handle, 100, &buffer, 1, 3); },
         callText("Fg_setParameter", 100, constantBuffer, 1)},
        {"Fg_getParameterWithType",
         [](Fg_Struct* handle) { return Fg_getParameterWithType(handle, 200, &buffer, 4294967295U, 2); },
         callText("Fg_getParameter", 200, anyBuffer, -1)},
        {"Fg_getNrOfParameter", Fg_getNrOfParameter, "Fg_getParameterCount()"},
        {"Fg_getParameterId", [](Fg_Struct* handle) { return Fg_getParameterId(handle, 92); },
         "Fg_getParameterId(92)"},
        {"Fg_getParameterIdByName", [](Fg_Struct* handle) { return Fg_getParameterIdByName(handle, name); },
         "Fg_getParameterIdByName(a name)"},
        // The operation receives the inner handle, which an unbound wrapper does not have.
        {"Fg_saveConfig", [](Fg_Struct* handle) { return Fg_saveConfig(handle, file); },
         callText("Fg_saveConfig", noHandle, file)},
        {"Fg_loadConfig", [](Fg_Struct* handle) { return Fg_loadConfig(handle, file); },
         callText("Fg_loadConfig", noHandle, file)},
        {"Fg_FreeShading", [](Fg_Struct* handle) { return Fg_FreeShading(handle, shading); },
         callText("Fg_FreeShading", shading), true},
        {"Shad_SetSubValueLine",
         [](Fg_Struct* handle) { return Shad_SetSubValueLine(handle, shading, 1, 2, 0.5F); },
         callText("Shad_SetSubValueLine", shading, 1, 2, 0.5F), true},
        {"Shad_SetMultValueLine",
         [](Fg_Struct* handle) { return Shad_SetMultValueLine(handle, shading, 3, 4, 1.5F); },
         callText("Shad_SetMultValueLine", shading, 3, 4, 1.5F), true},
        {"Shad_SetFixedPatternNoiseLine",
         [](Fg_Struct* handle) { return Shad_SetFixedPatternNoiseLine(handle, shading, 5, 6, 7); },
         callText("Shad_SetFixedPatternNoiseLine", shading, 5, 6, 7), true},
        {"Shad_GetMaxLine", [](Fg_Struct* handle) { return Shad_GetMaxLine(handle, shading); },
         callText("Shad_GetMaxLine", shading), true},
        {"Shad_GetAccess", [](Fg_Struct* handle) { return Shad_GetAccess(handle, shading); },
         callText("Shad_GetAccess", shading), true},
        {"Shad_FreeAccess", [](Fg_Struct* handle) { return Shad_FreeAccess(handle, shading); },
         callText("Shad_FreeAccess", shading), true},
        {"Shad_WriteActLine", [](Fg_Struct* handle) { return Shad_WriteActLine(handle, shading, 8); },
         callText("Shad_WriteActLine", shading, 8), true},
    };
}

class ExportedOperation : public testing::TestWithParam<IntExport> {
  protected:
    RecordingWrapper wrapper;
    Fg_Struct handle{static_cast<FgQxWrapper*>(&wrapper)};
};

INSTANTIATE_TEST_SUITE_P(EveryExport, ExportedOperation, testing::ValuesIn(intExports()),
                         [](const auto& suiteInfo) { return std::string(suiteInfo.param.function); });

class ExportedQuery : public testing::Test {
  protected:
    RecordingWrapper wrapper;
    Fg_Struct handle{static_cast<FgQxWrapper*>(&wrapper)};
    Fg_Struct empty{nullptr};
};

} // namespace

TEST_P(ExportedOperation, CallsItsOperationAndReturnsTheResultUnchanged) {
    for (const int result : {0, 4711, -2070}) {
        wrapper.calls.clear();
        wrapper.answer = result;
        EXPECT_EQ(GetParam().call(&handle), result);
        EXPECT_EQ(wrapper.calls, std::vector<std::string>{GetParam().operation});
    }
}

TEST_P(ExportedOperation, LeavesTheLastErrorToTheOperationUnlessItIsShading) {
    wrapper.answer = -2130;
    wrapper.setError(-99);
    GetParam().call(&handle);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), GetParam().keepsResultAsError ? -2130 : -99);
}

TEST_P(ExportedOperation, RefusesAHandleWithoutWrapper) {
    Fg_Struct empty{nullptr};
    EXPECT_EQ(GetParam().call(nullptr), error::noHandle);
    EXPECT_EQ(GetParam().call(&empty), error::noHandle);
}

TEST_F(ExportedQuery, NamesAreThoseOfTheOperation) {
    EXPECT_STREQ(Fg_getParameterName(&handle, 3), "a name");
    EXPECT_STREQ(Fg_getEventName(&handle, 1ULL << 50), "an event");
    EXPECT_EQ(Fg_getEventMask(&handle, name), 1ULL << 40);
    EXPECT_EQ(wrapper.calls,
              (std::vector<std::string>{"Fg_getParameterName(3)", callText("Fg_getEventName", 1ULL << 50),
                                        "Fg_getEventMask(a name)"}));
}

TEST_F(ExportedQuery, XmlPassesTheCallersOwnHandle) {
    char text[4];
    wrapper.answer = -500;
    EXPECT_EQ(Fg_getParameterInfoXML(&handle, 1, text, &size), -500);
    EXPECT_EQ(wrapper.calls, std::vector<std::string>{callText("Fg_getParameterInfoXML", &handle, 1,
                                                               static_cast<void*>(text), &size)});
}

TEST_F(ExportedQuery, AHandleWithoutWrapperGivesNothing) {
    for (Fg_Struct* nobody : {static_cast<Fg_Struct*>(nullptr), &empty}) {
        EXPECT_EQ(Fg_getParameterName(nobody, 0), nullptr);
        EXPECT_EQ(Fg_getEventMask(nobody, name), 0U);
        EXPECT_EQ(Fg_getEventName(nobody, 1), nullptr);
        EXPECT_EQ(Fg_AllocShading(nobody, 1, 2), nullptr);
        EXPECT_EQ(Fg_getParameterInfo(nobody, 0), nullptr);
        EXPECT_EQ(Fg_getParameterInfoXML(nobody, 0, nullptr, &size), error::noHandle);
        EXPECT_EQ(Fg_getLastErrorNumber(nobody), error::noHandle);
        EXPECT_EQ(Fg_FreeGrabber(nobody), error::noHandle);
    }
}

TEST_F(ExportedQuery, AllocatedShadingClearsTheErrorAndNoneGivesMinusOne) {
    wrapper.setError(-99);
    wrapper.shading = shading;
    EXPECT_EQ(Fg_AllocShading(&handle, 5, 6), shading);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), 0);
    wrapper.shading = nullptr;
    EXPECT_EQ(Fg_AllocShading(&handle, 7, 8), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(&handle), -1);
    EXPECT_EQ(wrapper.calls, (std::vector<std::string>{"Fg_AllocShading(5, 6)", "Fg_AllocShading(7, 8)"}));
}

TEST_F(ExportedQuery, A64BitReadFindsACleanBufferBeforeTheOperation) {
    for (const int type : {3, 4}) {
        std::uint64_t words[2] = {~0ULL, ~0ULL};
        Fg_getParameterWithType(&handle, -1, words, 0, type);
        EXPECT_EQ(words[0], 0U) << type;
        EXPECT_EQ(words[1], ~0ULL) << type;
    }
}

TEST_F(ExportedQuery, AReadOfAnotherTypeFindsTheBufferAsItIs) {
    for (const int type : {0, 1, 2, 5, 4096, -3}) {
        std::uint64_t word = ~0ULL;
        Fg_getParameterWithType(&handle, -1, &word, 0, type);
        EXPECT_EQ(word, ~0ULL) << type;
    }
}

TEST_F(ExportedQuery, ANullBufferOfA64BitReadReachesTheOperation) {
    wrapper.answer = error::invalidParameter;
    EXPECT_EQ(Fg_getParameterWithType(&handle, 100, nullptr, 0, 4), error::invalidParameter);
    EXPECT_EQ(wrapper.calls,
              std::vector<std::string>{callText("Fg_getParameter", 100, static_cast<void*>(nullptr), 0)});
}

TEST_F(ExportedQuery, DescriptionsNeedTheRuntimesFunctionAndTheInnerHandle) {
    RegisterInfo* group = wrapper.parameterInfo().addGroupInfo(0, nullptr, "A Group");
    EXPECT_EQ(Fg_getParameterInfo(&handle, 0), nullptr);
    ASSERT_EQ(wrapper.initializeDllFunctions("libgrabcore5.so"), 0);
    EXPECT_EQ(Fg_getParameterInfo(&handle, 0), nullptr);
    kavo::test::bindToBoard(wrapper);
    EXPECT_EQ(Fg_getParameterInfo(&handle, 0), group);
    wrapper.wrapperFg().DLL_Fg_FreeGrabber(wrapper.grabcoreFg());
}

TEST_F(ExportedQuery, FilesGoToTheInnerHandle) {
    kavo::test::bindToBoard(wrapper);
    ASSERT_NE(wrapper.grabcoreFg(), nullptr);
    Fg_saveConfig(&handle, file);
    Fg_loadConfig(&handle, file);
    EXPECT_EQ(wrapper.calls,
              (std::vector<std::string>{callText("Fg_saveConfig", wrapper.grabcoreFg(), file),
                                        callText("Fg_loadConfig", wrapper.grabcoreFg(), file)}));
    wrapper.wrapperFg().DLL_Fg_FreeGrabber(wrapper.grabcoreFg());
}
