# Compiling in batches: a whole build is quicker by half, and one after a change slower. The scripts do so.

option(ORBELLINE_BATCHES "Compile the board, the console and the tests several sources at a time" OFF)

# For the targets of this folder and the ones below.
macro(orbelline_compile_in_batches)
    if(ORBELLINE_BATCHES)
        set(CMAKE_UNITY_BUILD ON)
        set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            # One source's names may be another's, and its own file is not the one that is compiled.
            add_compile_options(-Wno-shadow -Wno-subobject-linkage)
        endif()
    endif()
endmacro()

# Sources of this folder whose private names are also another's.
function(orbelline_compile_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
