#pragma once

#include "platform/DesignRuntime.h"
#include "platform/FrameGrabber.h"
#include "simulator/Board.h"
#include "simulator/HostCalls.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>

namespace simulator::tests {

inline std::string committedImage() {
    std::ifstream file(DESIGN_IMAGE_FILE, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A design loaded for the length of a test.
class LoadedImage {
  public:
    explicit LoadedImage(const std::string& image = committedImage())
        : mDesign(QelLoadDesignFromBuffer(image.data(), static_cast<unsigned>(image.size()), 1)) {}
    ~LoadedImage() { QelUnloadQelFile(mDesign); }
    LoadedImage(const LoadedImage&) = delete;
    LoadedImage& operator=(const LoadedImage&) = delete;

    fpga_design* get() const { return mDesign; }

  private:
    fpga_design* mDesign;
};

/// An inner handle as an applet opens it, on a board that is as after power-on and stepped by hand.
class OpenDesign {
  public:
    explicit OpenDesign(unsigned boardNumber = 0, const std::string& image = committedImage())
        : mImage(image), mBoard(Board::at(boardNumber)) {
        hostCalls().reset();
        mBoard.resetAndStepByHand();
        mHandle = Fg_InitHandleSlaveAware("test", mBoard.device(), mImage.get(), 0);
        if (mHandle == nullptr) {
            throw std::runtime_error("no inner handle");
        }
    }
    ~OpenDesign() {
        hostCalls().reset();
        Fg_FreeGrabber(mHandle);
    }
    OpenDesign(const OpenDesign&) = delete;
    OpenDesign& operator=(const OpenDesign&) = delete;

    Fg_Struct* handle() const { return mHandle; }
    Board& board() const { return mBoard; }
    fpga_design* design() const { return mImage.get(); }

    int id(const std::string& name) const { return Fg_getParameterIdByName(mHandle, name.c_str()); }

    int set(const std::string& name, std::uint32_t value) const {
        return Fg_setParameterWithType(mHandle, id(name), &value, 0, 2);
    }

    std::uint32_t get(const std::string& name) const {
        std::uint32_t value = 0;
        if (Fg_getParameterWithType(mHandle, id(name), &value, 0, 2) != 0) {
            throw std::runtime_error(name + " cannot be read");
        }
        return value;
    }

  private:
    LoadedImage mImage;
    Board& mBoard;
    Fg_Struct* mHandle = nullptr;
};

} // namespace simulator::tests
