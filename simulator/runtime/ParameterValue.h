#pragma once

#include "simulator/model/BoardModel.h"

#include <cstdint>
#include <vector>

/// How values cross the runtime's typed and untyped calls. A type code of 0 stands for the parameter's own
/// width: 4 bytes up to 32 bits, 8 bytes above, and for a table one entry.
namespace simulator {

/// 0, or -2070 for a type code that no plain parameter has.
int storeScalar(std::uint64_t value, unsigned bits, int type, void* buffer);
int loadScalar(const void* buffer, unsigned bits, int type, std::uint64_t& value);
/// The 32-bit words of a value, low word first.
std::vector<std::uint32_t> scalarWords(const void* buffer, unsigned bits, int type);

/// 0, or -2070 for a type code that no table has, or elements that do not fit the table.
int readTableValue(BoardModel& model, const DesignCell& cell, void* buffer, int type);
int writeTableValue(BoardModel& model, DesignCell& cell, const void* buffer, int type);
/// Value and index of an entry; type, index and count of a run, then its elements.
std::vector<std::uint32_t> tableWords(const void* buffer, int type);

} // namespace simulator
