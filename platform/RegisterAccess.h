#pragma once

/// libkavoiolibrt.so: reads and writes the registers of a board. The applet links against this soname.

struct QXdevice;

extern "C" {

/// Reads a register; fills 8 bytes at buffer, the lower word first. 0 or a negative error code.
int KavoRegisterRead(QXdevice* device, int reg, void* buffer);
/// Writes a register of up to 64 bits, given as its lower and upper word. 0 or a negative error code.
int KavoRegisterWrite(QXdevice* device, int reg, unsigned lower, unsigned upper);
}
