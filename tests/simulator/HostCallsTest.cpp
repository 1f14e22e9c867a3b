#include "platform/ParameterValues.h"
#include "platform/RegisterAccess.h"
#include "simulator/runtime/BoundSymbols.h"
#include "simulator/RuntimeCodes.h"
#include "tests/simulator/OpenDesign.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <vector>

namespace simulator {
namespace {

using tests::OpenDesign;

constexpr const char* width = "Device1_Process0_Buffer_0_DRAM_A_0_XLength";
constexpr const char* height = "Device1_Process0_Buffer_0_DRAM_A_0_YLength";
constexpr const char* lookupTable = "Device1_Process0_LookupTable_LookupTable_LUTcontent";

TEST(HostCallsTest, NothingIsRecordedUnlessAskedFor) {
    const OpenDesign open;
    open.set(width, 16);
    EXPECT_TRUE(hostCalls().calls().empty());
}

TEST(HostCallsTest, CallsAreRecordedInOrderWithTheirNamesAndValues) {
    const OpenDesign open;
    const int id = open.id(width);
    hostCalls().record(true);
    const std::uint64_t value = 0x100000040u;
    Fg_setParameterWithType(open.handle(), id, &value, 1, 4);
    open.get(height);
    KavoRegisterWrite(open.board().device(), 3, 1, 2);
    QelGetNrOfRegister(open.design());
    hostCalls().record(false);
    open.set(width, 1);
    const std::vector<Call> calls = hostCalls().calls();
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(calls[0].kind, CallKind::write);
    EXPECT_EQ(calls[0].function, "Fg_setParameterWithType");
    EXPECT_EQ(calls[0].name, width);
    EXPECT_EQ(calls[0].id, id);
    EXPECT_EQ(calls[0].dmaIndex, 1u);
    EXPECT_EQ(calls[0].type, 4);
    EXPECT_EQ(calls[0].values, (std::vector<std::uint32_t>{0x40, 1}));
    EXPECT_EQ(calls[0].result, 0);
    EXPECT_EQ(calls[1].kind, CallKind::idLookup);
    EXPECT_EQ(calls[1].result, open.id(height));
    EXPECT_EQ(calls[2].kind, CallKind::read);
    EXPECT_EQ(calls[2].name, height);
    EXPECT_EQ(calls[3].kind, CallKind::registerWrite);
    EXPECT_EQ(calls[3].name, QelGetRegisterName(open.design(), 3));
    EXPECT_EQ(calls[3].values, (std::vector<std::uint32_t>{1, 2}));
    EXPECT_EQ(calls[4].kind, CallKind::designQuery);
    EXPECT_EQ(calls[4].result, 182);
    EXPECT_EQ(hostCalls().calls(CallKind::read).size(), 1u);
    hostCalls().clear();
    EXPECT_TRUE(hostCalls().calls().empty());
}

TEST(HostCallsTest, TableWritesAreRecordedWithTheirElements) {
    const OpenDesign open;
    const int id = open.id(lookupTable);
    const std::uint32_t elements[] = {7, 8};
    const FieldAccess run{2, 10, 2, elements};
    const FieldParameterInt_s entry{9, 12};
    hostCalls().record(true);
    Fg_setParameterWithType(open.handle(), id, &run, 0, 4096);
    Fg_setParameterWithType(open.handle(), id, &entry, 0, 4098);
    const std::vector<Call> calls = hostCalls().calls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].values, (std::vector<std::uint32_t>{2, 10, 2, 7, 8}));
    EXPECT_EQ(calls[1].values, (std::vector<std::uint32_t>{9, 12}));
}

TEST(HostCallsTest, TheNthWriteFailsOnceAndChangesNothing) {
    const OpenDesign open;
    hostCalls().failOnce(CallKind::write, 2, -4711);
    EXPECT_EQ(open.set(width, 16), 0);
    EXPECT_EQ(hostCalls().pendingFailures(), 1u);
    EXPECT_EQ(open.set(width, 32), -4711);
    EXPECT_EQ(hostCalls().pendingFailures(), 0u);
    EXPECT_EQ(Fg_getLastErrorNumber(open.handle()), -4711);
    EXPECT_EQ(open.get(width), 16u);
    EXPECT_EQ(open.set(width, 48), 0);
}

TEST(HostCallsTest, FailuresCanLastAndConcernOneName) {
    const OpenDesign open;
    hostCalls().failFrom(CallKind::write, 2, -1, width);
    EXPECT_EQ(open.set(height, 5), 0);
    EXPECT_EQ(open.set(width, 16), 0);
    EXPECT_EQ(open.set(height, 6), 0);
    EXPECT_EQ(open.set(width, 32), -1);
    EXPECT_EQ(open.set(width, 32), -1);
    hostCalls().stopFailing();
    EXPECT_EQ(open.set(width, 32), 0);
}

TEST(HostCallsTest, SeveralFailuresWaitSideBySide) {
    const OpenDesign open;
    hostCalls().failOnce(CallKind::write, 1, -11);
    hostCalls().failOnce(CallKind::write, 2, -22);
    EXPECT_EQ(open.set(width, 16), -11);
    EXPECT_EQ(open.set(width, 16), -22);
    EXPECT_EQ(open.set(width, 16), 0);
}

TEST(HostCallsTest, FailedReadsLeaveTheBufferAlone) {
    const OpenDesign open;
    const int id = open.id(width);
    hostCalls().failOnce(CallKind::read, 1, -3);
    hostCalls().failOnce(CallKind::registerRead, 1, -4);
    std::uint64_t value = 0xAAAA;
    EXPECT_EQ(Fg_getParameterWithType(open.handle(), id, &value, 0, 2), -3);
    EXPECT_EQ(KavoRegisterRead(open.board().device(), 1, &value), -4);
    EXPECT_EQ(value, 0xAAAAu);
}

TEST(HostCallsTest, EveryOtherKindCanFail) {
    const OpenDesign open;
    const std::string image = tests::committedImage();
    hostCalls().failOnce(CallKind::idLookup, 1, -5);
    EXPECT_EQ(open.id(width), -5);
    hostCalls().failOnce(CallKind::registerWrite, 1, -6);
    EXPECT_EQ(KavoRegisterWrite(open.board().device(), QelGetRegisterByName(open.design(), width), 99, 0),
              -6);
    EXPECT_EQ(open.get(width), 0u);
    hostCalls().failOnce(CallKind::designLoad, 1, -7);
    EXPECT_EQ(QelLoadDesignFromBuffer(image.data(), static_cast<unsigned>(image.size()), 1), nullptr);
    hostCalls().failOnce(CallKind::initialisation, 1, -8);
    EXPECT_EQ(Fg_InitHandleSlaveAware("test", open.board().device(), open.design(), 0), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), -8);
    hostCalls().failOnce(CallKind::parameterTree, 1, -9);
    EXPECT_EQ(Fg_getParameterInfo(open.handle(), 0), nullptr);
    hostCalls().failOnce(CallKind::acquisition, 1, -10);
    EXPECT_EQ(Fg_AcquireEx(open.handle(), 0, 1, 0, nullptr), -10);
    hostCalls().failOnce(CallKind::status, 1, -11);
    EXPECT_EQ(Fg_getAppletId(open.handle(), nullptr), -11);
    hostCalls().failOnce(CallKind::release, 1, -12);
    EXPECT_EQ(Fg_FreeGrabber(open.handle()), -12);
    EXPECT_EQ(open.get(width), 0u) << "a failed release leaves the handle open";
}

class LackingSymbolTest : public testing::TestWithParam<const char*> {
  protected:
    void TearDown() override { hostCalls().reset(); }
};

TEST_P(LackingSymbolTest, IsNotFoundUntilItIsProvidedAgain) {
    void* library = dlopen("libgrabcore5.so", RTLD_NOW);
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_NE(dlsym(library, GetParam()), nullptr);
    hostCalls().lackSymbol(GetParam());
    EXPECT_EQ(dlsym(library, GetParam()), nullptr);
    hostCalls().provideAllSymbols();
    EXPECT_NE(dlsym(library, GetParam()), nullptr);
    dlclose(library);
}

#define SYMBOL_NAME(name) #name,
INSTANTIATE_TEST_SUITE_P(Each, LackingSymbolTest,
                         testing::Values(SIMULATOR_BOUND_SYMBOLS(SYMBOL_NAME) "Fg_getAppletId"),
                         [](const auto& each) { return each.param + std::to_string(each.index); });
#undef SYMBOL_NAME

TEST(HostCallsTest, OnlyBoundSymbolsCanBeLacking) {
    EXPECT_THROW(hostCalls().lackSymbol("Fg_OpenBoard"), std::invalid_argument);
}

} // namespace
} // namespace simulator
