#pragma once

/// libqelrt.so: loads a design image and tells what is in it. The applet links against this soname.

struct fpga_design;

/// One event of a design; the record belongs to the design.
struct QelEvent {
    unsigned id;
    const char* name;
};

extern "C" {

/// Loads a design from memory. Null when the image is damaged. The last argument is passed as 1.
fpga_design* QelLoadDesignFromBuffer(const void* image, unsigned size, int flag);
/// Loads a design from a file and checks its type number. Null when it cannot be read or has another type.
fpga_design* QelLoadQelFileWithType(const char* file, int type, int flag);
int QelUnloadQelFile(fpga_design* design);

/// Number of registers; they are numbered from 1.
int QelGetNrOfRegister(fpga_design* design);
/// Name of a register, owned by the design; null for an index outside 1 .. number of registers.
const char* QelGetRegisterName(fpga_design* design, int index);
/// Index of a register (from 1); 0 or less for an unknown name.
int QelGetRegisterByName(fpga_design* design, const char* name);
/// Number of bits of a register.
int QelGetRegisterBitRange(fpga_design* design, int index);

/// Event by index (from 0); null behind the last.
const QelEvent* QelGetEvent(fpga_design* design, int index);
}
