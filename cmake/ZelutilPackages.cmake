# The packages that cpack makes: an archive with everything, or with ZELUTIL_DEBIAN a package each for the library, for
# what hosts are compiled with, and for the command. ./dev packages makes all of them and uses them.

set(CPACK_PACKAGE_NAME "${PROJECT_NAME}")
set(CPACK_PACKAGE_VENDOR "the zelutil authors")
set(CPACK_PACKAGE_CONTACT "the zelutil authors <zelutil@example.org>")
set(CPACK_VERBATIM_VARIABLES ON)
if(NOT WIN32)
    # In a file of Windows, strip would note the time; the linker does the same without it.
    set(CPACK_STRIP_FILES ON)
endif()
string(TOLOWER "${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" CPACK_PACKAGE_FILE_NAME)
# The same sources make the same bytes, whenever and wherever they are packed.
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/packages/fix_times.cmake")

if(ZELUTIL_DEBIAN)
    set(CPACK_GENERATOR DEB)
    include(packages/debian)
else()
    if(WIN32)
        set(CPACK_GENERATOR ZIP)
    else()
        set(CPACK_GENERATOR TGZ)
    endif()
    install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/CHANGELOG.md"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zelutil" COMPONENT runtime)
    # What library and command are compiled with, and the DLLs that go with them, want their licences to be passed on.
    set(third_parties rapidjson-dev libcli11-dev libfmt-dev)
    if(MINGW)
        list(APPEND third_parties gcc-mingw-w64-x86-64-posix-runtime mingw-w64-common)
    endif()
    foreach(party ${third_parties})
        install(FILES "/usr/share/doc/${party}/copyright"
            DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/zelutil/third-party" COMPONENT runtime RENAME "${party}" OPTIONAL)
    endforeach()
endif()
include(CPack)
