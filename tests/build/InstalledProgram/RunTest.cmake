# Installs the product into a folder of its own, builds a program against it by either of the two descriptions of the
# package, and runs it.  Variables: BUILD, WORK, SOURCE, COMPILER, FLAGS

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    message("${output}")
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "failed: ${ARGN}")
    endif()
endfunction()

file(REMOVE_RECURSE "${WORK}")
run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/prefix")

run("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}" -B "${WORK}/program" "-DCMAKE_PREFIX_PATH=${WORK}/prefix"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${CMAKE_COMMAND}" --build "${WORK}/program")
run("${WORK}/program/installed_program")

find_program(PKG_CONFIG pkg-config)
if(PKG_CONFIG)
    set(ENV{PKG_CONFIG_PATH} "${WORK}/prefix/lib/pkgconfig")
    execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs orbelline-board OUTPUT_VARIABLE options
        OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(options UNIX_COMMAND "${options}")
    separate_arguments(FLAGS UNIX_COMMAND "${FLAGS}")
    set(applet "${WORK}/prefix/lib/orbelline/applet/libOrbelline.so")
    run("${COMPILER}" ${FLAGS} -std=c++17 "-DAPPLET=\"${applet}\"" "${SOURCE}/Main.cpp" ${options}
        -o "${WORK}/packaged_program")
    run("${WORK}/packaged_program")
endif()
