# cmake -D CTEST=program -D BUILD=directory -P labels_test.cmake: fails unless each test has one of the labels `fast` and
# `slow`. A program that has not been built has no tests yet, and so no labels.

function(expect_no_tests what)
    execute_process(COMMAND "${CTEST}" --test-dir "${BUILD}" -N --exclude-regex "_NOT_BUILT$" ${ARGN}
        OUTPUT_VARIABLE list COMMAND_ERROR_IS_FATAL ANY)
    if(NOT list MATCHES "Total Tests: 0\n")
        message(SEND_ERROR "Tests with ${what}:\n${list}")
    endif()
endfunction()

expect_no_tests("neither label" --label-exclude "^(fast|slow)$")
expect_no_tests("both labels" --label-regex "^fast$" --label-regex "^slow$")
