# Using what the packages bring, as a stranger would: hosts are built against it, and the command is run.

readonly roots=$PWD/build/packages/roots

# Lists the content of a package beside it, without times and owners.
listContent() { # PACKAGE COMMAND...
    "${@:2}" | LC_ALL=C sort >"$1.txt"
    [[ -s $1.txt ]]
}

listDebianPackage() { dpkg-deb --fsys-tarfile "$1" | tar --list; }

# The projects of tests/consumer, built against the files below a prefix.
buildHosts() { # PREFIX BUILD [CONFIGURATION...]
    local prefix=$1 build=$2
    shift 2
    cmake -G Ninja -S tests/consumer/find_package -B "$build" -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_PREFIX_PATH=$prefix" "-DPROJECT=$PWD" "$@" &&
        grep -q "^zelutil_DIR:PATH=$prefix/" "$build/CMakeCache.txt" &&
        cmake --build "$build"
}

# Runs a program and compares what it prints.
prints() { # TEXT PROGRAM...
    local expected=$1 printed
    shift
    printed=$("$@" 2>/dev/null | tr -d '\r') || return
    if [[ $printed != *"$expected"* ]]; then
        printf '%s printed "%s" instead of "%s"\n' "$*" "$printed" "$expected"
        return 1
    fi
}

# A program finds the library of this prefix and no other.
usesLibraryOf() { # DIRECTORY PROGRAM
    LD_LIBRARY_PATH=$1 ldd "$2" | grep -q "libzelutil.so.1 => $1/"
}

version() { sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt; }

# An installation tree with the library in it, which the command then asks for a setting.
useInProduct() { # LIBRARY_DIRECTORY COMMAND
    local product=$1/../product
    mkdir -p "$product" && cp -r examples/product/. "$product" &&
        cp -P "$1"/libzelutil.so* "$product/tools/bin" &&
        prints 0.635 env QTXROOT="$product" HOMEDRIVE=Z: HOMEPATH="$product" "$2" get display::grids::grid
}

useLinuxPrefix() { # PREFIX LIBRARY_DIRECTORY
    local prefix=$1 libraries=$2 build
    build=$prefix/../build
    unset QTXROOT QTX_ROOT QTXINSTDIR QTX_SITE tessel_settings regression_testing
    buildHosts "$prefix" "$build" || return
    usesLibraryOf "$libraries" "$build/host" || return
    LD_LIBRARY_PATH=$libraries prints "texts cross: yes" "$build/host" || return
    LD_LIBRARY_PATH=$libraries cmake -D compiler=gcc -D flags= -D source=tests/consumer/pkg_config/host.c \
        -D "program=$build/c_host" -D "packages=$libraries/pkgconfig" -D emulator= \
        -P tests/consumer/pkg_config/build_and_run.cmake || return
    prints "zelutil $(version)" "$prefix/bin/zelutil" --version && useInProduct "$libraries" "$prefix/bin/zelutil"
}

useDebianPackages() {
    local root=$roots/debian package
    mkdir -p "$root"
    for package in "$made"/*.deb; do
        listContent "$package" listDebianPackage "$package"
        dpkg-deb --extract "$package" "$root"
    done
    step "Using the packages for Debian" useLinuxPrefix "$root/usr" "$root/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)"
}

useArchive() {
    local root=$roots/archive archive prefix
    archive=$(echo "$made"/*.tar.gz)
    mkdir -p "$root"
    listContent "$archive" tar --list --file="$archive"
    tar --extract --file="$archive" --directory="$root"
    prefix=$(echo "$root"/*)
    step "Using the archive" useLinuxPrefix "$prefix" "$prefix/lib"
}

useWindowsPrefix() { # PREFIX
    local prefix=$1 build
    build=$prefix/../build
    buildHosts "$prefix" "$build" "-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/mingw-w64.cmake" || return
    WINEPATH=Z:$prefix/bin prints "texts cross: yes" cmake/run-wine "$build/host.exe" &&
        prints "zelutil $(version)" cmake/run-wine "$prefix/bin/zelutil.exe" --version
}

useZip() {
    local root=$roots/windows archive prefix
    archive=$(echo "$made"/*.zip)
    mkdir -p "$root"
    listContent "$archive" unzip -Z1 "$archive"
    unzip -q "$archive" -d "$root"
    prefix=$(echo "$root"/*)
    step "Using the ZIP for Windows" useWindowsPrefix "$prefix"
}
