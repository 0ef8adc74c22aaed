# RapidJSON, GoogleTest, and CLI11 and {fmt} for the command come from the system. Their headers are reached through a
# directory of their own, because the system's include directory as a whole must not leak into a cross build.

set(ZELUTIL_THIRD_PARTY_INCLUDE "${PROJECT_BINARY_DIR}/third_party/include")
file(MAKE_DIRECTORY "${ZELUTIL_THIRD_PARTY_INCLUDE}")

# zelutil_third_party(NAME FOLDER HEADER [REQUIRED]): makes the target zelutil_NAME for a library that is headers in
# FOLDER, of which HEADER is one. ZELUTIL_<NAME>_ROOT is the directory that holds the folder.
function(zelutil_third_party name folder header)
    string(TOUPPER "ZELUTIL_${name}_ROOT" root)
    find_path(${root} "${folder}/${header}"
        PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH ${ARGN}
        DOC "Directory that holds ${folder}/")
    if(NOT ${root})
        return()
    endif()
    file(CREATE_LINK "${${root}}/${folder}" "${ZELUTIL_THIRD_PARTY_INCLUDE}/${folder}" SYMBOLIC COPY_ON_ERROR)
    add_library(zelutil_${name} INTERFACE)
    target_include_directories(zelutil_${name} SYSTEM INTERFACE "${ZELUTIL_THIRD_PARTY_INCLUDE}")
endfunction()

zelutil_third_party(rapidjson rapidjson document.h REQUIRED)
if(ZELUTIL_BUILD_TOOLS)
    zelutil_third_party(cli11 CLI CLI.hpp)
    zelutil_third_party(fmt fmt format.h)
endif()
