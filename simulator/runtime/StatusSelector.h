#pragma once

namespace simulator {

/// What Fg_getStatusEx can be asked for (its argument param).
enum class StatusSelector : int {
    lastPicture = 1,     ///< number of the last picture, 0 before the first
    lostPictures = 2,    ///< pictures lost to overflow since the acquisition began
    acquisitionRuns = 3, ///< 1 while more pictures are to come
    transferredBytes = 4 ///< size of the last picture in bytes
};

} // namespace simulator
