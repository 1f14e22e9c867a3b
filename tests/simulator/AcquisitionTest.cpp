#include "platform/ParameterIds.h"
#include "platform/RuntimeForPrograms.h"
#include "simulator/image/PictureSource.h"
#include "simulator/runtime/StatusSelector.h"
#include "simulator/RuntimeCodes.h"
#include "tests/simulator/OpenDesign.h"

#include <gtest/gtest.h>

#include <chrono>
#include <numeric>
#include <thread>
#include <vector>

namespace simulator {
namespace {

using tests::OpenDesign;

constexpr std::uint64_t second = BoardClock::ticksPerSecond;
constexpr std::uint32_t width = 64;
constexpr std::uint32_t height = 32;

/// Image memory in vectors of the test.
class Pictures {
  public:
    Pictures(const OpenDesign& open, unsigned count, std::size_t bytes = width * height)
        : mHandle(open.handle()), mPictures(count, std::vector<std::uint8_t>(bytes, 0xEE)) {
        std::vector<void*> pointers;
        for (std::vector<std::uint8_t>& picture : mPictures) {
            pointers.push_back(picture.data());
        }
        mMemory = Fg_CreateImageMemory(mHandle, pointers.data(), count, bytes);
    }
    ~Pictures() { Fg_ReleaseImageMemory(mHandle, mMemory); }
    Pictures(const Pictures&) = delete;
    Pictures& operator=(const Pictures&) = delete;

    dma_mem* memory() const { return mMemory; }
    const std::vector<std::uint8_t>& operator[](std::size_t place) const { return mPictures[place]; }

  private:
    Fg_Struct* mHandle;
    std::vector<std::vector<std::uint8_t>> mPictures;
    dma_mem* mMemory = nullptr;
};

/// Two cameras of 64 x 32 pixels that expose ten times a second, and registers that agree with them.
class AcquisitionTest : public testing::Test {
  protected:
    void SetUp() override {
        for (unsigned port = 0; port < 2; ++port) {
            mOpen.board().setCamera(port, camera());
            setPort(port);
        }
    }

    static CameraSetup camera() {
        CameraSetup setup;
        setup.sensorWidth = width;
        setup.sensorHeight = height;
        setup.packetBytes = 36 + 96;
        setup.cablesCrossed = false;
        setup.exposureTicks = second / 100;
        setup.readoutTicks = second / 50;
        setup.freeRunningTicks = second / 10;
        return setup;
    }

    static std::string name(unsigned port, const std::string& rest) {
        return "Device1_Process" + std::to_string(port) + '_' + rest;
    }

    void setPort(unsigned port) const {
        const Board& board = mOpen.board();
        (void)board;
        for (const std::string half : {"0", "1"}) {
            mOpen.set(name(port, "LAG_MTUSizeCam" + half + "_LineLength"), 96);
            mOpen.set(name(port, "Buffer_0_DRAM_A_" + half + "_XLength"), width);
            mOpen.set(name(port, "Buffer_0_DRAM_A_" + half + "_YLength"), height);
        }
        mOpen.set(name(port, "LAG_CameraWidth_LineLength"), width);
        mOpen.set(name(port, "OutputFormat_FG_FORMAT_SelectSource"), 1);
        std::vector<std::uint32_t> identity(4096);
        std::iota(identity.begin(), identity.end(), 0u);
        mOpen.board().setDesignField(name(port, "LookupTable_LookupTable_LUTcontent"), 0, identity);
    }

    /// The 8-bit picture that a camera shows.
    static std::vector<std::uint8_t> chart(unsigned port, std::uint64_t number) {
        std::vector<std::uint8_t> bytes;
        for (const std::uint16_t sample : makeTestChart(port)->picture(number, width, height).samples) {
            bytes.push_back(static_cast<std::uint8_t>(sample >> 8));
        }
        return bytes;
    }

    int wait(int picture, int seconds, int dmaIndex = 0, dma_mem* memory = nullptr) const {
        return Fg_getLastPicNumberBlockingEx(mOpen.handle(), picture, dmaIndex, seconds, memory);
    }

    std::uint32_t own(int id, unsigned dmaIndex = 0) const {
        std::uint32_t value = 0;
        EXPECT_EQ(Fg_getParameter(mOpen.handle(), id, &value, dmaIndex), 0);
        return value;
    }

    OpenDesign mOpen;
};

TEST_F(AcquisitionTest, PicturesOfBothPortsArrive) {
    const Pictures first(mOpen, 2);
    const Pictures second_(mOpen, 2);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 2, 0, first.memory()), 0);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 1, 2, 0, second_.memory()), 0);
    EXPECT_EQ(wait(2, 1, 0), 2);
    EXPECT_EQ(wait(2, 1, 1), 2);
    EXPECT_EQ(first[0], chart(0, 1));
    EXPECT_EQ(first[1], chart(0, 2));
    EXPECT_EQ(second_[1], chart(1, 2));
    EXPECT_EQ(own(FG_TRANSFER_LEN), width * height);
}

TEST_F(AcquisitionTest, PictureComesAfterExposureAndReadout) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, 1), 0);
    mOpen.board().clock().advance(second / 10 + second / 100 + second / 50 - 1);
    EXPECT_EQ(Fg_getLastPicNumberEx(mOpen.handle(), 0, nullptr), 0);
    mOpen.board().clock().advance(1);
    EXPECT_EQ(Fg_getLastPicNumberEx(mOpen.handle(), 0, nullptr), 1);
}

TEST_F(AcquisitionTest, MemoryIsFilledRoundAndRound) {
    const Pictures pictures(mOpen, 3);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, -1, 0, pictures.memory()), 0);
    EXPECT_EQ(wait(5, 10), 5);
    EXPECT_EQ(pictures[0], chart(0, 4));
    EXPECT_EQ(pictures[1], chart(0, 5));
    EXPECT_EQ(pictures[2], chart(0, 3));
    EXPECT_EQ(Fg_stopAcquireEx(mOpen.handle(), 0, pictures.memory(), 0), 0);
}

TEST_F(AcquisitionTest, LargerPicturesAreCut) {
    const Pictures pictures(mOpen, 1, 100);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 1, 0, pictures.memory()), 0);
    EXPECT_EQ(wait(1, 1), 1);
    const std::vector<std::uint8_t> whole = chart(0, 1);
    EXPECT_EQ(pictures[0], std::vector<std::uint8_t>(whole.begin(), whole.begin() + 100));
    EXPECT_EQ(own(FG_TRANSFER_LEN), width * height);
}

TEST_F(AcquisitionTest, AcquisitionEndsAfterItsPictures) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, 2), 0);
    EXPECT_EQ(own(FG_DMASTATUS), 1u);
    EXPECT_EQ(own(FG_DMASTATUS, 1), 0u);
    mOpen.board().clock().advance(second);
    EXPECT_EQ(Fg_getLastPicNumberEx(mOpen.handle(), 0, nullptr), 2);
    EXPECT_EQ(own(FG_DMASTATUS), 0u);
    EXPECT_EQ(wait(3, 5), code::notAcquiring) << "no third picture will come";
    EXPECT_EQ(Fg_Acquire(mOpen.handle(), 0, 1), 0) << "the next one may begin without a stop";
}

TEST_F(AcquisitionTest, WaitingStepsTheClockToThePictureAndNoFurther) {
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    const std::uint64_t before = mOpen.board().clock().now();
    EXPECT_EQ(wait(1, 1000000), 1);
    EXPECT_EQ(mOpen.board().clock().now() - before, second / 10 + second / 100 + second / 50);
}

TEST_F(AcquisitionTest, WaitingTimesOutAtItsTime) {
    CameraSetup off = camera();
    off.connected = false;
    mOpen.board().setCamera(0, off);
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    const std::uint64_t before = mOpen.board().clock().now();
    EXPECT_EQ(wait(1, 3), code::timeout);
    EXPECT_EQ(Fg_getLastErrorNumber(mOpen.handle()), code::timeout);
    EXPECT_EQ(mOpen.board().clock().now() - before, 3 * second);
    const std::uint32_t seconds = 7;
    Fg_setParameter(mOpen.handle(), FG_TIMEOUT, &seconds, 0);
    EXPECT_EQ(wait(1, -1), code::timeout);
    EXPECT_EQ(mOpen.board().clock().now() - before, 10 * second) << "below 0 the port's own timeout counts";
    EXPECT_EQ(wait(1, 0), code::timeout);
    EXPECT_EQ(mOpen.board().clock().now() - before, 10 * second);
}

TEST_F(AcquisitionTest, WaitingOnTheWallClockEndsWithThePicture) {
    mOpen.board().clock().useWallClock();
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(wait(1, 60), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST_F(AcquisitionTest, StoppingEndsAWaitOfAnotherThread) {
    CameraSetup off = camera();
    off.connected = false;
    mOpen.board().setCamera(0, off);
    mOpen.board().clock().useWallClock();
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    int result = 0;
    std::thread waiting([&] { result = wait(1, 600); });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(Fg_stopAcquire(mOpen.handle(), 0), 0);
    waiting.join();
    EXPECT_EQ(result, code::notAcquiring);
}

TEST_F(AcquisitionTest, RegionFormatAndTableShowInThePicture) {
    for (const std::string half : {"0", "1"}) {
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_XOffset"), 16);
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_YOffset"), 5);
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_XLength"), 16);
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_YLength"), 2);
    }
    mOpen.set(name(0, "OutputFormat_FG_FORMAT_SelectSource"), 0);
    mOpen.set(name(0, "OutputFormat_FG_BITALIGNMENT_Value"), 1);
    const std::vector<std::uint32_t> inverted = [] {
        std::vector<std::uint32_t> table(4096);
        std::iota(table.rbegin(), table.rend(), 0u);
        return table;
    }();
    mOpen.board().setDesignField(name(0, "LookupTable_LookupTable_LUTcontent"), 0, inverted);
    const Pictures pictures(mOpen, 1);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 1, 0, pictures.memory()), 0);
    ASSERT_EQ(wait(1, 1), 1);
    EXPECT_EQ(own(FG_TRANSFER_LEN), 16u * 2 * 2);
    const std::vector<std::uint8_t> whole = chart(0, 1);
    for (std::size_t pixel = 0; pixel < 32; ++pixel) {
        const std::size_t source = (5 + pixel / 16) * width + 16 + pixel % 16;
        const auto expected = static_cast<std::uint32_t>((4095 - (whole[source] << 4)) << 4);
        EXPECT_EQ(pictures[0][2 * pixel] + 256u * pictures[0][2 * pixel + 1], expected) << pixel;
    }
}

TEST_F(AcquisitionTest, SwapMendsCrossedCables) {
    CameraSetup crossed = camera();
    crossed.cablesCrossed = true;
    mOpen.board().setCamera(0, crossed);
    const Pictures pictures(mOpen, 2);
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 2, 0, pictures.memory()), 0);
    ASSERT_EQ(wait(1, 1), 1);
    EXPECT_NE(pictures[0], chart(0, 1));
    mOpen.set(name(0, "LAG_Swap_Swap_Value"), 1);
    ASSERT_EQ(wait(2, 1), 2);
    EXPECT_EQ(pictures[1], chart(0, 2));
}

TEST_F(AcquisitionTest, FrameMemoryFillsAndOverflowsWhileNobodyTakesPictures) {
    const std::string level = name(0, "Buffer_0_DRAM_A_0_FillLevel");
    for (const std::string half : {"0", "1"}) {
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_XLength"), 4096);
        mOpen.set(name(0, "Buffer_0_DRAM_A_" + half + "_YLength"), 4096);
    }
    mOpen.board().clock().advance(second / 10 * 2 + second / 20);
    EXPECT_EQ(mOpen.get(level), 50u);
    EXPECT_EQ(mOpen.get(name(0, "Buffer_0_DRAM_A_1_FillLevel")), 50u);
    EXPECT_EQ(mOpen.get(name(0, "Overflow_OverflowOccurred")), 0u);
    mOpen.board().clock().advance(second);
    EXPECT_EQ(mOpen.get(level), 100u);
    EXPECT_EQ(mOpen.get(name(0, "Overflow_OverflowOccurred")), 1u);
    EXPECT_EQ(mOpen.get(name(1, "Overflow_OverflowOccurred")), 0u);
    EXPECT_EQ(mOpen.board().eventCount(name(0, "Overflow_Overflow")), 1u);
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    EXPECT_EQ(mOpen.get(level), 0u) << "an acquisition begins with an empty memory";
    EXPECT_EQ(mOpen.get(name(0, "Overflow_OverflowOccurred")), 0u);
}

TEST_F(AcquisitionTest, HalvesFillByTheirOwnRegion) {
    mOpen.set(name(0, "Buffer_0_DRAM_A_0_XLength"), 4096);
    mOpen.set(name(0, "Buffer_0_DRAM_A_0_YLength"), 4096);
    mOpen.board().clock().advance(second / 10 + second / 20);
    EXPECT_EQ(mOpen.get(name(0, "Buffer_0_DRAM_A_0_FillLevel")), 25u);
    EXPECT_EQ(mOpen.get(name(0, "Buffer_0_DRAM_A_1_FillLevel")), 0u);
}

TEST_F(AcquisitionTest, FramesRaiseTheirEvents) {
    mOpen.board().takeEvents();
    mOpen.board().clock().advance(second / 10 + second / 20);
    const std::string prefix = "Device1_Process2_Trigger_Monitoring_FVALEvents_Cam1_";
    EXPECT_EQ(mOpen.board().eventCount(prefix + "FrameStart"), 1u);
    EXPECT_EQ(mOpen.board().eventCount(prefix + "FrameEnd"), 1u);
    const std::vector<RaisedEvent> events = mOpen.board().takeEvents();
    ASSERT_EQ(events.size(), 4u);
    EXPECT_EQ(events[3].tick - events[0].tick, second / 50);
    EXPECT_TRUE(mOpen.board().takeEvents().empty());
    EXPECT_EQ(mOpen.board().exposures(1), 1u);
}

TEST_F(AcquisitionTest, BusyCamerasIgnoreExposures) {
    CameraSetup slow = camera();
    slow.readoutTicks = second / 4;
    mOpen.board().setCamera(0, slow);
    mOpen.board().clock().advance(second);
    EXPECT_EQ(mOpen.board().exposures(0), 4u) << "three fit a second of readout, one is under way";
}

TEST_F(AcquisitionTest, CameraStatusTellsCameraLinksAndAcquisition) {
    EXPECT_EQ(own(FG_CAMSTATUS_EXTENDED), 7u);
    Fg_Acquire(mOpen.handle(), 0, -1);
    EXPECT_EQ(own(FG_CAMSTATUS_EXTENDED), 15u);
    CameraSetup off = camera();
    off.connected = false;
    mOpen.board().setCamera(0, off);
    EXPECT_EQ(own(FG_CAMSTATUS_EXTENDED), 8u);
}

TEST_F(AcquisitionTest, StatusSelectorsAnswer) {
    const auto status = [this](StatusSelector selector) {
        return Fg_getStatusEx(mOpen.handle(), static_cast<int>(selector), 0, 0, nullptr);
    };
    Fg_Acquire(mOpen.handle(), 0, 2);
    wait(1, 1);
    EXPECT_EQ(status(StatusSelector::lastPicture), 1);
    EXPECT_EQ(status(StatusSelector::lostPictures), 0);
    EXPECT_EQ(status(StatusSelector::acquisitionRuns), 1);
    EXPECT_EQ(status(StatusSelector::transferredBytes), static_cast<int>(width * height));
    EXPECT_EQ(Fg_getStatusEx(mOpen.handle(), 99, 0, 0, nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_getStatusEx(mOpen.handle(), 1, 0, 2, nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_getAppletId(mOpen.handle(), "Orbelline"), 3652);
}

TEST_F(AcquisitionTest, BadAcquisitionsAreRefused) {
    int notAMemory = 0;
    auto* foreign = reinterpret_cast<dma_mem*>(&notAMemory);
    EXPECT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 1, 0, foreign), code::invalidParameter);
    EXPECT_EQ(Fg_AcquireEx(mOpen.handle(), 2, 1, 0, nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_AcquireEx(mOpen.handle(), -1, 1, 0, nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_AcquireEx(mOpen.handle(), 0, 0, 0, nullptr), code::invalidParameter);
    EXPECT_EQ(Fg_stopAcquireEx(mOpen.handle(), 0, nullptr, 0), code::notAcquiring);
    EXPECT_EQ(wait(1, 1), code::notAcquiring);
    EXPECT_EQ(wait(1, 1, 5), code::invalidParameter);
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    EXPECT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), code::busy);
    EXPECT_EQ(wait(1, 1, 0, foreign), code::notAcquiring);
}

TEST_F(AcquisitionTest, MemoryInUseCannotBeReleasedOrShared) {
    std::vector<std::uint8_t> picture(width * height);
    void* pointer = picture.data();
    dma_mem* memory = Fg_CreateImageMemory(mOpen.handle(), &pointer, 1, picture.size());
    ASSERT_EQ(Fg_AcquireEx(mOpen.handle(), 0, -1, 0, memory), 0);
    EXPECT_EQ(Fg_ReleaseImageMemory(mOpen.handle(), memory), code::busy);
    EXPECT_EQ(Fg_AcquireEx(mOpen.handle(), 1, -1, 0, memory), code::busy);
    EXPECT_EQ(Fg_stopAcquireEx(mOpen.handle(), 0, memory, 0), 0);
    EXPECT_EQ(Fg_ReleaseImageMemory(mOpen.handle(), memory), 0);
    EXPECT_EQ(Fg_ReleaseImageMemory(mOpen.handle(), memory), code::invalidParameter);
}

TEST_F(AcquisitionTest, MemoryNeedsPicturesAndAHandle) {
    std::uint8_t byte = 0;
    void* pointers[] = {&byte, nullptr};
    EXPECT_EQ(Fg_CreateImageMemory(mOpen.handle(), pointers, 2, 1), nullptr);
    EXPECT_EQ(Fg_CreateImageMemory(mOpen.handle(), pointers, 0, 1), nullptr);
    EXPECT_EQ(Fg_CreateImageMemory(mOpen.handle(), nullptr, 1, 1), nullptr);
    EXPECT_EQ(Fg_CreateImageMemory(nullptr, pointers, 1, 1), nullptr);
    EXPECT_EQ(Fg_ReleaseImageMemory(nullptr, nullptr), code::noHandle);
}

TEST_F(AcquisitionTest, ReleasedHandlesStopTheirOwnAcquisitionsOnly) {
    Fg_Struct* slave = Fg_InitHandleSlaveAware("slave", mOpen.board().device(), mOpen.design(), 1);
    ASSERT_EQ(Fg_Acquire(mOpen.handle(), 0, -1), 0);
    ASSERT_EQ(Fg_Acquire(slave, 1, -1), 0);
    EXPECT_EQ(Fg_FreeGrabber(slave), 0);
    EXPECT_EQ(own(FG_DMASTATUS, 0), 1u);
    EXPECT_EQ(own(FG_DMASTATUS, 1), 0u);
}

TEST_F(AcquisitionTest, SetupsThatCannotBeAreRefused) {
    const auto refused = [this](auto change) {
        CameraSetup setup = camera();
        change(setup);
        EXPECT_THROW(mOpen.board().setCamera(0, setup), std::invalid_argument);
    };
    refused([](CameraSetup& setup) { setup.sensorWidth = 15; });
    refused([](CameraSetup& setup) { setup.sensorWidth = 4097; });
    refused([](CameraSetup& setup) { setup.sensorHeight = 1; });
    refused([](CameraSetup& setup) { setup.packetBytes = 43; });
    refused([](CameraSetup& setup) { setup.packetBytes = 9037; });
    refused([](CameraSetup& setup) { setup.pixelFormat = static_cast<PixelFormat>(3); });
    refused([](CameraSetup& setup) { setup.pictureFolder = "/nowhere"; });
    EXPECT_EQ(mOpen.board().camera(0).sensorWidth, width) << "the camera is as before";
    EXPECT_THROW(mOpen.board().camera(2), std::out_of_range);
}

} // namespace
} // namespace simulator
