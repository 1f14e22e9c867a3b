#include "simulator/model/RuntimeParameters.h"

#include "platform/ParameterIds.h"
#include "simulator/RuntimeCodes.h"

#include <algorithm>

namespace simulator {
namespace {

constexpr std::uint32_t timeoutAfterReset = 1000000;
constexpr std::uint32_t stopTimeoutAfterReset = 1000;

template <class Condition>
const RuntimeParameters::Description* findIf(Condition condition) {
    const auto& all = RuntimeParameters::descriptions();
    const auto* found = std::find_if(all.begin(), all.end(), condition);
    return found == all.end() ? nullptr : found;
}

} // namespace

const std::array<RuntimeParameters::Description, 10>& RuntimeParameters::descriptions() {
    static constexpr std::array<Description, 10> all = {{
        {"FG_TIMEOUT", FG_TIMEOUT, true},
        {"FG_APC_STOP_TIMEOUT", FG_APC_STOP_TIMEOUT, true},
        {"FG_CAMSTATUS_EXTENDED", FG_CAMSTATUS_EXTENDED, false},
        {"FG_NR_OF_DMAS", FG_NR_OF_DMAS, false},
        {"FG_NR_OF_CAMS", FG_NR_OF_CAMS, false},
        {"FG_NR_OF_PROCESSES", FG_NR_OF_PROCESSES, false},
        {"FG_DMA_PORT", FG_DMA_PORT, false},
        {"FG_CAM_PORT", FG_CAM_PORT, false},
        {"FG_TRANSFER_LEN", FG_TRANSFER_LEN, false},
        {"FG_DMASTATUS", FG_DMASTATUS, false},
    }};
    return all;
}

const RuntimeParameters::Description* RuntimeParameters::find(int id) {
    return findIf([id](const Description& each) { return each.id == id; });
}

const RuntimeParameters::Description* RuntimeParameters::find(const std::string& name) {
    return findIf([&name](const Description& each) { return each.name == name; });
}

void RuntimeParameters::reset() {
    mPinned.clear();
    mSettings.clear();
    for (unsigned dmaIndex = 0; dmaIndex < Board::numberOfPorts; ++dmaIndex) {
        mSettings[{FG_TIMEOUT, dmaIndex}] = timeoutAfterReset;
        mSettings[{FG_APC_STOP_TIMEOUT, dmaIndex}] = stopTimeoutAfterReset;
    }
}

int RuntimeParameters::read(int id, unsigned dmaIndex, std::uint32_t& value) const {
    if (dmaIndex >= Board::numberOfPorts || find(id) == nullptr) {
        return code::invalidParameter;
    }
    const auto pinned = mPinned.find({id, dmaIndex});
    const auto setting = mSettings.find({id, dmaIndex});
    const auto answer = mAnswers.find(id);
    if (pinned != mPinned.end()) {
        value = pinned->second;
    } else if (setting != mSettings.end()) {
        value = setting->second;
    } else if (answer != mAnswers.end()) {
        value = answer->second(dmaIndex);
    } else {
        const bool isPort = id == FG_DMA_PORT || id == FG_CAM_PORT;
        value = isPort ? dmaIndex : Board::numberOfPorts;
    }
    return code::ok;
}

int RuntimeParameters::write(int id, unsigned dmaIndex, std::uint32_t value) {
    const Description* description = find(id);
    if (dmaIndex >= Board::numberOfPorts || description == nullptr) {
        return code::invalidParameter;
    }
    if (!description->isWritable) {
        return code::notAvailable;
    }
    mSettings[{id, dmaIndex}] = value;
    return code::ok;
}

} // namespace simulator
