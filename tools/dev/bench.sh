#  [FILTER]: Build the benchmarks optimised and run them (those whose name matches)
need "${buildPackages[@]}" libbenchmark-dev gperf libboost-dev nlohmann-json3-dev qtbase5-dev
buildPreset bench
count=0
for program in build/bench/bin/*_bench; do
    [[ -x $program ]] || continue
    count=$((count + 1))
    text="Measuring with $(basename "$program")"
    step "$text" "$program" --benchmark_filter="${1:-.}"
    cat "$(logOf "$text")"
done
((count > 0)) || fail "there is no benchmark"
