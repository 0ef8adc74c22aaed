#  [SECONDS]: Run what takes hours: long random tests, thread sanitizer, so many seconds (600) of each fuzz target, other compilers and ARM, coverage, docs, pages, interface, packages, 100 mutants
seconds=${1:-600}
[[ $seconds =~ ^[0-9]+$ ]] || fail "nightly takes a number of seconds, not $seconds"
need "${buildPackages[@]}" "${commandPackages[@]}" "${testPackages[@]}"
say "The slow tests, the random ones with all their cases"
step "Configuring for long tests" cmake --preset release -B build/long -DZELUTIL_LONG_TESTS=ON -DZELUTIL_BUILD_EXAMPLES=OFF
cmake --build build/long
ctest --test-dir build/long --label-regex "^slow$" --output-on-failure --timeout 3600 -j "$(nproc)" || partsFailed+=("slow tests")

part tsan
part fuzz "$seconds"
part portability
part coverage
part docs --look
part pages
part abi
part packages
part mutants 100
endParts "All of the night passed."
