#include "simulator/model/DesignStore.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace simulator {
namespace {

std::uint64_t lowBits(unsigned bits) { return bits >= 64 ? UINT64_MAX : (std::uint64_t{1} << bits) - 1; }

} // namespace

std::uint64_t DesignCell::read() const {
    if (pinned) {
        return *pinned;
    }
    return (compute ? compute() : value) & lowBits(bits);
}

void DesignCell::write(std::uint64_t newValue) {
    value = newValue & lowBits(bits);
    if (table != nullptr) {
        const auto element = static_cast<std::uint32_t>(value & lowBits(elementBits));
        writeTable(static_cast<std::size_t>(value >> elementBits), &element, 1);
    }
    if (written) {
        written(value);
    }
}

bool DesignCell::writeTable(std::size_t first, const std::uint32_t* values, std::size_t count) {
    if (table == nullptr || first > table->size() || count > table->size() - first) {
        return false;
    }
    if (table.use_count() > 1) {
        table = std::make_shared<Table>(*table);
    }
    const auto mask = static_cast<std::uint32_t>(lowBits(elementBits));
    std::transform(values, values + count, table->begin() + static_cast<std::ptrdiff_t>(first),
                   [mask](std::uint32_t element) { return element & mask; });
    return true;
}

void DesignCell::reset() {
    value = 0;
    pinned.reset();
    if (table != nullptr) {
        table = std::make_shared<Table>(table->size());
    }
}

DesignCell& DesignStore::claim(const std::string& name) {
    if (std::exchange(mClaimed[name], true)) {
        throw std::logic_error(name + " is implemented by two blocks of the board");
    }
    return cell(name);
}

DesignCell* DesignStore::find(const std::string& name) {
    const auto found = mCells.find(name);
    return found == mCells.end() ? nullptr : &found->second;
}

std::shared_ptr<const DesignBinding> DesignStore::bind(const SharedDesign& design) {
    auto binding = std::make_shared<DesignBinding>();
    binding->design = design;
    const DesignImage& image = design->image;
    binding->registers.resize(image.registers.size());
    for (const DesignParameter& parameter : image.parameters) {
        const std::size_t index = parameter.registerIndex - 1;
        DesignCell*& behind = binding->registers[index];
        behind = behind != nullptr ? behind : &cell(parameter.name);
        bindRegister(image, index, *behind);
        if (parameter.elements > 0 &&
            (behind->table == nullptr || behind->table->size() != parameter.elements)) {
            behind->table = std::make_shared<Table>(parameter.elements);
        }
        if (parameter.elements > 0) {
            behind->elementBits = parameter.elementBits;
        }
        binding->parameterNumbers.emplace(parameter.name, binding->parameters.size());
        binding->parameters.push_back(behind);
    }
    for (std::size_t index = 0; index < image.registers.size(); ++index) {
        if (binding->registers[index] == nullptr) {
            binding->registers[index] = &cell(image.registers[index].name);
            bindRegister(image, index, *binding->registers[index]);
        }
    }
    return binding;
}

void DesignStore::reset() {
    for (auto& entry : mCells) {
        entry.second.reset();
    }
}

DesignCell& DesignStore::cell(const std::string& name) {
    const auto [found, isNew] = mCells.try_emplace(name);
    if (isNew) {
        found->second.name = name;
    }
    return found->second;
}

void DesignStore::bindRegister(const DesignImage& image, std::size_t index, DesignCell& target) {
    target.bits = image.registers[index].bits;
    target.isStatus = image.registers[index].isStatus;
}

} // namespace simulator
