#pragma once

#include "simulator/Board.h"

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

namespace simulator {

/// The parameters that the runtime answers itself, each once per DMA channel. Every value is 32 bits wide.
class RuntimeParameters {
  public:
    struct Description {
        const char* name;
        int id;
        bool isWritable;
    };

    /// All of them, by id.
    static const std::array<Description, 10>& descriptions();
    /// By id, or null.
    static const Description* find(int id);
    /// By name, or null.
    static const Description* find(const std::string& name);

    RuntimeParameters() { reset(); }

    /// 0, or -2070 for an unknown id or DMA index.
    int read(int id, unsigned dmaIndex, std::uint32_t& value) const;
    /// 0, -2070 as for reading, or -12 for a parameter that cannot be written.
    int write(int id, unsigned dmaIndex, std::uint32_t value);

    /// Who answers for a status of the board.
    using Answer = std::function<std::uint32_t(unsigned dmaIndex)>;
    void answerWith(int id, Answer answer) { mAnswers[id] = std::move(answer); }

    void pin(int id, unsigned dmaIndex, std::uint32_t value) { mPinned[{id, dmaIndex}] = value; }
    void release(int id, unsigned dmaIndex) { mPinned.erase({id, dmaIndex}); }
    /// Drops pins and settings; the answers stay.
    void reset();

  private:
    std::map<std::pair<int, unsigned>, std::uint32_t> mPinned;
    std::map<std::pair<int, unsigned>, std::uint32_t> mSettings;
    std::map<int, Answer> mAnswers;
};

} // namespace simulator
