#  COUNT [SOURCE...]: Change so many lines of src/ (or of these sources) one at a time and count the changes that a test notices
count=${1:-}
[[ $count =~ ^[0-9]+$ ]] || fail "mutants takes a number of changes, not \"$count\""
shift
need "${buildPackages[@]}" "${commandPackages[@]}" python3
sources=("$@")
if ((${#sources[@]} == 0)); then
    mapfile -t sources < <(projectFiles 'src/*.cpp' | grep -v '/windows/')
fi
# A tree of its own, so that nobody's sources are changed under their hands.
tree=$PWD/build/mutants
rm -rf "$tree/src" "$tree/include"
mkdir -p "$tree"
git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents --update -t "$tree"
cd "$tree" || exit
step "Configuring for mutants" cmake --preset release -DCMAKE_CXX_FLAGS_RELEASE=-O0 -DZELUTIL_BUILD_EXAMPLES=OFF
python3 tools/dev/mutants/mutants.py build/release "$count" "${ZELUTIL_MUTANT_SEED:-1}" tools/dev/mutants/tests.txt "${sources[@]}"
