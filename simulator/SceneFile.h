#pragma once

#include "simulator/Board.h"

#include <string>

namespace simulator {

/// Sets the scene of a board from a text file, for programs that cannot call the control API themselves:
/// cameras and trigger inputs. docs/board.md describes the lines.
/// \throws std::runtime_error  naming file, line and mistake; what stands before the mistake has happened
SIMULATOR_PUBLIC void setScene(Board& board, const std::string& file);

/// Sets the scene from the file that the environment variable ORBELLINE_BOARD_SCENE names, if it is set and
/// the board was not set up that way before in this process.
SIMULATOR_PUBLIC void setSceneFromEnvironment(Board& board);

} // namespace simulator
