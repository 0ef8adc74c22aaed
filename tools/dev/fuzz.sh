#  [SECONDS [NAME]]: Fuzz every target (or the one of that name) for so many seconds, 30 if not told
seconds=${1:-30}
[[ $seconds =~ ^[0-9]+$ ]] || fail "fuzz takes a number of seconds, not $seconds"
need clang libclang-rt-14-dev "${buildPackages[@]}"
buildPreset fuzz

# What a run finds goes below build/; the kept corpus only feeds it.
fuzzTarget() { # PROGRAM
    local name text found=build/fuzz/found
    name=$(basename "$1")
    mkdir -p "$found/$name"
    text="Fuzzing $name for $seconds s"
    step "$text" "$1" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$found/$name." "$found/$name" "fuzz/corpus/$name" || return
    sed -n 's/^stat::number_of_executed_units: */    inputs tried: /p' "$(logOf "$text")"
}

status=0
count=0
for program in build/fuzz/bin/${2:-*_fuzz}; do
    [[ -x $program ]] || continue
    count=$((count + 1))
    fuzzTarget "$program" || status=1
done
((count > 0)) || fail "no fuzz target ${2:-}"
((status == 0)) || fail "inputs that break a target are in build/fuzz/found/"
printf '\nTargets fuzzed: %d; nothing found.\n' "$count"
