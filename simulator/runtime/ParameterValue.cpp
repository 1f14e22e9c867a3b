#include "simulator/runtime/ParameterValue.h"

#include "platform/ParameterValues.h"
#include "simulator/RuntimeCodes.h"

#include <algorithm>
#include <cstring>

namespace simulator {
namespace {

constexpr int ownWidth = 0;

/// Bytes of a plain value of a type; 0 for a type that none has.
std::size_t scalarBytes(unsigned bits, int type) {
    switch (type) {
    case ownWidth:
        return bits <= 32 ? sizeof(std::uint32_t) : sizeof(std::uint64_t);
    case kavo::type::unsigned32:
        return sizeof(std::uint32_t);
    case kavo::type::signed64:
    case kavo::type::unsigned64:
        return sizeof(std::uint64_t);
    default:
        return 0;
    }
}

template <class Record>
Record recordAt(const void* buffer) {
    Record record;
    std::memcpy(&record, buffer, sizeof record);
    return record;
}

bool isEntry(int type) { return type == ownWidth || type == kavo::type::fieldEntry; }

/// Whether a run can be followed at all: its elements are words and are there.
bool isRun(const FieldAccess& access) {
    return access.type == static_cast<std::uint32_t>(kavo::type::unsigned32) &&
           (access.values != nullptr || access.count == 0);
}

} // namespace

int storeScalar(std::uint64_t value, unsigned bits, int type, void* buffer) {
    const std::size_t bytes = scalarBytes(bits, type);
    std::memcpy(buffer, &value, bytes);
    return bytes > 0 ? code::ok : code::invalidParameter;
}

int loadScalar(const void* buffer, unsigned bits, int type, std::uint64_t& value) {
    const std::size_t bytes = scalarBytes(bits, type);
    value = 0;
    std::memcpy(&value, buffer, bytes);
    return bytes > 0 ? code::ok : code::invalidParameter;
}

std::vector<std::uint32_t> scalarWords(const void* buffer, unsigned bits, int type) {
    std::vector<std::uint32_t> words(scalarBytes(bits, type) / sizeof(std::uint32_t));
    if (!words.empty()) {
        std::memcpy(words.data(), buffer, words.size() * sizeof(std::uint32_t));
    }
    return words;
}

int readTableValue(BoardModel& model, const DesignCell& cell, void* buffer, int type) {
    const std::shared_ptr<const Table> table = model.readTable(cell);
    if (isEntry(type)) {
        auto entry = recordAt<FieldParameterInt_s>(buffer);
        if (entry.index >= table->size()) {
            return code::invalidParameter;
        }
        entry.value = (*table)[entry.index];
        std::memcpy(buffer, &entry, sizeof entry);
        return code::ok;
    }
    if (type != kavo::type::wholeField) {
        return code::invalidParameter;
    }
    const auto access = recordAt<FieldAccess>(buffer);
    if (!isRun(access) || access.index > table->size() || access.count > table->size() - access.index) {
        return code::invalidParameter;
    }
    auto* elements = static_cast<std::uint32_t*>(const_cast<void*>(access.values));
    std::copy_n(table->begin() + static_cast<std::ptrdiff_t>(access.index), access.count, elements);
    return code::ok;
}

int writeTableValue(BoardModel& model, DesignCell& cell, const void* buffer, int type) {
    if (isEntry(type)) {
        const auto entry = recordAt<FieldParameterInt_s>(buffer);
        return model.writeTable(cell, entry.index, &entry.value, 1);
    }
    if (type != kavo::type::wholeField) {
        return code::invalidParameter;
    }
    const auto access = recordAt<FieldAccess>(buffer);
    if (!isRun(access)) {
        return code::invalidParameter;
    }
    return model.writeTable(cell, access.index, static_cast<const std::uint32_t*>(access.values),
                            access.count);
}

std::vector<std::uint32_t> tableWords(const void* buffer, int type) {
    if (isEntry(type)) {
        const auto entry = recordAt<FieldParameterInt_s>(buffer);
        return {entry.value, entry.index};
    }
    if (type != kavo::type::wholeField) {
        return {};
    }
    const auto access = recordAt<FieldAccess>(buffer);
    std::vector<std::uint32_t> words = {access.type, access.index, access.count};
    if (isRun(access)) {
        const auto* elements = static_cast<const std::uint32_t*>(access.values);
        words.insert(words.end(), elements, elements + access.count);
    }
    return words;
}

} // namespace simulator
