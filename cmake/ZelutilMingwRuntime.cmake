# The compiler's run-time DLLs are shipped beside zelutil.dll, so that exceptions and strings cross its boundary through
# one runtime. They are needed in the build tree too, where programs and DLL share a directory.

set(ZELUTIL_RUNTIME_DLLS "")
foreach(name libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${name}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT EXISTS "${path}")
        message(FATAL_ERROR "The compiler has no ${name}")
    endif()
    file(REAL_PATH "${path}" path)
    set(copy "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}")
    if(NOT EXISTS "${copy}" OR NOT "${copy}" IS_NEWER_THAN "${path}")
        # Nine tenths of them are for a debugger. A date is within them, too.
        file(MAKE_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
        execute_process(COMMAND "${CMAKE_STRIP}" --preserve-dates -o "${copy}" "${path}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
    list(APPEND ZELUTIL_RUNTIME_DLLS "${copy}")
endforeach()
