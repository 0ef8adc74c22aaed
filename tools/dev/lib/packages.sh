# What a command needs from the system, by the name of the Debian 12 package that brings it.

readonly buildPackages=(g++ cmake ninja-build rapidjson-dev googletest)
readonly windowsPackages=(g++-mingw-w64-x86-64-posix wine wine64)
# The test of the installed package asks pkg-config for its flags; an example host is written in Python, and a validator
# in it tests the command's schemas. A build makes the locales that a host is tested in from the sources in `locales`.
readonly testPackages=(pkg-config python3 python3-jsonschema locales)
# Headers of the command, which is left out where they are missing.
readonly commandPackages=(libcli11-dev libfmt-dev)
# The board viewer of the examples needs Qt; the library itself does without.
readonly qtPackages=(qt6-base-dev fonts-dejavu-core)
# Some of its tests ask for a display.
readonly displayPackages=(xvfb xauth)

hasHeader() { # HEADER: as the compiler finds it
    printf '#include <%s>\n' "$1" | g++ -fsyntax-only -x c++ - 2>/dev/null
}

# Whether the system has what the package brings, from wherever it came.
hasPackage() {
    case $1 in
        ninja-build) command -v ninja ;;
        rapidjson-dev) [[ -e /usr/include/rapidjson/document.h || -e /usr/local/include/rapidjson/document.h ]] ;;
        abigail-tools) command -v abidiff ;;
        xz-utils) command -v xz ;;
        dpkg-dev) command -v dpkg-shlibdeps ;;
        locales) [[ -e /usr/share/i18n/locales/de_DE ]] && command -v localedef ;;
        googletest) [[ -e /usr/src/googletest/googletest/CMakeLists.txt ]] ;;
        g++-mingw-w64-x86-64-posix) command -v x86_64-w64-mingw32-g++-posix ;;
        wine64) command -v wine64 || [[ -x /usr/lib/wine/wine64 ]] ;;
        libclang-rt-14-dev) [[ -e $(clang -print-file-name=libclang_rt.fuzzer-x86_64.a 2>/dev/null) ]] ||
            compgen -G '/usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a' ;;
        libc++-*-dev) [[ -e /usr/lib/llvm-16/include/c++/v1/memory_resource ]] ;;
        libc++abi-*-dev) [[ -e /usr/lib/llvm-16/lib/libc++abi.so ]] ;;
        g++-aarch64-linux-gnu) command -v aarch64-linux-gnu-g++ ;;
        qemu-user) command -v qemu-aarch64 ;;
        libbenchmark-dev) [[ -e /usr/include/benchmark/benchmark.h ]] ;;
        libcli11-dev) [[ -e /usr/include/CLI/CLI.hpp || -e /usr/local/include/CLI/CLI.hpp ]] ;;
        python3-jsonschema) python3 -c 'import jsonschema' ;;
        libfmt-dev) [[ -e /usr/include/fmt/format.h || -e /usr/local/include/fmt/format.h ]] ;;
        libboost-filesystem1.81-dev) compgen -G '/usr/lib/*/libboost_filesystem.so' || compgen -G '/usr/lib*/libboost_filesystem.so' ;;
        libglib2.0-dev) compgen -G '/usr/include/glib-2.0' ;;
        libboost1.81-dev) [[ -e /usr/include/boost/unordered/unordered_flat_map.hpp ]] ;;
        libsimdjson-dev) [[ -e /usr/include/simdjson.h ]] ;;
        gnuplot-nox) command -v gnuplot ;;
        libkf5config-dev) compgen -G '/usr/lib/*/cmake/KF5Config' || compgen -G '/usr/lib*/cmake/KF5Config' ;;
        nlohmann-json3-dev) [[ -e /usr/include/nlohmann/json.hpp ]] ;;
        qt6-base-dev) compgen -G '/usr/lib/*/cmake/Qt6Widgets/Qt6WidgetsConfig.cmake' ||
            compgen -G '/usr/lib*/cmake/Qt6Widgets/Qt6WidgetsConfig.cmake' ;;
        chromium-driver) command -v chromedriver ;;
        fonts-dejavu-core) compgen -G '/usr/share/fonts/*/dejavu/DejaVuSans.ttf' ;;
        xvfb) command -v Xvfb && command -v xvfb-run ;;
        qtbase5-dev) compgen -G '/usr/include/*/qt5/QtCore' || [[ -e /usr/include/qt5/QtCore ]] ;;
        *) command -v "$1" ;;
    esac >/dev/null 2>&1
}

isDebian12() {
    (
        # shellcheck source=/dev/null
        source /etc/os-release 2>/dev/null && [[ ${ID:-} == debian && ${VERSION_ID:-} == 12 ]]
    )
}

# Runs a command as root: as it is, or through sudo, which asks for a password only where somebody can answer.
asRoot() {
    if ((EUID == 0)); then
        "$@"
    elif [[ -t 0 ]]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

installPackages() {
    say "Installing from Debian: $*"
    if ((EUID != 0)); then
        command -v sudo >/dev/null || fail "neither root nor sudo; as root: apt-get install --no-install-recommends $*"
        asRoot true || fail "sudo refused; as root: apt-get install --no-install-recommends $*"
    fi
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300)
    step "Reading the package lists" asRoot "${apt[@]}" update
    step "Installing $# packages" asRoot "${apt[@]}" install --no-install-recommends "$@"
}

# need PACKAGE...: sees to it that all are there, or ends the command with the list of what is missing.
need() {
    local package missing=()
    for package in "$@"; do
        hasPackage "$package" || missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    if ! isDebian12; then
        printf 'dev: this system lacks (by the names of Debian 12):\n' >&2
        printf '    %s\n' "${missing[@]}" >&2
        fail "install them and try again; only on Debian 12 this is done for you"
    fi
    installPackages "${missing[@]}"
}
