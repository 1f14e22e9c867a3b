// What every parameter access goes through: the lock, the families of ids, the port, the parameters without a
// handler of their own.

#include "platform/ErrorCodes.h"
#include "tests/applet/CatalogueData.h"
#include "tests/support/AppletOnBoard.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <stdexcept>

namespace error = kavo::error;
using simulator::CallKind;
using simulator::hostCalls;

namespace {

using Dispatch = OnBothPorts;
FOR_BOTH_PORTS(Dispatch);

constexpr int refusedIds[] = {601,    2000,   2050,   3050,   3060,   3070,   3080,   3090,   4000,
                              5210,   8802,   14010,  24010,  24020,  24030,  24092,  24108,  24114,
                              110075, 110086, 110087, 200395, 300006, 300007, 300008, 300202, 300207,
                              300209, 300210, 300211, 300215, 300237, 300248};

class Unsupported : public testing::Test {
  protected:
    AppletOnBoard applet;
    FgQxWrapper& wrapper = applet.wrapper();

    template <class Call>
    static std::string refusal(Call call) {
        try {
            call();
        } catch (const std::runtime_error& refused) {
            return refused.what();
        }
        return "accepted";
    }
};

} // namespace

TEST_P(Dispatch, ReadOnlyIdsAreRefusedWithoutAnyCall) {
    EXPECT_EQ(std::size(refusedIds), 33U);
    for (const int id : refusedIds) {
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.set(id, 1U, port()), error::notAvailable) << id;
        EXPECT_EQ(applet.lastError(), error::notAvailable) << id;
        EXPECT_TRUE(hostCalls().calls().empty()) << id;
    }
}

TEST_P(Dispatch, AReadIntoNothingIsRefusedByEveryParameterItself) {
    for (const auto& row : kavo::test::documentedCatalogue()) {
        int code = 0;
        try {
            applet.wrapper().getParameter(row.id, nullptr, port());
        } catch (int thrown) {
            code = thrown;
        }
        EXPECT_EQ(code, error::invalidParameter) << row.name;
    }
}

TEST_P(Dispatch, TheThrowingAccessThrowsNothingWhereItSucceeds) {
    const unsigned written = 1024;
    unsigned read = 0;
    EXPECT_NO_THROW(applet.wrapper().setParameter(FG_WIDTH, &written, port()));
    EXPECT_NO_THROW(applet.wrapper().getParameter(FG_WIDTH, &read, port()));
    EXPECT_EQ(read, 1024U);
}

TEST_P(Dispatch, EveryOtherStandardIdCanBeWritten) {
    for (const auto& row : kavo::test::documentedCatalogue()) {
        const bool refused =
            std::find(std::begin(refusedIds), std::end(refusedIds), row.id) != std::end(refusedIds);
        std::array<char, 64> zeros{};
        const int code =
            Fg_setParameterWithType(applet.handle(), row.id, zeros.data(), static_cast<unsigned>(port()), 2);
        EXPECT_EQ(code == error::notAvailable, refused) << row.name;
    }
}

TEST_P(Dispatch, ConstantsAreAnsweredWithoutAnyCall) {
    const std::pair<int, unsigned> constants[] = {{FG_APPLET_VERSION, 2},
                                                  {FG_APPLET_REVISION, 4},
                                                  {FG_APPLET_ID, 0},
                                                  {FG_PIXELDEPTH, 12},
                                                  {FG_LUT_IN_BITS, 12},
                                                  {FG_LUT_OUT_BITS, 12},
                                                  {FG_LUT_IMPLEMENTATION_TYPE, 0}};
    AppletOnBoard::forgetCalls();
    for (const auto& [id, value] : constants) {
        EXPECT_EQ(applet.get(id, port()), value) << id;
        EXPECT_EQ(applet.lastError(), 0) << id;
    }
    std::array<char, 16> text;
    text.fill('#');
    EXPECT_EQ(
        Fg_getParameterWithType(applet.handle(), FG_QEL_FILE, text.data(), static_cast<unsigned>(port()), 2),
        0);
    EXPECT_STREQ(text.data(), "Orbelline.qel");
    EXPECT_EQ(text[14], '#') << "nothing behind the terminating zero";
    EXPECT_TRUE(hostCalls().calls().empty());
}

TEST_P(Dispatch, TheRuntimeAnswersItsOwnParametersForTheDmaIndex) {
    unsigned value = 1000;
    for (const int id : {FG_NR_OF_DMAS, FG_NR_OF_CAMS, FG_NR_OF_PROCESSES, FG_DMA_PORT, FG_CAM_PORT,
                         FG_TRANSFER_LEN, FG_APC_STOP_TIMEOUT, FG_DMASTATUS}) {
        applet.board().pinRuntimeParameter(id, static_cast<unsigned>(port()), ++value);
        AppletOnBoard::forgetCalls();
        EXPECT_EQ(applet.get(id, port()), value) << id;
        const auto reads = hostCalls().calls(CallKind::read);
        ASSERT_EQ(reads.size(), 1U) << id;
        EXPECT_EQ(reads.front().function, "Fg_getParameter");
        EXPECT_EQ(reads.front().id, id);
        EXPECT_EQ(reads.front().dmaIndex, static_cast<unsigned>(port()));
        AppletOnBoard::failRead(1, -4711);
        EXPECT_EQ(applet.readCode(id, port()), -4711) << id;
        EXPECT_EQ(applet.lastError(), -4711) << id;
    }
}

TEST_P(Dispatch, ANullBufferIsRefusedBeforeAnythingElse) {
    const auto dma = static_cast<unsigned>(port());
    AppletOnBoard::forgetCalls();
    for (const int id : {static_cast<int>(FG_WIDTH), static_cast<int>(FG_PIXELDEPTH), 24114, 9999, 1000001,
                         2000001, -1, INT_MAX}) {
        for (const int type : {2, 3, 4}) {
            applet.wrapper().setError(0);
            EXPECT_EQ(Fg_setParameterWithType(applet.handle(), id, nullptr, dma, type),
                      error::invalidParameter);
            EXPECT_EQ(applet.lastError(), error::invalidParameter) << id;
            applet.wrapper().setError(0);
            EXPECT_EQ(Fg_getParameterWithType(applet.handle(), id, nullptr, dma, type),
                      error::invalidParameter);
            EXPECT_EQ(applet.lastError(), error::invalidParameter) << id;
        }
    }
    EXPECT_TRUE(hostCalls().calls().empty());
}

TEST_P(Dispatch, IdsOutsideTheCatalogueAreUnknown) {
    for (const int id : {0, -1, 1, 101, 24115, 300199, 300250, 1000000, 1000001, 1500000, 2000000, INT_MIN}) {
        EXPECT_EQ(applet.set(id, 1U, port()), error::invalidParameter) << id;
        EXPECT_EQ(applet.lastError(), error::invalidParameter) << id;
        EXPECT_EQ(applet.get(id, port()), 0xDEADBEEFU) << id;
        EXPECT_EQ(applet.lastError(), error::invalidParameter) << id;
    }
}

TEST_P(Dispatch, SuccessClearsTheLastError) {
    applet.wrapper().setError(-99);
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, port()), 0);
    EXPECT_EQ(applet.lastError(), 0);
    applet.wrapper().setError(-99);
    EXPECT_EQ(applet.readCode(FG_WIDTH, port()), 0);
    EXPECT_EQ(applet.lastError(), 0);
}

TEST_P(Dispatch, RangeComesBeforeStepAndARefusalChangesNothing) {
    EXPECT_EQ(applet.set(FG_WIDTH, 20U, port()), error::offStep);
    EXPECT_EQ(applet.lastError(), error::offStep);
    EXPECT_EQ(applet.set(FG_WIDTH, 8U, port()), error::outOfRange);
    EXPECT_EQ(applet.get(FG_WIDTH, port()), 1024U);
}

TEST_P(Dispatch, DescriptionsOfUnknownNamesAreRefused) {
    for (const char* name :
         {"", "fg_width", "FG_WIDTH ", "FG_TRIGGERIN_BYPASS_SRC", "FG_NR_OF_DMAS", "nonsense"}) {
        std::array<char, 64> text{};
        std::strcpy(text.data(), name);
        EXPECT_EQ(Fg_getParameterWithType(applet.handle(), parameterDescriptionQuery, text.data(),
                                          static_cast<unsigned>(port()), 2),
                  error::invalidParameter)
            << name;
        EXPECT_STREQ(text.data(), name);
    }
}

TEST_P(Dispatch, A64BitReadOfA32BitParameterHasACleanUpperWord) {
    for (const int type : {3, 4}) {
        std::uint64_t value = ~0ULL;
        EXPECT_EQ(
            Fg_getParameterWithType(applet.handle(), FG_WIDTH, &value, static_cast<unsigned>(port()), type),
            0);
        EXPECT_EQ(value, 1024U);
        value = ~0ULL;
        EXPECT_EQ(Fg_getParameterWithType(applet.handle(), 9999, &value, static_cast<unsigned>(port()), type),
                  error::invalidParameter);
        EXPECT_EQ(value, 0U);
    }
    std::uint64_t value = ~0ULL;
    EXPECT_EQ(Fg_getParameterWithType(applet.handle(), FG_WIDTH, &value, static_cast<unsigned>(port()), 2),
              0);
    EXPECT_EQ(value, 0xFFFFFFFF00000400U);
}

TEST_P(Dispatch, TheTypeOfAWriteDoesNotMatter) {
    for (const int type : {0, 1, 2, 3, 4, 4096, -1}) {
        const std::uint64_t value = 512U + 16U * static_cast<unsigned>(type + 1 < 5 ? type + 1 : 5);
        EXPECT_EQ(
            Fg_setParameterWithType(applet.handle(), FG_WIDTH, &value, static_cast<unsigned>(port()), type),
            0);
        EXPECT_EQ(applet.get(FG_WIDTH, port()), value);
    }
}

TEST_P(Dispatch, TheInnerDispatchThrowsItsCodes) {
    const unsigned value = 20;
    const auto thrownBySetting = [&](int id, const void* buffer, int dmaIndex) {
        try {
            applet.wrapper().setParameter(id, buffer, dmaIndex);
        } catch (int code) {
            return code;
        }
        return 0;
    };
    const auto thrownByGetting = [&](int id, void* buffer, int dmaIndex) {
        try {
            applet.wrapper().getParameter(id, buffer, dmaIndex);
        } catch (int code) {
            return code;
        }
        return 0;
    };
    EXPECT_EQ(thrownBySetting(FG_WIDTH, &value, port()), error::offStep);
    EXPECT_EQ(thrownBySetting(FG_PIXELDEPTH, &value, port()), error::notAvailable);
    EXPECT_EQ(thrownBySetting(9999, &value, port()), error::invalidParameter);
    EXPECT_EQ(thrownBySetting(FG_WIDTH, &value, 2), error::invalidParameter);
    for (const int id : {static_cast<int>(FG_WIDTH), static_cast<int>(FG_APPLET_VERSION),
                         static_cast<int>(FG_QEL_FILE), 24114}) {
        EXPECT_EQ(thrownByGetting(id, nullptr, port()), error::invalidParameter) << id;
    }
    unsigned width = 0;
    EXPECT_EQ(thrownByGetting(FG_WIDTH, &width, port()), 0);
    EXPECT_EQ(width, 1024U);
    EXPECT_EQ(thrownByGetting(FG_WIDTH, &width, -1), error::invalidParameter);
}

TEST_P(Dispatch, ADesignAccessorPassesIdIndexAndType) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    std::uint64_t status = 0;
    AppletOnBoard::forgetCalls();
    wrapper.get_qx_param_Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status(&status, port(), 4, true);
    const auto reads = hostCalls().calls(CallKind::read);
    ASSERT_EQ(reads.size(), 1U);
    EXPECT_EQ(reads.front().name, "Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status");
    EXPECT_EQ(reads.front().dmaIndex, static_cast<unsigned>(port()));
    EXPECT_EQ(reads.front().type, 4);

    const auto thrown = [&](void* buffer, bool throwOnError) {
        try {
            wrapper.get_qx_param_Device1_Process2_Trigger_Monitoring_ReadQueueStatus_Status(buffer, port(), 2,
                                                                                            throwOnError);
        } catch (int code) {
            return code;
        }
        return 0;
    };
    EXPECT_EQ(thrown(nullptr, true), error::invalidParameter);
    EXPECT_EQ(thrown(nullptr, false), 0);
    AppletOnBoard::failRead(1, -4711);
    EXPECT_EQ(thrown(&status, true), -4711);
    AppletOnBoard::failRead(1, -4711);
    EXPECT_EQ(thrown(&status, false), 0);
}

TEST_F(Unsupported, DmaIndicesOutsideThePortsAreRefused) {
    std::array<char, 64> buffer{};
    for (const unsigned dmaIndex : {2U, 3U, 4294967295U, 0x80000000U}) {
        AppletOnBoard::forgetCalls();
        for (const auto& row : kavo::test::documentedCatalogue()) {
            EXPECT_EQ(Fg_setParameterWithType(applet.handle(), row.id, buffer.data(), dmaIndex, 2),
                      error::invalidParameter);
            EXPECT_EQ(Fg_getParameterWithType(applet.handle(), row.id, buffer.data(), dmaIndex, 2),
                      error::invalidParameter);
        }
        EXPECT_EQ(applet.lastError(), error::invalidParameter);
        EXPECT_TRUE(hostCalls().calls().empty());
    }
}

TEST_F(Unsupported, FourOperationsAreNotImplemented) {
    EXPECT_EQ(refusal([&] { wrapper.processChannelToDma(0, 0); }),
              "processChannelToDma() is not implemented.");
    EXPECT_EQ(refusal([&] { wrapper.mapDmaToFormat(0); }), "mapDmaToFormat() is not implemented.");
    EXPECT_EQ(refusal([&] { wrapper.setDmaAlignment(0, 0); }), "setDmaAlignment() is not implemented.");
    EXPECT_EQ(refusal([&] { wrapper.getDmaAlignment(0); }), "getDmaAlignment() is not implemented.");
}

TEST_F(Unsupported, PortsAreIndependent) {
    EXPECT_EQ(applet.set(FG_WIDTH, 512U, 0), 0);
    EXPECT_EQ(applet.set(FG_WIDTH, 256U, 1), 0);
    EXPECT_EQ(applet.get(FG_WIDTH, 0), 512U);
    EXPECT_EQ(applet.get(FG_WIDTH, 1), 256U);
}
