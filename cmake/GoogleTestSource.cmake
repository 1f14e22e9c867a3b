# Provides the target orbelline_googletest, from the sources of Debian's package googletest: they build for
# either architecture and with any sanitizer, where a prebuilt libgtest exists for one at a time. A program that has
# no main() of its own gets GoogleTest's.

set(ORBELLINE_GOOGLETEST_SOURCE "/usr/src/googletest" CACHE PATH "GoogleTest sources (Debian's package googletest)")
set(ORBELLINE_HAS_GOOGLETEST OFF)
find_package(Threads REQUIRED)
if(EXISTS "${ORBELLINE_GOOGLETEST_SOURCE}/googletest/src/gtest-all.cc")
    add_library(orbelline_googletest STATIC EXCLUDE_FROM_ALL
        "${ORBELLINE_GOOGLETEST_SOURCE}/googletest/src/gtest-all.cc"
        "${ORBELLINE_GOOGLETEST_SOURCE}/googlemock/src/gmock-all.cc"
        "${ORBELLINE_GOOGLETEST_SOURCE}/googlemock/src/gmock_main.cc")
    target_include_directories(orbelline_googletest SYSTEM PUBLIC
        "${ORBELLINE_GOOGLETEST_SOURCE}/googletest/include" "${ORBELLINE_GOOGLETEST_SOURCE}/googlemock/include")
    target_include_directories(orbelline_googletest SYSTEM PRIVATE
        "${ORBELLINE_GOOGLETEST_SOURCE}/googletest" "${ORBELLINE_GOOGLETEST_SOURCE}/googlemock")
    target_compile_options(orbelline_googletest PRIVATE -w -O0 -g0 -U_FORTIFY_SOURCE)
    target_link_libraries(orbelline_googletest PUBLIC Threads::Threads)
    set(ORBELLINE_HAS_GOOGLETEST ON)
endif()
