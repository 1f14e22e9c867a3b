#include "applet/EmbeddedFile.inc.S"

embeddedFile rawQelData, rawQelDataSize, ORBELLINE_EMBEDDED_DESIGN

.section .note.GNU-stack, "", @progbits
