# Counts which lines, functions and branches of the product the tests reach: the product's sources are compiled a
# second time, unoptimised and instrumented, and every test program is linked a second time with these objects in
# place of the delivered ones. Nothing of it is built unless asked for.

set(orbelline_counted_product orbelline_templates orbelline_grabber_basis orbelline_appletwrappers orbelline_applet)
set(orbelline_counted_programs "")

# Instrumented objects of a library, named after it.
function(orbelline_compile_counted library)
    get_target_property(folder ${library} SOURCE_DIR)
    get_target_property(sources ${library} SOURCES)
    list(TRANSFORM sources PREPEND "${folder}/")
    add_library(${library}_counted OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(${library}_counted PRIVATE orbelline_platform Threads::Threads)
    # Several threads of a test count the same line.
    target_compile_options(${library}_counted PRIVATE -O0 -g1 -U_FORTIFY_SOURCE --coverage)
    set_target_properties(${library}_counted PROPERTIES EXPORT_COMPILE_COMMANDS OFF)
endfunction()

# The part of the product that a test program is linked to, lowest floor first; nothing for one that uses none of it.
function(orbelline_find_counted_part result libraries)
    set(part "")
    if("orbelline_applet_on_board" IN_LIST libraries)
        set(part ${orbelline_counted_product})
    elseif("orbelline_grabber_basis" IN_LIST libraries)
        set(part orbelline_templates orbelline_grabber_basis)
    elseif("orbelline_templates" IN_LIST libraries)
        set(part orbelline_templates)
    endif()
    set(${result} ${part} PARENT_SCOPE)
endfunction()

# The instrumented objects come first, so that the linker takes their copies of what headers define.
function(orbelline_link_counted test)
    get_target_property(libraries ${test} LINK_LIBRARIES)
    orbelline_find_counted_part(part "${libraries}")
    if(NOT part)
        return()
    endif()
    list(TRANSFORM part REPLACE "(.+)" "$<TARGET_OBJECTS:\\1_counted>" OUTPUT_VARIABLE objects)
    if("orbelline_applet_on_board" IN_LIST libraries)
        list(APPEND objects $<TARGET_OBJECTS:orbelline_embedded>)
        list(TRANSFORM libraries REPLACE "^orbelline_applet_on_board$" "orbelline_applet_surroundings;${CMAKE_DL_LIBS}")
    endif()
    add_executable(${test}_counted EXCLUDE_FROM_ALL ${objects} $<TARGET_OBJECTS:${test}>)
    target_link_libraries(${test}_counted PRIVATE ${libraries})
    target_link_options(${test}_counted PRIVATE --coverage $<TARGET_PROPERTY:${test},LINK_OPTIONS>)
    set_target_properties(${test}_counted PROPERTIES LINKER_LANGUAGE CXX)
    set(orbelline_counted_programs ${orbelline_counted_programs} ${test}_counted PARENT_SCOPE)
endfunction()

# Everything for the tests of these folders: the programs are built by orbelline_counted_tests and listed in
# CountedPrograms.txt.
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
endfunction()
