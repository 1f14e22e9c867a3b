/* A file as read-only data of the library, its size beside it as an unsigned 32-bit number. */

.macro embeddedFile data, size, path
    .section .rodata
    .balign 16
    .global \data
    .hidden \data
    .type \data, @object
\data:
    .incbin "\path"
1:
    .size \data, 1b - \data
    .balign 4
    .global \size
    .hidden \size
    .type \size, @object
    .size \size, 4
\size:
    .long 1b - \data
.endm
