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
# library in them is optimised all the same. Slow tests are optimised, too, and go without the shared headers, which are
# compiled with one set of options.
set(ZELUTIL_TEST_OPTIMISATION "")
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

# The labels of the tests are those in the variable ZELUTIL_TEST_LABELS.
function(zelutil_add_gtest name)
    # A few sources of one program at a time: what GoogleTest's macros make of templates is compiled once for them.
    zelutil_compile_together(${name} 4)
    target_compile_definitions(${name} PRIVATE ZELUTIL_TEST_DATA="${ZELUTIL_TEST_DRIVE}${CMAKE_CURRENT_SOURCE_DIR}")
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE zelutil_options zelutil_test_support GTest::gtest GTest::gmock GTest::gtest_main)
    set(is_optimised FALSE)
    if(ZELUTIL_TEST_OPTIMISATION AND "slow" IN_LIST ZELUTIL_TEST_LABELS)
        set(is_optimised TRUE)
    else()
        target_compile_options(${name} PRIVATE ${ZELUTIL_TEST_OPTIMISATION})
    endif()
    if(NOT is_optimised AND NOT ZELUTIL_TEST_WITHOUT_PRECOMPILED_HEADERS)
        target_precompile_headers(${name} REUSE_FROM zelutil_test_headers)
    endif()
    gtest_discover_tests(${name}
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 120
        TEST_PREFIX "${name}."
        PROPERTIES TIMEOUT 300 LABELS "${ZELUTIL_TEST_LABELS}")
endfunction()

# zelutil_public_test(NAME SOURCE...): public headers only, linked with the shared library as a host links it.
function(zelutil_public_test name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE zelutil::zelutil)
    zelutil_add_gtest(${name})
endfunction()

# zelutil_internal_test(NAME SOURCE...): also sees src/, linked with the static form.
function(zelutil_internal_test name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE zelutil_static)
    zelutil_add_gtest(${name})
endfunction()
