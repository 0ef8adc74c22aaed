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
    list(APPEND ZELUTIL_RUNTIME_DLLS "${path}")
endforeach()
file(COPY ${ZELUTIL_RUNTIME_DLLS} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
