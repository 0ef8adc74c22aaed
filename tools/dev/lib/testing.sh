# Running ctest and counting: the counts come from ctest's own report.

# The label of the tests that run; all of them where it is empty.
testLabel=
testsPassed=0
testsFailed=0
testsLeftOut=0
platformLines=()

# Shows how far ctest is: a counter on a terminal, else a line per tenth. Whatever is not a passed test stays whole.
showTests() { # PLATFORM
    local platform=$1 line finished total tenth shown=0
    while IFS= read -r line; do
        if [[ $line =~ ^\ *([0-9]+)/([0-9]+)\ Test\ .*\ Passed\  ]]; then
            finished=${BASH_REMATCH[1]} total=${BASH_REMATCH[2]}
            tenth=$((finished * 10 / total))
            if [[ -t 1 ]]; then
                printf '\r    %s: %d of %d\033[K' "$platform" "$finished" "$total"
            elif ((tenth > shown)); then
                printf '    %s: %d of %d\n' "$platform" "$finished" "$total"
            fi
            shown=$tenth
        elif [[ ! $line =~ ^\ +Start\ +[0-9]+: && -n $line ]]; then
            if [[ -t 1 ]]; then
                printf '\r\033[K'
            fi
            printf '%s\n' "$line"
        fi
    done
    if [[ -t 1 ]]; then
        printf '\r\033[K'
    fi
}

# An attribute of the report's root element.
reported() { # REPORT ATTRIBUTE
    sed -n '/<testsuite /,/>/p' "$1" | tr '\n\t' '  ' | sed -n "s/[^>]* $2=\"\([0-9]*\)\".*/\1/p"
}

countTests() { # PLATFORM REPORT
    local platform=$1 report=$2 total failed skipped passed
    total=$(reported "$report" tests)
    failed=$(reported "$report" failures)
    skipped=$(($(reported "$report" skipped) + $(reported "$report" disabled)))
    passed=$((total - failed - skipped))
    testsPassed=$((testsPassed + passed))
    testsFailed=$((testsFailed + failed))
    platformLines+=("$platform: $passed passed, $failed failed, $skipped skipped")
    ((passed > 0 && failed == 0))
}

# A platform whose tests could not be run counts as one failure, so that the total alone tells the truth.
countBroken() { # PLATFORM WHY
    testsFailed=$((testsFailed + 1))
    platformLines+=("$1: $2")
}

# The number of tests of the preset that have another label than those that run.
countLeftOut() { # CTEST_COMMAND...
    local count
    count=$("$@" -N --label-exclude "^$testLabel\$" 2>/dev/null | sed -n 's/^Total Tests: //p')
    testsLeftOut=$((testsLeftOut + ${count:-0}))
}

# testPreset PLATFORM PRESET [PATTERN]: builds the preset and runs its tests, those that match the pattern if one is
# given. Fails unless some ran and all passed.
testPreset() {
    local platform=$1 preset=$2 pattern=${3:-} report=$PWD/build/$2/tests.xml
    local tests=(ctest --preset "$preset")
    if [[ -n $pattern ]]; then
        tests+=(--tests-regex "$pattern")
    fi
    if ! buildPreset "$preset"; then
        countBroken "$platform" "could not be built"
        return 1
    fi
    rm -f "$report"
    say "Testing $platform"
    if [[ -n $testLabel ]]; then
        countLeftOut "${tests[@]}"
        tests+=(--label-regex "^$testLabel\$")
    fi
    "${tests[@]}" --parallel $(($(nproc) + 1)) --output-junit "$report" </dev/null 2>&1 | showTests "$platform" || true
    if [[ ! -s $report ]]; then
        countBroken "$platform" "no test could be run"
        return 1
    fi
    countTests "$platform" "$report"
}

# The last lines of a test command.
printTotals() {
    printf '\n'
    printf '%s\n' "${platformLines[@]}"
    if [[ -n $testLabel ]]; then
        printf 'This was the %s part alone: %d tests were left out. ./dev test runs all.\n' "$testLabel" "$testsLeftOut"
        printf '%d passed, %d failed, %d left out\n' "$testsPassed" "$testsFailed" "$testsLeftOut"
        return
    fi
    printf '%d passed, %d failed\n' "$testsPassed" "$testsFailed"
}
