#include "simulator/design/LoadedDesign.h"

#include <mutex>
#include <utility>

fpga_design::fpga_design(simulator::DesignImage designImage) : image(std::move(designImage)) {
    for (std::size_t i = 0; i < image.registers.size(); ++i) {
        registerNumbers.emplace(image.registers[i].name, static_cast<int>(i + 1));
    }
    events.reserve(image.events.size());
    for (const std::string& event : image.events) {
        events.push_back({static_cast<unsigned>(events.size()), event.c_str()});
    }
}

namespace simulator {
namespace {

struct LoadedDesigns {
    std::mutex lock;
    std::unordered_map<const fpga_design*, std::shared_ptr<fpga_design>> designs;
};

LoadedDesigns& loadedDesigns() {
    static LoadedDesigns designs;
    return designs;
}

} // namespace

fpga_design* keepDesign(DesignImage image) {
    auto design = std::make_shared<fpga_design>(std::move(image));
    LoadedDesigns& loaded = loadedDesigns();
    const std::lock_guard<std::mutex> guard(loaded.lock);
    return loaded.designs.emplace(design.get(), design).first->second.get();
}

SharedDesign findDesign(const fpga_design* design) {
    LoadedDesigns& loaded = loadedDesigns();
    const std::lock_guard<std::mutex> guard(loaded.lock);
    const auto found = loaded.designs.find(design);
    return found == loaded.designs.end() ? nullptr : found->second;
}

bool unloadDesign(const fpga_design* design) {
    LoadedDesigns& loaded = loadedDesigns();
    const std::lock_guard<std::mutex> guard(loaded.lock);
    return loaded.designs.erase(design) > 0;
}

} // namespace simulator
