#include "console/BoardControl.h"

#include "console/ErrorText.h"

namespace orbctl {

namespace {

void require(int code, const char* what) {
    if (code < 0)
        throw Failure(ExitStatus::refused, std::string("the board ") + what + ": " + withCode(code));
}

} // namespace

bool BoardControl::isOfferedBy(const HostLibrary& runtime) {
    return runtime.symbol("Board_StartTrace") != nullptr;
}

BoardControl::BoardControl(const HostLibrary& runtime, unsigned board) : mBoard(board) {
    if (!isOfferedBy(runtime))
        throw Failure(ExitStatus::notFound,
                      "the runtime " + runtime.file() +
                          " cannot record trigger signals: only a board in software does");
    mStepByHand.bind(runtime);
    mAdvance.bind(runtime);
    mGetTime.bind(runtime);
    mPlayInput.bind(runtime);
    mStartTrace.bind(runtime);
    mStopTrace.bind(runtime);
    mReadTrace.bind(runtime);
}

void BoardControl::stepByHand(bool byHand) const {
    require(mStepByHand(mBoard, byHand ? 1 : 0), "does not change its clock");
}

void BoardControl::advance(std::uint64_t ticks) const { require(mAdvance(mBoard, ticks), "does not go on"); }

std::uint64_t BoardControl::time() const {
    std::uint64_t tick = 0;
    require(mGetTime(mBoard, &tick), "does not tell its time");
    return tick;
}

void BoardControl::playInput(unsigned input, std::uint64_t first, std::uint64_t high, std::uint64_t low,
                             std::uint64_t count) const {
    require(mPlayInput(mBoard, input, first, high, low, count), "does not take the pulses");
}

void BoardControl::startTrace(unsigned capacity) const {
    require(mStartTrace(mBoard, capacity), "does not record");
}

void BoardControl::stopTrace() const { require(mStopTrace(mBoard), "does not end the recording"); }

std::vector<BoardSignalSample> BoardControl::readTrace() const {
    const int count = mReadTrace(mBoard, nullptr, 0, nullptr);
    require(count, "gives no recording");
    std::vector<BoardSignalSample> samples(static_cast<std::size_t>(count));
    const int copied = mReadTrace(mBoard, samples.data(), static_cast<unsigned>(samples.size()), nullptr);
    require(copied, "gives no recording");
    samples.resize(std::min(samples.size(), static_cast<std::size_t>(copied)));
    return samples;
}

SteppedTime::SteppedTime(const BoardControl& control) : mControl(control) { mControl.stepByHand(true); }

SteppedTime::~SteppedTime() {
    try {
        mControl.stepByHand(false);
    } catch (const Failure&) {
        // The board refused: its time stays as it is, which the next command tells.
    }
}

} // namespace orbctl
