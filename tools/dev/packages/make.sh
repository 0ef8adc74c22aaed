# Building and packing.

# Configures a preset of the sources in a directory, builds it and packs it, or packs it another way.
packPreset() { # SOURCES OUTPUT PRESET CONFIGURATION...
    local sources=$1 output=$2 preset=$3
    shift 3
    (
        cd "$sources" &&
            cmake --preset "$preset" "$@" &&
            cmake --build --preset "$preset" &&
            cd "build/$preset" &&
            cpack --config CPackConfig.cmake -B cpack -D "CPACK_OUTPUT_FILE_PREFIX=$output"
    )
}

makePackages() { # SOURCES OUTPUT
    local where=${2##*/} multiarch
    multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
    step "Packing for Debian ($where)" packPreset "$1" "$2" package \
        -DZELUTIL_DEBIAN=ON -DCMAKE_INSTALL_PREFIX=/usr "-DCMAKE_INSTALL_LIBDIR=lib/$multiarch"
    step "Packing an archive ($where)" packPreset "$1" "$2" package -DZELUTIL_DEBIAN=OFF -DCMAKE_INSTALL_LIBDIR=lib
    step "Packing a ZIP for Windows ($where)" packPreset "$1" "$2" windows-package
}

copySources() { # DIRECTORY
    mkdir -p "$1"
    projectFiles | tar --create --files-from=- | tar --extract --directory="$1"
}

comparePackages() { # DIRECTORY DIRECTORY
    local package status=0
    for package in "$1"/*; do
        cmp "$package" "$2/${package##*/}" || status=1
    done
    return "$status"
}
