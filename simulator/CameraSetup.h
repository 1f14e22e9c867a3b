#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// Pixel formats that a camera sends; the numbers are those of the design's pixel format register.
enum class PixelFormat : std::uint32_t { mono8 = 0, mono8Signed = 1, mono10 = 2, mono12 = 4, mono16 = 6 };

/// One camera as it stands on the desk: its sensor, what it sends, and how it is cabled to its two links. The
/// design has registers that must agree with it; where they do not, the picture is scrambled as on a real
/// board. The values here agree with the values that the applet sets when it is created.
struct CameraSetup {
    /// Sensor size in pixels, each from 16 to 4096 (height from 2).
    std::uint32_t sensorWidth = 1024;
    std::uint32_t sensorHeight = 1024;
    PixelFormat pixelFormat = PixelFormat::mono8;
    /// Size of one packet in bytes, 36 bytes of headers included: 44 to 9036. The pixels of a picture travel
    /// in packets, alternately over the two links; mono8 takes one byte a pixel, every other format two.
    std::uint32_t packetBytes = 7204;
    /// Cables exchanged between the two links of the port. The applet starts with the exchange of links
    /// switched on, so that a board cabled like this one shows straight pictures at once.
    bool cablesCrossed = true;
    /// Exposure time, and time from the end of exposure to the arrival of the whole picture, in ticks of 16
    /// ns.
    std::uint64_t exposureTicks = 62500;
    std::uint64_t readoutTicks = 125000;
    /// Time from one exposure to the next of a camera that runs free, in ticks of 16 ns; 0: the camera waits
    /// for the action commands of the trigger system.
    std::uint64_t freeRunningTicks = 0;
    /// A camera that is switched off or unplugged takes no trigger and sends nothing.
    bool connected = true;
    /// Folder of PGM and PNG files that the camera shows one after another in the order of their names,
    /// fitted to the sensor. Empty: a moving test chart with the frame number drawn into it.
    std::string pictureFolder;
};

} // namespace simulator
