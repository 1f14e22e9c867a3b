#pragma once

#include "platform/DesignRuntime.h"
#include "simulator/design/DesignImage.h"
#include "simulator/Visibility.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// A design that the design runtime has loaded: the image, prepared for questions. Never changed once made.
struct SIMULATOR_PUBLIC fpga_design {
    explicit fpga_design(simulator::DesignImage designImage);
    fpga_design(const fpga_design&) = delete;
    fpga_design& operator=(const fpga_design&) = delete;

    const simulator::DesignImage image;
    std::unordered_map<std::string, int> registerNumbers; ///< from 1; the first of a repeated name
    std::vector<QelEvent> events;
};

namespace simulator {

using SharedDesign = std::shared_ptr<const fpga_design>;

/// Keeps a design until unloadDesign(); the pointer is its handle.
SIMULATOR_PUBLIC fpga_design* keepDesign(DesignImage image);
/// The design behind a handle; null for a pointer that is no loaded design, which is compared and never
/// followed.
SIMULATOR_PUBLIC SharedDesign findDesign(const fpga_design* design);
/// False for a pointer that is no loaded design.
SIMULATOR_PUBLIC bool unloadDesign(const fpga_design* design);

} // namespace simulator
