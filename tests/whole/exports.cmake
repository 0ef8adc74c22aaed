# cmake -D MODE=check|update -D SYSTEM=Linux|Windows -D LIBRARY=file -D LIST=file -D NM=tool -D OBJDUMP=tool
#       -D DEMANGLER=tool -P exports.cmake
#
# Compares the names that the library exports with the list, in both directions, or writes them into the list. A run
# knows one system: it leaves alone what the list says of the other.

# Classes whose tables and type information are no part of the list: interfaces all of whose functions are pure or
# inline, where these stand wherever a compiler needs them, which changes with its options, and inner classes whose type
# information gcc exports on Windows unasked.
set(unlisted_classes
    IUCPActionObserver
    IUserSettingsManager
    "ZelU::Hash::Hash<char const\\*>::IEntry::IFactory"
    ZelU::Marl::IServerObserver
    ZelU::Marl::IUserPreferenceObserver
    ZelU::Marl::IUserPreferenceSubManagerObserver
    ZelU::Registry::IValueFactory
    zelutil::host::Subscription::Link
    zelutil::platform::ThreadBody)

set(both_heading "# On both systems")
set(Linux_heading "# On Linux only")
set(Windows_heading "# On Windows only")

function(read_exports result)
    if(SYSTEM STREQUAL "Windows")
        set(size_type "unsigned long long")
        execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)
        string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" dump "${dump}")
        string(REGEX REPLACE "\n\n.*" "" dump "${dump}")
        string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" lines "${dump}")
        list(TRANSFORM lines REPLACE "^\\[ *[0-9]+\\] " "")
    else()
        set(size_type "unsigned long")
        execute_process(COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
            OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)
        string(REGEX MATCHALL "[^\n]+" lines "${dump}")
        list(TRANSFORM lines REPLACE " .*" "")
    endif()
    string(REPLACE ";" "\n" mangled "${lines}")
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/exports.mangled" "${mangled}\n")
    execute_process(COMMAND "${DEMANGLER}" INPUT_FILE "${CMAKE_CURRENT_BINARY_DIR}/exports.mangled"
        OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "[abi:cxx11]" "" names "${names}")
    string(REPLACE "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >" "std::string"
        names "${names}")
    string(REPLACE "${size_type}" "std::size_t" names "${names}")
    string(REGEX MATCHALL "[^\n]+" names "${names}")
    # Elsewhere than on Windows the name of a type is exported beside its information.
    list(FILTER names EXCLUDE REGEX "^typeinfo name for ")
    string(REPLACE ";" "|" any_class "${unlisted_classes}")
    list(FILTER names EXCLUDE REGEX "^(vtable|typeinfo) for (${any_class})$")
    # A constructor is exported under two names that read the same, a virtual destructor under three.
    list(REMOVE_DUPLICATES names)
    list(SORT names)
    set(${result} "${names}" PARENT_SCOPE)
endfunction()

# Sets both_names, Linux_names and Windows_names.
function(read_list)
    set(both_names "")
    set(Linux_names "")
    set(Windows_names "")
    set(section "")
    if(EXISTS "${LIST}")
        file(STRINGS "${LIST}" lines)
        foreach(line IN LISTS lines)
            if(line MATCHES "^#")
                foreach(candidate both Linux Windows)
                    if(line STREQUAL "${${candidate}_heading}")
                        set(section ${candidate})
                    endif()
                endforeach()
            else()
                list(APPEND ${section}_names "${line}")
            endif()
        endforeach()
    endif()
    foreach(candidate both Linux Windows)
        set(${candidate}_names "${${candidate}_names}" PARENT_SCOPE)
    endforeach()
endfunction()

function(check)
    set(expected ${both_names} ${${SYSTEM}_names})
    set(missing ${expected})
    list(REMOVE_ITEM missing ${exports})
    set(unexpected ${exports})
    list(REMOVE_ITEM unexpected ${expected})
    foreach(name IN LISTS missing)
        message("no longer exported: ${name}")
    endforeach()
    foreach(name IN LISTS unexpected)
        message("not in the list: ${name}")
    endforeach()
    if(missing OR unexpected)
        message(FATAL_ERROR "The exported names are not those of ${LIST}. When the change is meant, build the target"
            " update_exports and review what it writes.")
    endif()
endfunction()

function(update)
    if(SYSTEM STREQUAL "Windows")
        set(other Linux)
    else()
        set(other Windows)
    endif()
    set(others ${both_names} ${${other}_names})
    set(${SYSTEM}_names ${exports})
    list(REMOVE_ITEM ${SYSTEM}_names ${others})
    set(${other}_names ${others})
    list(REMOVE_ITEM ${other}_names ${exports})
    set(both_names ${exports})
    list(REMOVE_ITEM both_names ${${SYSTEM}_names})

    set(text "# The names that the library exports. tests/whole/exports.cmake compares and writes them.\n")
    foreach(section both Linux Windows)
        list(SORT ${section}_names)
        string(APPEND text "\n${${section}_heading}\n")
        foreach(name IN LISTS ${section}_names)
            string(APPEND text "${name}\n")
        endforeach()
    endforeach()
    file(WRITE "${LIST}" "${text}")
endfunction()

read_exports(exports)
read_list()
if(MODE STREQUAL "update")
    update()
else()
    check()
endif()
