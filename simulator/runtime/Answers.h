#pragma once

#include "platform/FrameGrabber.h"
#include "simulator/runtime/BoundSymbols.h"

/// What libgrabcore5.so answers for each function that an applet binds by name: answer_Fg_setParameter and so
/// on, of the same type as the function. The functions themselves are indirect (IndirectFunctions.cpp), so
/// that they can be made to be missing.
#define SIMULATOR_ANSWER(name) extern "C" decltype(name) answer_##name;
SIMULATOR_BOUND_SYMBOLS(SIMULATOR_ANSWER)
#undef SIMULATOR_ANSWER
