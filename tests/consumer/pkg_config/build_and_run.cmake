# Compiles `source` to `program` with `compiler`, `flags` and what pkg-config answers from the directory `packages`
# alone, and runs it (by `emulator` where one is given).
find_program(pkg_config NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_LIBDIR} "${packages}")
execute_process(COMMAND "${pkg_config}" --cflags --libs zelutil
    OUTPUT_VARIABLE answer COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(package_flags UNIX_COMMAND "${answer}")

file(REMOVE "${program}")
execute_process(COMMAND "${compiler}" -std=c99 -Wall -Wextra -Wpedantic -Werror ${flags}
    "${source}" -o "${program}" ${package_flags}
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${emulator} "${program}" COMMAND_ERROR_IS_FATAL ANY)
