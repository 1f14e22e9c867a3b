#pragma once

#include "simulator/design/LoadedDesign.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace simulator {

using Table = std::vector<std::uint32_t>;

/// What the board keeps for one design parameter or register. A block of the board that implements it may
/// answer reads itself and be told of writes.
///
/// Each opening of a design shapes its cells anew while handles that are open look at the shape without the
/// board's lock; everything else is for holders of the lock.
struct DesignCell {
    std::string name;
    std::atomic<unsigned> bits{64};
    std::atomic<bool> isStatus{false}; ///< refuses writes of the host
    std::uint64_t value = 0;
    std::optional<std::uint64_t> pinned;
    std::atomic<unsigned> elementBits{0};
    /// The table of a field parameter, else null; never changed while somebody else holds it.
    std::shared_ptr<Table> table;

    std::function<std::uint64_t()> compute;     ///< answers a read; without it a read gives the value
    std::function<void(std::uint64_t)> written; ///< told of a write, after the value was stored

    std::uint64_t read() const;
    void write(std::uint64_t newValue);
    /// False when the elements do not fit the table.
    bool writeTable(std::size_t first, const std::uint32_t* values, std::size_t count);
    void reset();
};

/// The cells that stand behind a design's registers and parameters, once for each handle that opened the
/// design.
struct DesignBinding {
    SharedDesign design;
    std::vector<DesignCell*> registers;  ///< element i is register i + 1
    std::vector<DesignCell*> parameters; ///< in the order of the design
    std::unordered_map<std::string, std::size_t> parameterNumbers;
};

/// All cells of a board, by full name. Cells live as long as the board.
class DesignStore {
  public:
    /// The cell of a block that implements it; a cell belongs to one block only.
    /// \throws std::logic_error when the name was claimed before
    DesignCell& claim(const std::string& name);
    DesignCell* find(const std::string& name);

    /// Makes the cells that a design needs and connects it with them. Cells that exist keep their values.
    std::shared_ptr<const DesignBinding> bind(const SharedDesign& design);

    void reset();

  private:
    DesignCell& cell(const std::string& name);
    void bindRegister(const DesignImage& image, std::size_t index, DesignCell& target);

    std::map<std::string, DesignCell> mCells;
    std::map<std::string, bool> mClaimed;
};

} // namespace simulator
