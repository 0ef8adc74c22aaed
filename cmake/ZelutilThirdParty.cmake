# RapidJSON and GoogleTest come from the system. Their headers are reached through a directory of their own, because
# the system's include directory as a whole must not leak into a cross build.

find_path(ZELUTIL_RAPIDJSON_ROOT rapidjson/document.h
    PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH REQUIRED
    DOC "Directory that holds rapidjson/")

set(ZELUTIL_THIRD_PARTY_INCLUDE "${PROJECT_BINARY_DIR}/third_party/include")
file(MAKE_DIRECTORY "${ZELUTIL_THIRD_PARTY_INCLUDE}")
file(CREATE_LINK "${ZELUTIL_RAPIDJSON_ROOT}/rapidjson" "${ZELUTIL_THIRD_PARTY_INCLUDE}/rapidjson"
    SYMBOLIC COPY_ON_ERROR)

add_library(zelutil_rapidjson INTERFACE)
target_include_directories(zelutil_rapidjson SYSTEM INTERFACE "${ZELUTIL_THIRD_PARTY_INCLUDE}")
