# What every target of this project is compiled with: language level, hidden symbols, warnings, sanitizers.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 99)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs and the library share one directory, so that a Windows program finds the DLL beside itself.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

find_program(ZELUTIL_CCACHE ccache)
if(PROJECT_IS_TOP_LEVEL AND ZELUTIL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${ZELUTIL_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER "${ZELUTIL_CCACHE}")
endif()

# zelutil_compile_together(TARGET COUNT): has the compiler read so many sources of the target at a time, which spares it
# their common headers and templates. A larger number makes a whole build faster and one after a small change slower, so a
# machine that builds everything once sets ZELUTIL_TOGETHER for all.
set(ZELUTIL_TOGETHER "" CACHE STRING "Sources read at a time where a target's are read together, empty for each target's own number")
function(zelutil_compile_together target count)
    if(ZELUTIL_TOGETHER)
        set(count ${ZELUTIL_TOGETHER})
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${count})
endfunction()

add_library(zelutil_options INTERFACE)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(zelutil_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(ZELUTIL_WARNINGS_AS_ERRORS)
        target_compile_options(zelutil_options INTERFACE -Werror)
    endif()
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A unique symbol (a function-local static of an inline function) would keep the shared object mapped for ever.
    target_compile_options(zelutil_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fno-gnu-unique>)
endif()
if(MSVC)
    target_compile_options(zelutil_options INTERFACE /W4 /permissive-)
endif()

if(ZELUTIL_SANITIZERS)
    target_compile_options(zelutil_options INTERFACE
        -fsanitize=${ZELUTIL_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zelutil_options INTERFACE -fsanitize=${ZELUTIL_SANITIZERS})
    # A sanitized program of fixed addresses starts in half the time, and the tests start thousands.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
        target_link_options(zelutil_options INTERFACE
            $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-no-pie>)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        # RapidJSON's stack.h adds an offset to a null pointer.
        target_compile_options(zelutil_options INTERFACE -fno-sanitize=pointer-overflow)
    endif()
endif()
if(ZELUTIL_BUILD_FUZZERS)
    target_compile_options(zelutil_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(zelutil_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ZELUTIL_COVERAGE)
    target_compile_options(zelutil_options INTERFACE --coverage)
    target_link_options(zelutil_options INTERFACE --coverage)
endif()
