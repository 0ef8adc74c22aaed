#  [PART...]: Build and run the fast tests by other compilers and for another processor: clang, libcxx, unsigned-char, arm (all if none is named)
readonly allParts=(clang libcxx unsigned-char arm)

# Packages that a part needs besides the usual ones.
packagesOf() { # PART
    case $1 in
        clang) echo clang ;;
        libcxx) echo clang-16 libc++-16-dev libc++abi-16-dev ;;
        unsigned-char) ;;
        arm) echo g++-aarch64-linux-gnu qemu-user ;;
        *) fail "portability knows ${allParts[*]}, not $1" ;;
    esac
}

parts=("$@")
if ((${#parts[@]} == 0)); then
    parts=("${allParts[@]}")
fi
packages=("${buildPackages[@]}" "${commandPackages[@]}" locales)
for name in "${parts[@]}"; do
    list=$(packagesOf "$name")
    # Names of packages have no blanks.
    # shellcheck disable=SC2206
    packages+=($list)
done
need "${packages[@]}"

status=0
for name in "${parts[@]}"; do
    testPreset "$name" "$name" || status=1
done
printf '\nThe library, the command and the tests of the label "fast" were built. Left out are the tests of the label "slow",\n'
printf 'the examples and all sanitizers. Programs for ARM ran under qemu, which is no such machine.\n'
printTotals
exit "$status"
