#  [--native|--windows] [PATTERN]: Build and run the tests, natively and as a Windows DLL under Wine
native=true
windows=true
case ${1:-} in
    --native) windows=false ;;
    --windows) native=false ;;
esac
if [[ ${1:-} == --* ]]; then
    $native && $windows && fail "test knows --native and --windows, not $1"
    shift
fi
pattern=${1:-}

packages=("${buildPackages[@]}" "${commandPackages[@]}" "${testPackages[@]}")
if $native; then
    packages+=("${qtPackages[@]}" "${displayPackages[@]}")
fi
if $windows; then
    packages+=("${windowsPackages[@]}")
fi
need "${packages[@]}"

status=0
if $native; then
    testPreset native dev "$pattern" || status=1
    # Continuous integration builds everything from many sources at a time.
    if [[ -z $pattern && -z ${CI:-} ]] && ! buildTogether; then
        countBroken library "could not be built from many sources at a time"
        status=1
    fi
fi
if $windows; then
    startWine || status=1
    testPreset windows windows "$pattern" || status=1
fi
printTotals
exit "$status"
