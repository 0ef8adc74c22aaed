# : Count which lines of src/ the tests execute (native build); fails under 95 %
need "${buildPackages[@]}" "${commandPackages[@]}" "${testPackages[@]}" gcovr
status=0
# Counts of an earlier run would be added to.
find build/coverage -name '*.gcda' -delete 2>/dev/null || true
testPreset coverage coverage || status=1
printTotals
say "Lines executed, per file, with those that are not"
gcovr --root . --filter 'src/' --fail-under-line 95 build/coverage || status=1
exit "$status"
