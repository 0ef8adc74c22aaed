# The version is that of project() in CMakeLists.txt. The public header repeats it, because hosts that have the sources as
# a subdirectory include what is in the source tree; a header that says something else stops the configuration.

# zelutil_check_version(HEADER VERSION)
function(zelutil_check_version header version)
    string(REPLACE "." ";" numbers "${version}")
    list(GET numbers 0 major)
    list(GET numbers 1 minor)
    list(GET numbers 2 patch)
    file(READ "${header}" text)
    foreach(line
            "#define ZELUTIL_VERSION_MAJOR ${major}\n"
            "#define ZELUTIL_VERSION_MINOR ${minor}\n"
            "#define ZELUTIL_VERSION_PATCH ${patch}\n"
            "#define ZELUTIL_VERSION \"${version}\"\n")
        string(FIND "${text}" "${line}" place)
        if(place EQUAL -1)
            message(FATAL_ERROR "The project's version is ${version}, so ${header} must have the line\n  ${line}")
        endif()
    endforeach()
endfunction()

# zelutil_version_resource(TARGET DESCRIPTION): gives the program or DLL the version that the explorer of Windows shows of
# a file, and that installers compare.
function(zelutil_version_resource target description)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        set(file_type VFT_APP)
    else()
        set(file_type VFT_DLL)
    endif()
    configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc.in" @ONLY)
    set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
    file(GENERATE OUTPUT "${resource}" INPUT "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc.in")
    target_sources(${target} PRIVATE "${resource}")
endfunction()
