# Each test case is a ctest entry, and so a process, of its own: process-wide state (root cache, singletons, exit list,
# environment read once) is fresh in every one.
include(GoogleTest)

# What precedes a path of the build that a test is told. Under Wine the host's root directory is the drive Z:, which need
# not be the current one.
set(ZELUTIL_TEST_DRIVE "")
if(CMAKE_CROSSCOMPILING AND WIN32)
    set(ZELUTIL_TEST_DRIVE "Z:")
endif()

# Four fifths of what the compiler reads of a test are GoogleTest's headers, so all tests share one compilation of them.
# A test that shows which headers are enough sets ZELUTIL_TEST_WITHOUT_PRECOMPILED_HEADERS.
add_executable(zelutil_test_headers EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/tests/support/test_headers.cpp")
target_link_libraries(zelutil_test_headers PRIVATE zelutil_options GTest::gtest GTest::gmock)
target_precompile_headers(zelutil_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)

# Optimising takes half of the compiler's time, and most tests run for less time than it takes to optimise them; the
# library in them is optimised all the same. Tests that are OPTIMISED go without the shared headers, which are compiled
# with one set of options.
if(MINGW)
    set(ZELUTIL_TEST_OPTIMISATION -O0)
endif()
target_compile_options(zelutil_test_headers PRIVATE ${ZELUTIL_TEST_OPTIMISATION})

# zelutil_random_cases(VARIABLE LONG SANITIZED): sets VARIABLE to the number of cases that a random test tries. LONG cases
# take about a minute; a quarter of them is tried unless ZELUTIL_LONG_TESTS is on, and SANITIZED under a sanitizer.
function(zelutil_random_cases variable long sanitized)
    if(ZELUTIL_SANITIZERS)
        set(cases ${sanitized})
    elseif(ZELUTIL_LONG_TESTS)
        set(cases ${long})
    else()
        math(EXPR cases "${long} / 4")
    endif()
    set(${variable} ${cases} PARENT_SCOPE)
endfunction()

# Each test has one of two labels: `fast` for what ./dev test --fast runs, which is to take less than a minute, and `slow`
# for the rest.

# zelutil_label_tests(LABEL NAME...): for tests that are made by add_test.
function(zelutil_label_tests label)
    foreach(name ${ARGN})
        set_property(TEST ${name} APPEND PROPERTY LABELS ${label})
    endforeach()
endfunction()

# The programs of fast tests, and what those start.
add_custom_target(zelutil_fast_tests)

# zelutil_discover(NAME LABEL FILTER): has ctest ask the program for its cases that pass GoogleTest's filter.
function(zelutil_discover name label filter)
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        TEST_FILTER "${filter}"
        TEST_LIST ${name}_${label}_tests
        TEST_PREFIX "${name}."
        PROPERTIES TIMEOUT 300 LABELS ${label})
endfunction()

# zelutil_add_gtest(NAME [SLOW | SLOW_CASES PATTERN:PATTERN...] [OPTIMISED])
function(zelutil_add_gtest name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "SLOW;OPTIMISED" "SLOW_CASES" "")
    # A few sources of one program at a time: what GoogleTest's macros make of templates is compiled once for them.
    zelutil_compile_together(${name} 4)
    target_compile_definitions(${name} PRIVATE ZELUTIL_TEST_DATA="${ZELUTIL_TEST_DRIVE}${CMAKE_CURRENT_SOURCE_DIR}")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE zelutil_options zelutil_test_support GTest::gtest GTest::gmock GTest::gtest_main)
    set(is_optimised FALSE)
    if(ZELUTIL_TEST_OPTIMISATION AND arg_OPTIMISED)
        set(is_optimised TRUE)
    else()
        target_compile_options(${name} PRIVATE ${ZELUTIL_TEST_OPTIMISATION})
    endif()
    if(NOT is_optimised AND NOT ZELUTIL_TEST_WITHOUT_PRECOMPILED_HEADERS)
        target_precompile_headers(${name} REUSE_FROM zelutil_test_headers)
    endif()
    if(arg_SLOW)
        zelutil_discover(${name} slow "*")
        return()
    endif()
    add_dependencies(zelutil_fast_tests ${name})
    if(arg_SLOW_CASES)
        zelutil_discover(${name} slow "${arg_SLOW_CASES}")
        zelutil_discover(${name} fast "-${arg_SLOW_CASES}")
    else()
        zelutil_discover(${name} fast "*")
    endif()
endfunction()

# zelutil_linked_test(NAME LIBRARY [options of zelutil_add_gtest] SOURCE...)
function(zelutil_linked_test name library)
    cmake_parse_arguments(PARSE_ARGV 2 arg "SLOW;OPTIMISED" "SLOW_CASES" "")
    add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${library})
    zelutil_add_gtest(${name} ${ARGN})
endfunction()

# zelutil_public_test(NAME [options] SOURCE...): public headers only, linked with the shared library as a host links it.
function(zelutil_public_test name)
    zelutil_linked_test(${name} zelutil::zelutil ${ARGN})
endfunction()

# zelutil_internal_test(NAME [options] SOURCE...): also sees src/, linked with the static form.
function(zelutil_internal_test name)
    zelutil_linked_test(${name} zelutil_static ${ARGN})
endfunction()
