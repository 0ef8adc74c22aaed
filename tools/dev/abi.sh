#  [--update]: Compare the library's binary interface with that of the last release, or take it as that of a release
need "${buildPackages[@]}" abigail-tools xz-utils

# The types of the public headers count; what they point to and hosts cannot see may change at will.
released=tools/dev/abi/linux-$(uname -m).abi.xz
readonly released before=build/abi/released.abi now=build/abi/now.abi
readonly described=(--headers-dir include --drop-private-types --exported-interfaces-only --no-corpus-path
    --no-comp-dir-path --no-show-locs --no-elf-needed --no-parameter-names --no-write-default-sizes)

buildForDescription() {
    cmake --preset library -B build/abi -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-g && cmake --build build/abi
}

# The library's name for the loader, which has the first number of its version.
nameForLoader() { grep -om 1 "soname='[^']*'" "$1"; }

compareInterfaces() {
    local status=0
    # A host that was compiled earlier does not miss what is new.
    abidiff --no-added-syms "$before" "$now" || status=$?
    if ((status == 0)); then
        printf 'A host that was compiled with the last release runs with this library.\n'
        return
    fi
    # Its first two bits are errors of the tool's.
    if (((status & 3) == 0)) && [[ $(nameForLoader "$before") != "$(nameForLoader "$now")" ]]; then
        printf 'The name for the loader has changed, too, so that no host meets what it was not compiled with.\n'
        return
    fi
    printf 'Hosts that were compiled with the last release break. Either keep what they rely on, or raise the first\n'
    printf 'number of the version, and with it the name of the library for the loader.\n'
    return 1
}

case ${1:-} in
    '' | --update) ;;
    *) fail "abi knows --update, not $1" ;;
esac
step "Building the library to be described" buildForDescription
step "Describing its interface" abidw "${described[@]}" --out-file "$now" build/abi/bin/libzelutil.so
if [[ ${1:-} == --update ]]; then
    xz --compress --keep --stdout -9e "$now" >"$released"
    say "$released has the interface as it is now."
    exit 0
fi
[[ -e $released ]] || fail "there is no description of a release for this machine: $released"
xz --decompress --stdout "$released" >"$before"
step "Comparing it with that of the last release" compareInterfaces
cat "$(logOf "Comparing it with that of the last release")"
