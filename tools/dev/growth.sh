# : Measure how a start grows with settings and actions, for docs/growth.md
need "${buildPackages[@]}" gnuplot-nox libbenchmark-dev gperf libboost1.81-dev libglib2.0-dev libsimdjson-dev nlohmann-json3-dev pkg-config qtbase5-dev
buildPreset bench
measured=build/bench/growth.txt
build/bench/bin/start_bench --growth --benchmark_repetitions=5 >"$measured"
gnuplot -e "measured='$measured'" tools/dev/growth/growth.gp >docs/images/growth.svg

# The rows of the table for one kind of item.
rowsOf() {
    awk -v kind="$1" '$1 == kind { printf "| %d | %s | %.0f | %.0f |\n", $2, kind, $3, $4 }' "$measured"
}

# The rows of the table of what each side holds.
rowsOfMemory() {
    build/bench/bin/start_bench --benchmark_filter=10000 --benchmark_repetitions=5 |
        awk '/^memory/ { isMemory = 1; next }
             isMemory { held = $1; touched = $2; $1 = $2 = ""; sub(/^ +/, ""); printf "| %s | %s | %s |\n", $0, held, touched }'
}

{
    cat tools/dev/growth/head.md
    rowsOf settings
    rowsOf actions
    cat tools/dev/growth/memory.md
    rowsOfMemory
} >docs/growth.md
say "docs/growth.md and docs/images/growth.svg have the results"
