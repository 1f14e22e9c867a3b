#pragma once

#include "simulator/Board.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace simulator {

/// The events that a board has raised: the latest ones in full, and how often each came.
class EventLog {
  public:
    static constexpr std::size_t mostKept = 65536;

    void raise(std::uint64_t tick, const std::string& name) {
        auto& counted = *mCounts.emplace(name, 0).first;
        ++counted.second;
        if (mLatest.size() == mostKept) {
            mLatest.pop_front();
        }
        mLatest.push_back({tick, &counted.first});
    }

    /// Takes the oldest events, at most so many.
    std::vector<RaisedEvent> take(std::size_t most) {
        const auto end = mLatest.begin() + static_cast<std::ptrdiff_t>(std::min(most, mLatest.size()));
        std::vector<RaisedEvent> events;
        events.reserve(std::min(most, mLatest.size()));
        for (auto entry = mLatest.begin(); entry != end; ++entry) {
            events.push_back({entry->tick, *entry->name});
        }
        mLatest.erase(mLatest.begin(), end);
        return events;
    }

    std::uint64_t count(const std::string& name) const {
        const auto found = mCounts.find(name);
        return found == mCounts.end() ? 0 : found->second;
    }

    void reset() {
        mLatest.clear();
        mCounts.clear();
    }

  private:
    struct Entry {
        std::uint64_t tick;
        const std::string* name; ///< key in mCounts
    };

    std::map<std::string, std::uint64_t> mCounts;
    std::deque<Entry> mLatest;
};

} // namespace simulator
