#  : Measure what a host pays: the time of the include, and the size of the library as it is shipped
need "${buildPackages[@]}" "${commandPackages[@]}" python3 binutils
readonly mostOfInclude=1.3
readonly mostBytes=600000

buildPreset package zelutil
shipped=build/package/costs.so
strip -o "$shipped" build/package/bin/libzelutil.so
bytes=$(stat -c %s "$shipped")
say "The stripped library has $bytes bytes; $mostBytes is the most."

step "Compiling the include" python3 tools/dev/bench/include_cost.py include "$mostOfInclude"
cat "$(logOf "Compiling the include")"
((bytes <= mostBytes)) || fail "the library is too large"
