#pragma once

/// The runtime's error codes, as far as the applet gives them itself. Every other negative number that a
/// caller sees came from one of the host libraries and was passed on unchanged.
namespace kavo::error {

constexpr int ok = 0;
/// The host function is missing, there is no inner handle, or the parameter cannot be written.
constexpr int notAvailable = -12;
/// A software trigger was sent without a queue while the generator is busy.
constexpr int triggerBusy = -60;
/// The design could not be loaded, or the inner handle could not be opened.
constexpr int initialisationFailed = -100;
/// A buffer is too small, or memory could not be had.
constexpr int bufferTooSmall = -500;
/// The handle is null or carries no applet.
constexpr int noHandle = -2001;
/// The runtime library or its initialisation function was not found.
constexpr int runtimeMissing = -2031;
/// Invalid parameter, index, name, DMA index or null buffer.
constexpr int invalidParameter = -2070;
/// No description for the port, or an enumeration value without a meaning.
constexpr int noDescription = -2075;
constexpr int fileNotFound = -2076;
/// The downscale would let a trigger pulse reach the trigger period.
constexpr int downscaleReachesPeriod = -2078;
/// The frame rate, delay or width would let a trigger pulse reach the trigger period.
constexpr int pulseReachesPeriod = -2079;
/// The applet does not support the operation.
constexpr int notSupported = -2130;
/// A software trigger was sent in another trigger mode than Software.
constexpr int notSoftwareMode = -2140;
/// A software trigger was sent while the trigger system is stopped.
constexpr int triggerNotActive = -2141;
constexpr int configurationLoadFailed = -5000;
/// A configuration or lookup-table file could not be written or read.
constexpr int fileAccessFailed = -5001;
/// The value lies outside its range or is in no entry of its enumeration.
constexpr int outOfRange = -6000;
/// The value lies in its range but off its step.
constexpr int offStep = -7080;
/// A configuration file has no such key (never leaves the file parser).
constexpr int keyNotFound = -8000;

} // namespace kavo::error
