#  [--native|--windows|--arm] [--fast] [PATTERN]: Build and run the tests, natively and as a Windows DLL under Wine (--fast: those of the label `fast`; --arm: see portability)
native=true
windows=true
while [[ ${1:-} == --* ]]; do
    case $1 in
        --native) windows=false ;;
        --windows) native=false ;;
        --arm) exec ./dev portability arm ;;
        --fast) testLabel=fast ;;
        *) fail "test knows --native, --windows, --arm and --fast, not $1" ;;
    esac
    shift
done
$native || $windows || fail "test takes one of --native and --windows; without them it does both"
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
    if [[ -z $pattern && -z $testLabel && -z ${CI:-} ]] && ! buildTogether; then
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
