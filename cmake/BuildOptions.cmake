# Compiler settings that hold for every target, and the options of the build.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(THREADS_PREFER_PTHREAD_FLAG ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()
string(REPLACE "-DNDEBUG" "" CMAKE_CXX_FLAGS_RELWITHDEBINFO "${CMAKE_CXX_FLAGS_RELWITHDEBINFO}")

set(ORBELLINE_ARCHITECTURE "i386" CACHE STRING "i386 (the product) or x86-64 (development)")
set(ORBELLINE_SANITIZERS "" CACHE STRING "Sanitizers for every target, for example address,undefined")
set(ORBELLINE_DESIGN_IMAGE "${CMAKE_SOURCE_DIR}/applet/design/Orbelline.qel" CACHE FILEPATH
    "Design image that the applet embeds unchanged")

# double has to mean double on i386: the x87 unit would keep results at a higher precision.
if(ORBELLINE_ARCHITECTURE STREQUAL "i386")
    add_compile_options(-m32 -msse2 -mfpmath=sse)
    add_link_options(-m32)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -fstack-protector-strong)
add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)

if(ORBELLINE_SANITIZERS)
    add_compile_options(-fsanitize=${ORBELLINE_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${ORBELLINE_SANITIZERS})
elseif(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()

# The house is one include tree: headers are named from the root ("platform/ErrorCodes.h").
include_directories("${CMAKE_SOURCE_DIR}")

# Calls between the applet's sources vanish when the library is linked as a whole, which halves the cost of an access.
set(orbelline_whole_program OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT ORBELLINE_SANITIZERS
   AND ORBELLINE_ARCHITECTURE STREQUAL "i386")
    set(orbelline_whole_program ON)
    # Whatever else is linked from these objects takes their ordinary code: test programs link in a moment so.
    add_link_options(-fno-lto)
endif()

function(orbelline_compile_for_whole_program target)
    if(orbelline_whole_program)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O3;-flto;-ffat-lto-objects>)
    endif()
endfunction()

function(orbelline_link_as_whole_program target)
    if(orbelline_whole_program)
        target_link_options(${target} PRIVATE -O3 -flto=2)
    endif()
endfunction()
