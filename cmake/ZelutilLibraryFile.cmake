# The library's file. Hosts load it, and the search for an installation looks for it, under one name on each system,
# ZELUTIL_LIBRARY_NAME: on Linux that is the link without a version, which leads to the file with one.
# ZELUTIL_LOADED_LIBRARY has the name that the loader looks for when it starts a program.
if(WIN32)
    set(ZELUTIL_LIBRARY "$<TARGET_FILE:zelutil>")
    set(ZELUTIL_LIBRARY_NAME "$<TARGET_FILE_NAME:zelutil>")
    set(ZELUTIL_LOADED_LIBRARY "$<TARGET_FILE:zelutil>")
else()
    set(ZELUTIL_LIBRARY "$<TARGET_LINKER_FILE:zelutil>")
    set(ZELUTIL_LIBRARY_NAME "$<TARGET_LINKER_FILE_NAME:zelutil>")
    set(ZELUTIL_LOADED_LIBRARY "$<TARGET_SONAME_FILE:zelutil>")
endif()

# zelutil_copy_library(RESULT DIRECTORY): sets RESULT to the command that copies the library's file and the links to it.
function(zelutil_copy_library result directory)
    set(${result}
        "${CMAKE_COMMAND}" -D "LIBRARY=${ZELUTIL_LIBRARY}" -D "DIRECTORY=${directory}"
        -P "${PROJECT_SOURCE_DIR}/cmake/copy_library.cmake"
        PARENT_SCOPE)
endfunction()
