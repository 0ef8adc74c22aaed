#  [--record | FILTER]: Build the benchmarks optimised and run them (those whose name matches; --record: all, for bench/results.md)
need "${buildPackages[@]}" libbenchmark-dev gperf libboost1.81-dev libboost-filesystem1.81-dev libglib2.0-dev libkf5config-dev libsimdjson-dev nlohmann-json3-dev pkg-config python3 qtbase5-dev
record=false
filter=${1:-.}
if [[ $filter == --record ]]; then
    record=true
    filter=.
fi
buildPreset bench
outputs=()
for program in build/bench/bin/*_bench; do
    [[ -x $program ]] || continue
    text="Measuring with $(basename "$program")"
    output=build/bench/$(basename "$program").json
    step "$text" "$program" --benchmark_filter="$filter" --benchmark_out="$output"
    cat "$(logOf "$text")"
    outputs+=("$output")
done
((${#outputs[@]} > 0)) || fail "there is no benchmark"

# The processor by its name, with how many of it there are.
machine() { lscpu | sed -n 's/^Model name: *//p' | head -n 1 | sed "s/\$/, $(nproc) threads/"; }

# The compiler that built the programs, with its options; src/CMakeLists.txt has those of the library.
compiler() {
    local cache=build/bench/CMakeCache.txt
    "$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$cache")" --version | head -n 1 |
        sed "s|\$|, $(sed -n 's/^CMAKE_CXX_FLAGS_RELEASE:[A-Z]*=//p' "$cache"); the library -Os, sources of these rows -O2|"
}

if $record; then
    python3 tools/dev/bench/record.py tools/dev/bench/rows.txt "$(machine)" "$(compiler)" "${outputs[@]}" \
        >bench/results.md || fail "bench/results.md is not complete"
    say "bench/results.md has the results"
fi
