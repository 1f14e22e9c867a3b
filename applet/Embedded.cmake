# Provides the target orbelline_embedded: the icon and the design image as read-only data of whatever links it.

add_library(orbelline_embedded OBJECT AppletIcon.S AppletQel.S)
set(ORBELLINE_ICON "${CMAKE_CURRENT_SOURCE_DIR}/icon/Orbelline.png")
set_source_files_properties(AppletIcon.S PROPERTIES
    COMPILE_DEFINITIONS "ORBELLINE_EMBEDDED_ICON=\"${ORBELLINE_ICON}\"" OBJECT_DEPENDS "${ORBELLINE_ICON}")
set_source_files_properties(AppletQel.S PROPERTIES
    COMPILE_DEFINITIONS "ORBELLINE_EMBEDDED_DESIGN=\"${ORBELLINE_DESIGN_IMAGE}\"" OBJECT_DEPENDS "${ORBELLINE_DESIGN_IMAGE}")
