#pragma once

#include <cstdint>

/// What a board in software offers to programs beside the runtime's calls: its time, its trigger inputs, a
/// recording of its trigger signals, and its events. The runtime library exports these functions; that of a
/// real board has none of them, so a program looks each up by its name.
///
/// Times are board time, in ticks of 16 ns. The board is named by its number, as in Fg_OpenBoard. Every
/// function gives 0 (or a count, where it says so), or a negative error code for a board, input or wave that
/// cannot be.

/// What a recorded signal is. A level has a value until its next sample; an instant is a pulse without
/// length.
enum BoardSignalKind : int {
    boardSignalInput = 0,          ///< level at an input pin; the index is the pin, the port 0
    boardSignalDebouncedInput = 1, ///< level of a pin behind the debounce filter
    boardSignalQueueFillLevel = 2, ///< pulses that wait in the port's queue
    boardSignalGeneratorPulse = 3, ///< instant: a pulse left the port's generator
    boardSignalPulseForm = 4,      ///< level of a pulse form generator; the index is the generator
    boardSignalOutput = 5,         ///< level of a trigger output; the index is the output
    boardSignalActionCommand = 6,  ///< instant: an action command went to the camera
    boardSignalFrameStart = 7,     ///< instant: a picture began to arrive
    boardSignalFrameEnd = 8,       ///< instant: a picture has arrived
    boardSignalExposure = 9,       ///< level: the camera exposes
};

/// One change of a signal.
struct BoardSignalSample {
    std::uint64_t tick;
    std::int32_t kind; ///< a BoardSignalKind
    std::uint32_t port;
    std::uint32_t index;
    std::uint32_t value;
};

/// An event that the board raised.
struct BoardEvent {
    std::uint64_t tick;
    /// As an applet knows it (Fg_getEventName); 0 for an event that the open design does not number from 0 to
    /// 63.
    std::uint64_t mask;
};

extern "C" {

/// Lets board time stand still but for Board_Advance (not 0), or follow the wall clock (0).
int Board_StepByHand(unsigned board, int byHand);
/// Moves the time of a board that is stepped by hand.
int Board_Advance(unsigned board, std::uint64_t ticks);
/// Present board time.
int Board_GetTime(unsigned board, std::uint64_t* tick);

/// Plays pulses on an input pin, in place of those that it may be playing.
/// \param first  tick of the first rising edge
/// \param high   ticks of each high level, at least 1
/// \param low    ticks between them, at least 1
/// \param count  number of pulses, 0 without end
int Board_PlayInput(unsigned board, unsigned input, std::uint64_t first, std::uint64_t high,
                    std::uint64_t low, std::uint64_t count);

/// Starts a recording of every trigger signal and exposure that keeps the latest samples; one under way is
/// thrown away.
int Board_StartTrace(unsigned board, unsigned capacity);
/// Ends the recording, which can still be read.
int Board_StopTrace(unsigned board);
/// Copies a recording: the levels with which it begins, then its samples, oldest first.
/// \param samples   receives at most \p capacity samples; may be null when \p capacity is 0
/// \param dropped   receives the number of samples that were lost; may be null
/// \return the number of samples that there are to copy
int Board_ReadTrace(unsigned board, BoardSignalSample* samples, unsigned capacity, std::uint64_t* dropped);

/// Takes the events that were raised since the board was switched on or since they were last taken, oldest
/// first; the board keeps the latest 65536.
/// \param events  receives at most \p capacity events; those beyond stay for the next call
/// \return the number of events that were taken
int Board_TakeEvents(unsigned board, BoardEvent* events, unsigned capacity);
}
