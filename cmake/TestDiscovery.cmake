# How the tests of a program are told to CTest.

include(GoogleTest)
option(ORBELLINE_TESTS_TOGETHER "Run the tests of a program in one process, which takes less time than one for each" OFF)

# Each test by its own name; or all of them under the program's, which then leaves a report in the folder test-reports.
function(orbelline_discover_tests program)
    if(ORBELLINE_TESTS_TOGETHER)
        add_test(NAME ${program} COMMAND ${program} --gtest_brief=1
            "--gtest_output=xml:${CMAKE_BINARY_DIR}/test-reports/${program}.xml")
    else()
        gtest_discover_tests(${program} DISCOVERY_TIMEOUT 60)
    endif()
endfunction()
