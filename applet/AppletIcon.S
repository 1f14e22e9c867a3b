#include "applet/EmbeddedFile.inc.S"

embeddedFile appletIconData, appletIconSize, ORBELLINE_EMBEDDED_ICON

.section .note.GNU-stack, "", @progbits
