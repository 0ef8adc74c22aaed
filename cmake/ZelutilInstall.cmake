# Headers, library, CMake package (find_package(zelutil CONFIG)) and pkg-config file. The installed tree may be moved:
# nothing in it holds the prefix. On Windows the DLL goes to bin/, with the compiler's run-time DLLs beside it.
include(CMakePackageConfigHelpers)

set(package_directory "${CMAKE_INSTALL_LIBDIR}/cmake/zelutil")

install(TARGETS zelutil
    EXPORT zelutilTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/zelutil"
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
    COMPONENT development
    FILES_MATCHING PATTERN "*.h")
if(ZELUTIL_RUNTIME_DLLS)
    install(FILES ${ZELUTIL_RUNTIME_DLLS} DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
endif()

configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/zelutilConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/zelutilConfig.cmake"
    INSTALL_DESTINATION "${package_directory}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zelutilVersion.cmake" COMPATIBILITY SameMajorVersion)
configure_file("${CMAKE_CURRENT_LIST_DIR}/zelutilConfigVersion.cmake.in"
    "${PROJECT_BINARY_DIR}/zelutilConfigVersion.cmake" @ONLY)
install(EXPORT zelutilTargets NAMESPACE zelutil:: DESTINATION "${package_directory}" COMPONENT development)
install(FILES
    "${PROJECT_BINARY_DIR}/zelutilConfig.cmake"
    "${PROJECT_BINARY_DIR}/zelutilConfigVersion.cmake"
    "${PROJECT_BINARY_DIR}/zelutilVersion.cmake"
    DESTINATION "${package_directory}"
    COMPONENT development)

# How far up from the file's own directory the prefix is.
file(RELATIVE_PATH up "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" ZELUTIL_PC_UP "${up}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/zelutil.pc.in" "${PROJECT_BINARY_DIR}/zelutil.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zelutil.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

# The pages that ./dev docs makes. They are a component of their own, "docs".
if(ZELUTIL_INSTALL_DOCS)
    set(pages "${PROJECT_SOURCE_DIR}/build/docs/html")
    if(NOT EXISTS "${pages}/index.html")
        message(FATAL_ERROR "ZELUTIL_INSTALL_DOCS: there are no pages in ${pages}; ./dev docs makes them")
    endif()
    install(DIRECTORY "${pages}/" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zelutil" COMPONENT docs)
endif()

# A project that has this one as a part makes its own packages.
if(PROJECT_IS_TOP_LEVEL)
    include(ZelutilPackages)
endif()
