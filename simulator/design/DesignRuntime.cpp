#include "platform/DesignRuntime.h"

#include "simulator/design/LoadedDesign.h"
#include "simulator/Observed.h"

#include <fstream>
#include <optional>
#include <sstream>

/// libqelrt.so: every function answers a null or unknown design, and whatever bytes an image has.

#define EXPORTED extern "C" __attribute__((visibility("default")))

using simulator::CallKind;
using simulator::DesignImage;
using simulator::SharedDesign;

namespace {

/// Answers a question about a design; an unknown design gives what stands for nothing.
template <class Answer>
auto ask(const char* function, fpga_design* design, int index, const char* name, Answer answer)
    -> decltype(answer(*design)) {
    return simulator::observed(
        CallKind::designQuery, function,
        [&](simulator::Call& call) {
            call.id = index;
            call.name = name != nullptr ? name : "";
        },
        [&]() -> decltype(answer(*design)) {
            const SharedDesign known = simulator::findDesign(design);
            return known != nullptr ? answer(*known) : decltype(answer(*design)){};
        });
}

bool isRegister(const fpga_design& design, int index) {
    return index >= 1 && static_cast<std::size_t>(index) <= design.image.registers.size();
}

const simulator::DesignRegister& registerAt(const fpga_design& design, int index) {
    return design.image.registers[static_cast<std::size_t>(index) - 1];
}

fpga_design* keep(std::optional<DesignImage> image) {
    return image ? simulator::keepDesign(std::move(*image)) : nullptr;
}

fpga_design* loadFile(const char* file, int type) {
    std::ifstream input(file != nullptr ? file : "", std::ios::binary);
    if (!input) {
        return nullptr;
    }
    // Inserting the buffer keeps a reading failure, as a folder gives it, inside the stream.
    std::ostringstream content;
    content << input.rdbuf();
    const std::string bytes = content.str();
    std::optional<DesignImage> image = DesignImage::decode(bytes.data(), bytes.size());
    return image && image->type == type ? keep(std::move(image)) : nullptr;
}

} // namespace

EXPORTED fpga_design* QelLoadDesignFromBuffer(const void* image, unsigned size, int) {
    return simulator::observed(
        CallKind::designLoad, "QelLoadDesignFromBuffer", [](simulator::Call&) {},
        [&] { return keep(DesignImage::decode(image, size)); });
}

EXPORTED fpga_design* QelLoadQelFileWithType(const char* file, int type, int) {
    return simulator::observed(
        CallKind::designLoad, "QelLoadQelFileWithType",
        [&](simulator::Call& call) {
            call.name = file != nullptr ? file : "";
            call.type = type;
        },
        [&] { return loadFile(file, type); });
}

EXPORTED int QelUnloadQelFile(fpga_design* design) {
    return simulator::observed(
        CallKind::designUnload, "QelUnloadQelFile", [](simulator::Call&) {},
        [&] { return simulator::unloadDesign(design) ? 0 : -1; });
}

EXPORTED int QelGetNrOfRegister(fpga_design* design) {
    return ask("QelGetNrOfRegister", design, 0, nullptr,
               [](const fpga_design& known) { return static_cast<int>(known.image.registers.size()); });
}

EXPORTED const char* QelGetRegisterName(fpga_design* design, int index) {
    return ask("QelGetRegisterName", design, index, nullptr, [&](const fpga_design& known) -> const char* {
        return isRegister(known, index) ? registerAt(known, index).name.c_str() : nullptr;
    });
}

EXPORTED int QelGetRegisterByName(fpga_design* design, const char* name) {
    return ask("QelGetRegisterByName", design, 0, name, [&](const fpga_design& known) {
        const auto found = known.registerNumbers.find(name != nullptr ? name : "");
        return found == known.registerNumbers.end() ? 0 : found->second;
    });
}

EXPORTED int QelGetRegisterBitRange(fpga_design* design, int index) {
    return ask("QelGetRegisterBitRange", design, index, nullptr, [&](const fpga_design& known) {
        return isRegister(known, index) ? static_cast<int>(registerAt(known, index).bits) : 0;
    });
}

EXPORTED const QelEvent* QelGetEvent(fpga_design* design, int index) {
    return ask("QelGetEvent", design, index, nullptr, [&](const fpga_design& known) -> const QelEvent* {
        const bool isEvent = index >= 0 && static_cast<std::size_t>(index) < known.events.size();
        return isEvent ? &known.events[static_cast<std::size_t>(index)] : nullptr;
    });
}
