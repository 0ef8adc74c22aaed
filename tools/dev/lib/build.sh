# Configuring and building the presets of CMakePresets.json.

buildPreset() { # PRESET [TARGET...]
    local preset=$1 targets=() options=()
    shift
    # A machine that tests and throws away needs the lines of a sanitizer's report and nothing for a debugger, which is a
    # third of the objects' bytes, and never builds again after a small change.
    if [[ -n ${CI:-} ]]; then
        options+=(-DCMAKE_CXX_FLAGS_DEBUG=-g1 -DCMAKE_C_FLAGS_DEBUG=-g1 -DZELUTIL_TOGETHER=20)
    fi
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    step "Configuring preset $preset" cmake --preset "$preset" "${options[@]}" || return
    say "Building preset $preset"
    cmake --build --preset "$preset" "${targets[@]}"
}

# Builds the library from many sources at a time, unoptimised: they must not define a name twice.
buildTogether() {
    step "Configuring the library for many sources at a time" \
        cmake --preset library -B build/together -DCMAKE_CXX_FLAGS_RELEASE=-O0 || return
    say "Building the library from many sources at a time"
    cmake --build build/together
}

# Files of the project by name pattern: tracked ones and new ones not ignored.
projectFiles() { # PATTERN...
    git ls-files --cached --others --exclude-standard -- "$@"
}
