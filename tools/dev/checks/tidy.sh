# clang-tidy over the library, the examples and the command, several files at a time.

# The compiler's commands without the options that clang does not know.
makeTidyDatabase() {
    step "Configuring preset dev" cmake --preset dev || return
    mkdir -p build/lint
    sed -E 's/ -fno-(gnu-unique|keep-inline-dllexport)\b//g' build/dev/compile_commands.json \
        >build/lint/compile_commands.json
}

checkTidy() {
    makeTidyDatabase || return
    lintedFiles 'src/*.cpp' 'examples/*.cpp' 'command/*.cpp' |
        xargs -r -P "$(nproc)" -n 1 tools/dev/checks/tidy-file
}
