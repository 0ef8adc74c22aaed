#  [FILTER]: Build the benchmarks optimised and run them (those whose name matches)
need "${buildPackages[@]}" libbenchmark-dev libboost-dev nlohmann-json3-dev qtbase5-dev
buildPreset bench
count=0
for program in build/bench/bin/*_bench; do
    [[ -x $program ]] || continue
    count=$((count + 1))
    say "$(basename "$program")"
    "$program" --benchmark_filter="${1:-.}" --benchmark_min_time=0.2
done
((count > 0)) || fail "there is no benchmark"
