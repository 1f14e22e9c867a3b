# Counts which lines, functions and branches of the product the tests reach: the product's sources are compiled a
# second time, unoptimised and instrumented, and every test program is linked a second time with these objects in
# place of the delivered ones. Nothing of it is built unless asked for.

set(orbelline_counted_product orbelline_templates orbelline_grabber_basis orbelline_appletwrappers orbelline_applet)
# Counted atomically: several threads of a test go through the same lines.
set(orbelline_counting -O0 -g1 -U_FORTIFY_SOURCE --coverage -fprofile-update=atomic)
set(orbelline_counted_programs "")

# Instrumented objects of a library, named after it.
function(orbelline_compile_counted library)
    get_target_property(folder ${library} SOURCE_DIR)
    get_target_property(sources ${library} SOURCES)
    list(TRANSFORM sources PREPEND "${folder}/")
    add_library(${library}_counted OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(${library}_counted PRIVATE orbelline_platform Threads::Threads)
    target_compile_options(${library}_counted PRIVATE ${orbelline_counting})
    set_target_properties(${library}_counted PROPERTIES EXPORT_COMPILE_COMMANDS OFF)
endfunction()

# Takes interface libraries apart into what they link: the objects that a test compiles of their sources are among its
# own. The applet itself stays named.
function(orbelline_take_apart linkedResult optionsResult)
    set(linked "")
    set(options "")
    foreach(library ${ARGN})
        set(kind "")
        if(TARGET ${library} AND NOT library STREQUAL "orbelline_applet_inside")
            get_target_property(kind ${library} TYPE)
            get_target_property(isForeign ${library} IMPORTED)
        endif()
        if(kind STREQUAL "INTERFACE_LIBRARY" AND NOT isForeign)
            get_property(inner TARGET ${library} PROPERTY INTERFACE_LINK_LIBRARIES)
            orbelline_take_apart(innerLinked innerOptions ${inner})
            list(APPEND linked ${innerLinked})
            list(APPEND options $<TARGET_PROPERTY:${library},INTERFACE_LINK_OPTIONS> ${innerOptions})
        else()
            list(APPEND linked ${library})
        endif()
    endforeach()
    set(${linkedResult} ${linked} PARENT_SCOPE)
    set(${optionsResult} ${options} PARENT_SCOPE)
endfunction()

# The part of the product that a test program is linked to, lowest floor first; nothing for one that uses none of it.
function(orbelline_find_counted_part result)
    set(part "")
    if("orbelline_applet_inside" IN_LIST ARGN)
        set(part ${orbelline_counted_product})
    elseif("orbelline_grabber_basis" IN_LIST ARGN)
        set(part orbelline_templates orbelline_grabber_basis)
    elseif("orbelline_templates" IN_LIST ARGN)
        set(part orbelline_templates)
    endif()
    set(${result} ${part} PARENT_SCOPE)
endfunction()

# The instrumented objects come first, so that the linker takes their copies of what headers define.
function(orbelline_link_counted test)
    get_target_property(libraries ${test} LINK_LIBRARIES)
    orbelline_take_apart(libraries options ${libraries})
    orbelline_find_counted_part(part ${libraries})
    if(NOT part)
        return()
    endif()
    list(TRANSFORM part REPLACE "(.+)" "$<TARGET_OBJECTS:\\1_counted>" OUTPUT_VARIABLE objects)
    if("orbelline_applet_inside" IN_LIST libraries)
        list(REMOVE_ITEM libraries orbelline_applet_inside)
        list(APPEND libraries ${CMAKE_DL_LIBS})
        list(APPEND objects $<TARGET_OBJECTS:orbelline_embedded>)
    endif()
    set(own $<TARGET_OBJECTS:${test}>)
    if(part STREQUAL "orbelline_templates")
        # Much of the lowest floor is code in headers that only its own tests use: they are compiled anew.
        get_target_property(folder ${test} SOURCE_DIR)
        get_target_property(own ${test} SOURCES)
        list(TRANSFORM own PREPEND "${folder}/")
    endif()
    add_executable(${test}_counted EXCLUDE_FROM_ALL ${objects} ${own})
    target_link_libraries(${test}_counted PRIVATE ${libraries})
    target_compile_options(${test}_counted PRIVATE ${orbelline_counting})
    target_link_options(${test}_counted PRIVATE --coverage $<TARGET_PROPERTY:${test},LINK_OPTIONS> ${options})
    set_target_properties(${test}_counted PROPERTIES LINKER_LANGUAGE CXX EXPORT_COMPILE_COMMANDS OFF)
    set(orbelline_counted_programs ${orbelline_counted_programs} ${test}_counted PARENT_SCOPE)
endfunction()

# Everything for the tests of these folders: orbelline_counted_tests builds the programs, which CountedPrograms.txt
# lists, and orbelline_coverage runs them and writes the report.
function(orbelline_count_coverage)
    foreach(library ${orbelline_counted_product})
        orbelline_compile_counted(${library})
    endforeach()
    foreach(folder ${ARGN})
        get_property(tests DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
        foreach(test ${tests})
            get_target_property(kind ${test} TYPE)
            if(kind STREQUAL "EXECUTABLE")
                orbelline_link_counted(${test})
            endif()
        endforeach()
    endforeach()
    add_custom_target(orbelline_counted_tests DEPENDS ${orbelline_counted_programs})
    list(TRANSFORM orbelline_counted_programs REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE files)
    list(JOIN files "\n" files)
    file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/CountedPrograms.txt" CONTENT "${files}\n")

    cmake_host_system_information(RESULT processors QUERY NUMBER_OF_LOGICAL_CORES)
    add_custom_target(orbelline_coverage
        COMMAND "${Python3_EXECUTABLE}" -B "${CMAKE_SOURCE_DIR}/scripts/lib/coverage"
            --root "${CMAKE_SOURCE_DIR}" --build "${CMAKE_BINARY_DIR}" --jobs ${processors}
            --report "${CMAKE_SOURCE_DIR}/build/coverage"
            --uncovered "${CMAKE_SOURCE_DIR}/tests/coverage/UncoveredBranches.txt"
        DEPENDS orbelline_counted_tests USES_TERMINAL VERBATIM)
endfunction()
