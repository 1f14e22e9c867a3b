#pragma once

#include "simulator/image/GrayPicture.h"

#include <memory>
#include <string>

namespace simulator {

/// What a camera looks at. Asked with the same number it answers the same picture.
class PictureSource {
  public:
    virtual ~PictureSource() = default;
    /// \param number  frame number, from 1
    virtual GrayPicture picture(std::uint64_t number, std::uint32_t width, std::uint32_t height) const = 0;
};

/// A moving test chart with the port and the frame number drawn into it.
std::shared_ptr<const PictureSource> makeTestChart(unsigned port);

/// The PGM and PNG files of a folder in the order of their names, over and over, each fitted to the sensor.
/// \throws std::invalid_argument when the folder has no such file or its first one cannot be read
std::shared_ptr<const PictureSource> makePictureFolder(const std::string& folder);

} // namespace simulator
