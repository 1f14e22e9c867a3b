# What `cmake --install` puts where: the applet, the board in software for programs, the console.
#
# lib/orbelline repeats the folders of the build, so the console finds its neighbours in both. The board's libraries
# bear the names of the host's own, so they never go into a folder that the loader searches.

include(CMakePackageConfigHelpers)

set(orbelline_home lib/orbelline)

install(TARGETS Orbelline LIBRARY DESTINATION ${orbelline_home}/applet COMPONENT applet)

if(ORBELLINE_SIMULATOR)
    install(TARGETS orbelline_board grabcore5 qelrt kavoiolibrt
        LIBRARY DESTINATION ${orbelline_home}/simulator COMPONENT board)
    install(DIRECTORY simulator/ DESTINATION include/orbelline/simulator COMPONENT board
        FILES_MATCHING PATTERN "*.h"
        PATTERN design EXCLUDE PATTERN image EXCLUDE PATTERN model EXCLUDE PATTERN registers EXCLUDE
        PATTERN runtime EXCLUDE PATTERN Observed.h EXCLUDE PATTERN RuntimeCodes.h EXCLUDE)
    install(DIRECTORY platform/ DESTINATION include/orbelline/platform COMPONENT board
        FILES_MATCHING PATTERN "*.h" PATTERN import EXCLUDE)

    set(orbelline_generated "${CMAKE_BINARY_DIR}/cmake")
    configure_file(cmake/orbelline-board.pc.in ${orbelline_generated}/orbelline-board.pc @ONLY)
    configure_file(cmake/OrbellineBoardConfig.cmake.in ${orbelline_generated}/OrbellineBoardConfig.cmake @ONLY)
    write_basic_package_version_file(${orbelline_generated}/OrbellineBoardConfigVersion.cmake
        COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
    install(FILES ${orbelline_generated}/orbelline-board.pc DESTINATION lib/pkgconfig COMPONENT board)
    install(FILES ${orbelline_generated}/OrbellineBoardConfig.cmake
                  ${orbelline_generated}/OrbellineBoardConfigVersion.cmake
        DESTINATION lib/cmake/OrbellineBoard COMPONENT board)
endif()

if(ORBELLINE_CONSOLE)
    install(TARGETS orbctl RUNTIME DESTINATION ${orbelline_home}/console COMPONENT console)
    install(CODE "
        set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/bin\")
        file(MAKE_DIRECTORY \"\${bin}\")
        file(CREATE_LINK ../${orbelline_home}/console/orbctl \"\${bin}/orbctl\" SYMBOLIC)"
        COMPONENT console)
endif()
