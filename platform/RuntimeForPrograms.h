#pragma once

#include "platform/FrameGrabber.h"

#include <cstddef>

/// What libgrabcore5.so offers to programs beside the calls on a handle: opening a board with an applet, and
/// image memory. An applet never calls these.

extern "C" {

/// Opens a board with an applet library: loads it, creates the applet on the board and returns the outer
/// handle.
/// \param appletFile  path of the applet library
/// \param board  board number, from 0
/// \param slave  not 0: share a board that another handle opened as master
/// \param error  receives 0 or an error code (that of the applet's Std_entry, or the runtime's); may be
///        null
/// \return the handle, released with Fg_FreeGrabber, or null
Fg_Struct* Fg_OpenBoard(const char* appletFile, unsigned board, int slave, int* error);

/// The applet library behind a handle, as dlopen gave it, or null; for the entry points that take no handle.
void* Fg_AppletLibrary(Fg_Struct* handle);

/// Makes an image memory of pictures that the program owns.
/// \param pictures      one pointer per picture; each stays valid until the memory is released
/// \param count         number of pictures, at least 1; an acquisition fills them round and round
/// \param pictureBytes  bytes at each pointer; a picture that is larger is cut
/// \return the memory, released with Fg_ReleaseImageMemory, or null
dma_mem* Fg_CreateImageMemory(Fg_Struct* handle, void* const* pictures, unsigned count,
                              std::size_t pictureBytes);
int Fg_ReleaseImageMemory(Fg_Struct* handle, dma_mem* memory);
}
