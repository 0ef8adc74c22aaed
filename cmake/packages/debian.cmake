# Three packages of Debian: libzelutil1, libzelutil-dev and zelutil.

set(library_package "lib${PROJECT_NAME}${PROJECT_VERSION_MAJOR}")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development command)
# The descriptions below begin with a summary; cpack would put the project's in front.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What is linked with this version asks for it or a later one.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/triggers")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "shared utility library of a printed-circuit-board design suite
Finds the installation, holds preferences, actions and keyboard shortcuts,
and saves them so that nothing is lost.
.
This package contains the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME lib${PROJECT_NAME}-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library_package} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "shared utility library of a board design suite (development files)
Finds the installation, holds preferences, actions and keyboard shortcuts,
and saves them so that nothing is lost.
.
This package contains the headers for C++17 and C99, the package for CMake
and the file for pkg-config.")

set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_COMMAND_DESCRIPTION "preferences and shortcuts of a board design suite, from a shell
Shows and sets what the applications of the suite read, says which file a
value comes from and which shortcuts are in conflict, and checks files before
they ship.")

# --- Papers that each of them has ------------------------------------------------------------------------------------
set(papers "${PROJECT_BINARY_DIR}/debian")
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" license)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" _ "${license}")
set(copyright_holder "${CMAKE_MATCH_1}")
string(REGEX REPLACE "^.*Copyright[^\n]*\n\n" "" license "${license}")
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n$" "" license "${license}")
string(REPLACE "\n" "\n " license "${license}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/copyright.in" "${papers}/copyright" @ONLY)
# The time is that of SOURCE_DATE_EPOCH, where it is set.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog.in" "${papers}/changelog" @ONLY)

function(compress file compressed)
    execute_process(COMMAND gzip --best --no-name --stdout "${file}" OUTPUT_FILE "${compressed}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()
compress("${papers}/changelog" "${papers}/changelog.Debian.gz")
compress("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${papers}/changelog.gz")

foreach(component RUNTIME DEVELOPMENT COMMAND)
    string(TOLOWER "${component}" name)
    install(FILES "${papers}/copyright" "${papers}/changelog.Debian.gz" "${papers}/changelog.gz"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME}" COMPONENT ${name})
endforeach()
