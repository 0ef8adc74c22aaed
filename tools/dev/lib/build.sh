# Configuring and building the presets of CMakePresets.json.

buildPreset() { # PRESET [TARGET...]
    local preset=$1 targets=()
    shift
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    step "Configuring preset $preset" cmake --preset "$preset" || return
    say "Building preset $preset"
    cmake --build --preset "$preset" "${targets[@]}"
}

# Files of the project by name pattern: tracked ones and new ones not ignored.
projectFiles() { # PATTERN...
    git ls-files --cached --others --exclude-standard -- "$@"
}
