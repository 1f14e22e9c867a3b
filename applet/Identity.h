#pragma once

/// What the applet is called.
namespace identity {

constexpr const char* appletName = "Orbelline";
constexpr const char* manufacturer = "Kavotronic GmbH";
constexpr const char* cameraVersion = "2.2";
constexpr const char* designFile = "Orbelline.qel";
constexpr const char* guid = "7c1f0b9e-52d4-4a83-9b6e-3d18e0a4c275";
constexpr const char* description = "Halvora Advanced LAG for compatible link aggregation cameras with 12Bit "
                                    "image processing and lookup table for "
                                    "two Gigabit Ethernet grayscale area scan cameras.";
/// Type number of the design.
constexpr int designType = 3652;

} // namespace identity
