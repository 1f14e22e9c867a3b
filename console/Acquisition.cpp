#include "console/Acquisition.h"

#include "console/AppletHandle.h"
#include "console/ErrorText.h"
#include "console/Interruption.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/ValueText.h"

#include <algorithm>
#include <thread>

namespace orbctl {

namespace {

/// Memory for the pictures of one port; an i386 program has to leave room for everything else.
constexpr std::size_t memoryBytes = std::size_t{64} << 20;
constexpr std::chrono::milliseconds pollInterval{1};

std::string portText(unsigned port) { return "port " + textOf(std::uint64_t{port}); }

Reading readNamed(const AppletHandle& applet, const ParameterCatalogue& catalogue, const char* name) {
    const Parameter& parameter = catalogue.find(name);
    Reading reading = readParameter(applet, parameter);
    if (!reading.isGood())
        throw Failure(ExitStatus::refused, refusedRead(parameter, reading.code));
    return reading;
}

/// The likeliest reason for a picture that does not come.
std::string triggerHint(const AppletHandle& applet, unsigned port) {
    const ParameterCatalogue catalogue(applet, port);
    const Parameter* const state = catalogue.findName("FG_TRIGGERSTATE");
    const Reading reading = state == nullptr ? Reading{-1, {}} : readParameter(applet, *state);
    if (!reading.isGood() || plainText(*state, reading.value) == "TS_ACTIVE")
        return "";
    return "; the trigger system is stopped (FG_TRIGGERSTATE is " + plainText(*state, reading.value) + ")";
}

} // namespace

PictureGeometry geometryOf(const AppletHandle& applet, unsigned port) {
    const ParameterCatalogue catalogue(applet, port);
    PictureGeometry geometry;
    geometry.width = static_cast<unsigned>(numberOf(readNamed(applet, catalogue, "FG_WIDTH").value));
    geometry.height = static_cast<unsigned>(numberOf(readNamed(applet, catalogue, "FG_HEIGHT").value));
    const Reading format = readNamed(applet, catalogue, "FG_FORMAT");
    geometry.bytesPerPixel = plainText(catalogue.find("FG_FORMAT"), format.value) == "FG_GRAY16" ? 2 : 1;
    return geometry;
}

PictureBatch::PictureBatch(const AppletHandle& applet, unsigned port, const PictureGeometry& geometry,
                           unsigned count)
    : mApplet(applet), mPort(port), mGeometry(geometry),
      mPixels(count, std::vector<unsigned char>(geometry.bytes())) {
    std::vector<void*> pictures;
    for (auto& pixels : mPixels)
        pictures.push_back(pixels.data());
    const HostFunctions& host = applet.functions();
    mMemory = host.createImageMemory(applet.handle(), pictures.data(), count, geometry.bytes());
    if (mMemory == nullptr)
        throw Failure(ExitStatus::refused, portText(port) + ": the runtime gives no image memory");
    mStart = Clock::now();
    const int code =
        host.acquire(applet.handle(), static_cast<int>(port), static_cast<int>(count), 0, mMemory);
    if (code < 0) {
        host.releaseImageMemory(applet.handle(), mMemory);
        throw Failure(ExitStatus::refused,
                      portText(port) + ": the acquisition does not start: " + withCode(code));
    }
}

PictureBatch::~PictureBatch() {
    const HostFunctions& host = mApplet.functions();
    if (host.stopAcquire.isBound())
        host.stopAcquire(mApplet.handle(), static_cast<int>(mPort), mMemory, 0);
    if (host.releaseImageMemory.isBound())
        host.releaseImageMemory(mApplet.handle(), mMemory);
}

void PictureBatch::poll() {
    const int last = mApplet.functions().lastPicture(mApplet.handle(), static_cast<int>(mPort), mMemory);
    if (last < 0)
        throw Failure(ExitStatus::refused, portText(mPort) + ": the acquisition failed: " + withCode(last));
    const unsigned arrived = std::min(static_cast<unsigned>(last), static_cast<unsigned>(mPixels.size()));
    if (arrived <= mArrived)
        return;
    mLastTime = Clock::now();
    if (mArrived == 0) {
        mFirstSeen = arrived;
        mFirstTime = mLastTime;
    }
    mArrived = arrived;
}

GrayPicture PictureBatch::picture(unsigned index) const {
    return {mGeometry.width, mGeometry.height, mGeometry.bytesPerPixel, mPixels[index].data()};
}

unsigned PictureBatch::intervals() const {
    if (mArrived < 2)
        return 0;
    return mArrived == mFirstSeen ? mArrived : mArrived - mFirstSeen;
}

double PictureBatch::seconds() const {
    if (mArrived < 2)
        return 0;
    const Clock::time_point from = mArrived == mFirstSeen ? mStart : mFirstTime;
    return std::chrono::duration<double>(mLastTime - from).count();
}

Acquisition::Acquisition(const AppletHandle& applet, const std::vector<unsigned>& ports, unsigned count,
                         double timeout)
    : mApplet(applet), mCount(count), mTimeout(timeout) {
    for (const unsigned port : ports)
        mResults.push_back({port, geometryOf(applet, port), 0, 0, 0});
}

void Acquisition::startBatches() {
    std::size_t fitting = mCount - mDone;
    for (const PortResult& result : mResults)
        fitting = std::min(fitting, std::max<std::size_t>(
                                        1, memoryBytes / std::max<std::size_t>(1, result.geometry.bytes())));
    for (const PortResult& result : mResults)
        mBatches.push_back(std::make_unique<PictureBatch>(mApplet, result.port, result.geometry,
                                                          static_cast<unsigned>(fitting)));
}

bool Acquisition::areBatchesComplete() const {
    return std::all_of(mBatches.begin(), mBatches.end(),
                       [](const auto& batch) { return batch->isComplete(); });
}

std::size_t Acquisition::arrived() const {
    std::size_t sum = 0;
    for (const auto& batch : mBatches)
        sum += mDone + batch->arrived();
    return sum;
}

void Acquisition::failTimeout() const {
    for (const auto& batch : mBatches)
        if (!batch->isComplete())
            throw Failure(ExitStatus::refused, portText(batch->port()) + ": picture " +
                                                   textOf(std::uint64_t{mDone} + batch->arrived() + 1) +
                                                   " did not come within " + textOf(mTimeout) + " s" +
                                                   triggerHint(mApplet, batch->port()));
    throw Failure(ExitStatus::refused, "no picture came");
}

void Acquisition::waitForBatches(const ProgressHandler& progress) {
    using Clock = std::chrono::steady_clock;
    std::size_t before = arrived();
    Clock::time_point lastArrival = Clock::now();
    while (!areBatchesComplete() && !Interruption::isAskedFor()) {
        for (const auto& batch : mBatches)
            batch->poll();
        const Clock::time_point now = Clock::now();
        if (arrived() != before) {
            before = arrived();
            lastArrival = now;
            progress(before);
        } else if (std::chrono::duration<double>(now - lastArrival).count() > mTimeout) {
            failTimeout();
        }
        if (!areBatchesComplete())
            std::this_thread::sleep_for(pollInterval);
    }
}

void Acquisition::acquireSome(const ProgressHandler& progress) {
    startBatches();
    waitForBatches(progress);
}

void Acquisition::takePictures(const PictureHandler& handler) {
    unsigned most = 0;
    for (std::size_t place = 0; place < mBatches.size(); ++place) {
        const PictureBatch& batch = *mBatches[place];
        PortResult& result = mResults[place];
        for (unsigned index = 0; index < batch.arrived(); ++index)
            handler(batch.port(), mDone + index + 1, batch.picture(index));
        result.pictures += batch.arrived();
        result.intervals += batch.intervals();
        result.seconds += batch.seconds();
        most = std::max(most, batch.arrived());
    }
    mDone += most;
    mBatches.clear();
}

} // namespace orbctl
