#include "grabber_basis/parameterInfo.h"
#include "platform/ParameterIds.h"
#include "platform/ParameterValues.h"
#include "platform/RegisterAccess.h"
#include "simulator/design/DesignImage.h"
#include "simulator/RuntimeCodes.h"
#include "tests/simulator/OpenDesign.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>
#include <vector>

namespace simulator {
namespace {

using tests::LoadedImage;
using tests::OpenDesign;

constexpr const char* width = "Device1_Process0_Buffer_0_DRAM_A_0_XLength";
constexpr const char* lookupTable = "Device1_Process0_LookupTable_LookupTable_LUTcontent";
constexpr const char* fillLevel = "Device1_Process0_Buffer_0_DRAM_A_0_FillLevel";

TEST(InnerHandleTest, EveryDesignParameterHasAnIdOfItsOwn) {
    const OpenDesign open;
    const std::string text = tests::committedImage();
    std::set<int> ids;
    const auto image = DesignImage::decode(text.data(), text.size());
    ASSERT_TRUE(image);
    for (const DesignParameter& parameter : image->parameters) {
        ids.insert(open.id(parameter.name));
    }
    EXPECT_EQ(ids.size(), 178u);
    EXPECT_EQ(*ids.rbegin() - *ids.begin(), 177) << "ids are dense";
    EXPECT_GT(*ids.begin(), 300249) << "above every standard id";
}

TEST(InnerHandleTest, UnknownNamesGiveANegativeError) {
    const OpenDesign open;
    EXPECT_LT(open.id("Device1_Nothing"), 0);
    EXPECT_LT(open.id(""), 0);
    EXPECT_LT(Fg_getParameterIdByName(open.handle(), nullptr), 0);
    EXPECT_EQ(Fg_getLastErrorNumber(open.handle()), code::invalidParameter);
    EXPECT_EQ(open.id("FG_TIMEOUT"), FG_TIMEOUT);
    EXPECT_EQ(Fg_getLastErrorNumber(open.handle()), 0);
}

TEST(InnerHandleTest, HasNoMaster) {
    const OpenDesign open;
    EXPECT_EQ(open.handle()->Master, nullptr);
}

TEST(InnerHandleTest, TypedAndUntypedCallsReachOneValue) {
    const OpenDesign open;
    const int id = open.id(width);
    std::uint32_t word = 640;
    EXPECT_EQ(Fg_setParameter(open.handle(), id, &word, 0), 0);
    EXPECT_EQ(open.get(width), 640u);
    std::uint64_t longWord = 1024;
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &longWord, 1, 4), 0);
    EXPECT_EQ(Fg_getParameter(open.handle(), id, &word, 0), 0);
    EXPECT_EQ(word, 1024u);
    longWord = UINT64_MAX;
    EXPECT_EQ(Fg_getParameterWithType(open.handle(), id, &longWord, 0, 3), 0);
    EXPECT_EQ(longWord, 1024u);
    longWord = UINT64_MAX;
    EXPECT_EQ(Fg_getParameterWithType(open.handle(), id, &longWord, 0, 2), 0);
    EXPECT_EQ(longWord, 0xFFFFFFFF00000400u) << "type 2 fills the low word only";
}

TEST(InnerHandleTest, BitsAboveTheRegisterAreDropped) {
    const OpenDesign open;
    EXPECT_EQ(open.set(width, 0xFFFF), 0);
    EXPECT_EQ(open.get(width), 0x1FFFu);
}

TEST(InnerHandleTest, BadArgumentsAreRefusedAndChangeNothing) {
    const OpenDesign open;
    open.set(width, 320);
    std::uint32_t value = 64;
    const int id = open.id(width);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &value, 2, 2), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &value, 0, 9), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, nullptr, 0, 2), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), -5, &value, 0, 2), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), 100, &value, 0, 2), code::invalidParameter);
    EXPECT_EQ(Fg_getParameterWithType(open.handle(), id, nullptr, 0, 2), code::invalidParameter);
    EXPECT_EQ(Fg_getLastErrorNumber(open.handle()), code::invalidParameter);
    EXPECT_EQ(open.get(width), 320u);
    EXPECT_EQ(Fg_getLastErrorNumber(open.handle()), 0);
}

TEST(InnerHandleTest, StatusCannotBeWritten) {
    const OpenDesign open;
    EXPECT_EQ(open.set(fillLevel, 12), code::notAvailable);
    EXPECT_EQ(open.get(fillLevel), 0u);
}

TEST(InnerHandleTest, UnknownHandlesGiveTheMissingHandle) {
    Fg_Struct foreign{nullptr};
    std::uint32_t value = 0;
    for (Fg_Struct* handle : {static_cast<Fg_Struct*>(nullptr), &foreign}) {
        EXPECT_EQ(Fg_setParameter(handle, 1, &value, 0), code::noHandle);
        EXPECT_EQ(Fg_getParameter(handle, 1, &value, 0), code::noHandle);
        EXPECT_EQ(Fg_getParameterIdByName(handle, width), code::noHandle);
        EXPECT_EQ(Fg_getParameterInfo(handle, 0), nullptr);
        EXPECT_EQ(Fg_FreeGrabber(handle), code::noHandle);
        EXPECT_EQ(Fg_AcquireEx(handle, 0, 1, 0, nullptr), code::noHandle);
        EXPECT_EQ(Fg_AllocShading(handle, 0, 0), nullptr);
    }
}

TEST(InnerHandleTest, OpeningNeedsABoardAndADesign) {
    const LoadedImage image;
    QXdevice* device = Board::at(0).device();
    int notADevice = 0;
    EXPECT_EQ(Fg_InitHandle("test", device, nullptr), nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_InitHandle("test", reinterpret_cast<QXdevice*>(&notADevice), image.get()), nullptr);
    Fg_Struct* handle = Fg_InitHandle(nullptr, device, image.get());
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(Fg_getLastErrorNumber(nullptr), 0);
    EXPECT_EQ(Fg_FreeGrabber(handle), 0);
    EXPECT_EQ(Fg_FreeGrabber(handle), code::noHandle);
}

TEST(InnerHandleTest, HandleOutlivesItsUnloadedDesign) {
    auto image = std::make_unique<LoadedImage>();
    Fg_Struct* handle = Fg_InitHandle("test", Board::at(0).device(), image->get());
    image.reset();
    EXPECT_GT(Fg_getParameterIdByName(handle, width), 0);
    EXPECT_EQ(Fg_FreeGrabber(handle), 0);
}

TEST(InnerHandleTest, SlavesShareTheBoard) {
    const OpenDesign master;
    Fg_Struct* slave = Fg_InitHandleSlaveAware("slave", master.board().device(), master.design(), 1);
    master.set(width, 512);
    std::uint32_t value = 0;
    EXPECT_EQ(Fg_getParameterWithType(slave, master.id(width), &value, 0, 2), 0);
    EXPECT_EQ(value, 512u);
    EXPECT_EQ(Fg_FreeGrabber(slave), 0);
}

TEST(InnerHandleTest, BoardsShareNothing) {
    const OpenDesign first(0);
    const OpenDesign second(15);
    first.set(width, 16);
    second.set(width, 32);
    EXPECT_EQ(first.get(width), 16u);
    EXPECT_EQ(Board::at(15).designValue(width), 32u);
    EXPECT_THROW(Board::at(16), std::out_of_range);
}

TEST(InnerHandleTest, TableTakesEntriesAndRuns) {
    const OpenDesign open;
    const int id = open.id(lookupTable);
    std::vector<std::uint32_t> values(4096);
    for (std::uint32_t i = 0; i < values.size(); ++i) {
        values[i] = 4095 - i;
    }
    const FieldAccess whole{2, 0, 4096, values.data()};
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &whole, 0, 4096), 0);
    FieldParameterInt_s entry{77, 4095};
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &entry, 0, 4098), 0);
    entry = {0, 4094};
    EXPECT_EQ(Fg_getParameterWithType(open.handle(), id, &entry, 0, 4098), 0);
    EXPECT_EQ(entry.value, 1u);
    const std::vector<std::uint32_t> table = open.board().designField(lookupTable);
    ASSERT_EQ(table.size(), 4096u);
    EXPECT_EQ(table[0], 4095u);
    EXPECT_EQ(table[4095], 77u);
}

TEST(InnerHandleTest, TableRefusesWhatDoesNotFit) {
    const OpenDesign open;
    const int id = open.id(lookupTable);
    const std::vector<std::uint32_t> values(4096, 1);
    const FieldAccess tooLong{2, 1, 4096, values.data()};
    const FieldAccess wrongElements{4, 0, 16, values.data()};
    const FieldAccess noElements{2, 0, 16, nullptr};
    const FieldParameterInt_s behind{1, 4096};
    const std::uint32_t word = 1;
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &tooLong, 0, 4096), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &wrongElements, 0, 4096), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &noElements, 0, 4096), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &behind, 0, 4098), code::invalidParameter);
    EXPECT_EQ(Fg_setParameterWithType(open.handle(), id, &word, 0, 2), code::invalidParameter);
    EXPECT_EQ(open.board().designField(lookupTable), std::vector<std::uint32_t>(4096, 0));
}

TEST(InnerHandleTest, RegistersAndParametersAreOneStorage) {
    const OpenDesign open;
    const int reg = QelGetRegisterByName(open.design(), width);
    ASSERT_GT(reg, 0);
    EXPECT_EQ(KavoRegisterWrite(open.board().device(), reg, 48, 0), 0);
    EXPECT_EQ(open.get(width), 48u);
    std::uint64_t value = 0;
    EXPECT_EQ(KavoRegisterRead(open.board().device(), reg, &value), 0);
    EXPECT_EQ(value, 48u);
}

TEST(InnerHandleTest, TableRegisterTakesAnIndexAboveItsElement) {
    const OpenDesign open;
    const int reg = QelGetRegisterByName(open.design(), lookupTable);
    EXPECT_EQ(KavoRegisterWrite(open.board().device(), reg, (4095u << 12) | 17u, 0), 0);
    EXPECT_EQ(open.board().designField(lookupTable)[4095], 17u);
}

TEST(InnerHandleTest, WideRegistersKeepBothWords) {
    const OpenDesign open;
    const int reg = QelGetRegisterByName(open.design(), "Device1_Board_UserWord");
    EXPECT_EQ(KavoRegisterWrite(open.board().device(), reg, 0x89ABCDEF, 0x01234567), 0);
    std::uint64_t value = 0;
    EXPECT_EQ(KavoRegisterRead(open.board().device(), reg, &value), 0);
    EXPECT_EQ(value, 0x0123456789ABCDEFu);
}

TEST(InnerHandleTest, RegisterAccessRefusesWhatIsNotThere) {
    const OpenDesign open;
    QXdevice* device = open.board().device();
    std::uint64_t value = 0;
    EXPECT_EQ(KavoRegisterRead(device, 0, &value), code::noRegister);
    EXPECT_EQ(KavoRegisterRead(device, 183, &value), code::noRegister);
    EXPECT_EQ(KavoRegisterWrite(device, -1, 0, 0), code::noRegister);
    EXPECT_EQ(KavoRegisterRead(device, 1, nullptr), code::invalidParameter);
    EXPECT_EQ(KavoRegisterRead(nullptr, 1, &value), code::invalidParameter);
    const int serial = QelGetRegisterByName(open.design(), "Device1_Board_SerialNumber");
    EXPECT_EQ(KavoRegisterWrite(device, serial, 1, 0), code::notAvailable);
    EXPECT_EQ(KavoRegisterRead(device, serial, &value), 0);
    EXPECT_GT(value, UINT32_MAX);
}

TEST(InnerHandleTest, BoardTimeIsARegister) {
    const OpenDesign open;
    open.board().clock().advance((std::uint64_t{1} << 33) + 5);
    EXPECT_EQ(open.board().designValue("Device1_Board_Time"), (std::uint64_t{1} << 33) + 5);
}

TEST(InnerHandleTest, ForcedStatusHoldsUntilReleased) {
    const OpenDesign open;
    open.board().setDesignValue(fillLevel, 60);
    EXPECT_EQ(open.get(fillLevel), 60u);
    open.board().releaseDesignValue(fillLevel);
    EXPECT_EQ(open.get(fillLevel), 0u);
    EXPECT_THROW(open.board().setDesignValue("Device1_Nothing", 1), std::out_of_range);
}

TEST(InnerHandleTest, OwnParametersStandOncePerPort) {
    const OpenDesign open;
    const auto read = [&](int id, unsigned dmaIndex) {
        std::uint32_t value = 99;
        EXPECT_EQ(Fg_getParameter(open.handle(), id, &value, dmaIndex), 0);
        return value;
    };
    const std::uint32_t seconds = 5;
    EXPECT_EQ(Fg_setParameter(open.handle(), FG_TIMEOUT, &seconds, 1), 0);
    EXPECT_EQ(read(FG_TIMEOUT, 1), 5u);
    EXPECT_NE(read(FG_TIMEOUT, 0), 5u);
    EXPECT_EQ(read(FG_NR_OF_DMAS, 0), 2u);
    EXPECT_EQ(read(FG_NR_OF_CAMS, 1), 2u);
    EXPECT_EQ(read(FG_DMA_PORT, 1), 1u);
    EXPECT_EQ(read(FG_CAM_PORT, 0), 0u);
    EXPECT_EQ(Fg_setParameter(open.handle(), FG_NR_OF_DMAS, &seconds, 0), code::notAvailable);
    open.board().pinRuntimeParameter(FG_CAMSTATUS_EXTENDED, 0, 0xFF);
    EXPECT_EQ(read(FG_CAMSTATUS_EXTENDED, 0), 0xFFu);
    EXPECT_NE(read(FG_CAMSTATUS_EXTENDED, 1), 0xFFu);
}

void collectLeaves(const RegisterInfo& record, std::vector<const RegisterInfo*>& leaves) {
    if (record.format != REG_FORMAT_GROUP) {
        leaves.push_back(&record);
        return;
    }
    for (int i = 0; i < record.u.gReg.nrOfElements; ++i) {
        collectLeaves(*record.u.gReg.elements[i], leaves);
    }
}

TEST(InnerHandleTest, ParameterTreeNamesEveryParameterInItsGroups) {
    const OpenDesign open;
    for (int port = 0; port < 2; ++port) {
        std::vector<const RegisterInfo*> leaves;
        for (const RegisterInfo* top = Fg_getParameterInfo(open.handle(), port); top != nullptr;
             top = top->next) {
            collectLeaves(*top, leaves);
        }
        EXPECT_EQ(leaves.size(), 178u + 10u);
        for (const RegisterInfo* leaf : leaves) {
            EXPECT_EQ(open.id(leaf->name), leaf->id) << leaf->name;
            EXPECT_EQ(leaf->port, port);
        }
    }
    EXPECT_EQ(Fg_getParameterInfo(open.handle(), 2), nullptr);
    EXPECT_EQ(Fg_getParameterInfo(open.handle(), -1), nullptr);
}

TEST(InnerHandleTest, CallsOfManyThreadsLeaveEachValueWhole) {
    const OpenDesign open;
    const auto hammer = [&open](const char* name, std::uint32_t value) {
        for (int i = 0; i < 2000; ++i) {
            open.set(name, value);
            ASSERT_EQ(open.get(name), value);
        }
    };
    std::thread other(hammer, "Device1_Process1_Buffer_0_DRAM_A_0_XLength", 77);
    hammer(width, 33);
    other.join();
}

} // namespace
} // namespace simulator
