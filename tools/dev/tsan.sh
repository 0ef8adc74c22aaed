#  [PATTERN]: Run the tests natively under the thread sanitizer
need "${buildPackages[@]}" "${commandPackages[@]}" "${testPackages[@]}"
status=0
testPreset tsan tsan "${1:-}" || status=1
printTotals
exit "$status"
