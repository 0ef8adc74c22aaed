#  [--changed]: Check format, names, bugs, layering and scripts, of all files or of what differs from origin/main
source tools/dev/checks/directions.sh
source tools/dev/checks/layering.sh
source tools/dev/checks/oddities.sh
source tools/dev/checks/tidy.sh
source tools/dev/checks/words.sh

base=
case ${1:-} in
    '') ;;
    --changed) base=$(git merge-base HEAD origin/main 2>/dev/null || git rev-parse HEAD) ;;
    *) fail "lint knows --changed, not $1" ;;
esac

# The project's files of these patterns; with --changed only those that differ.
lintedFiles() {
    if [[ -z $base ]]; then
        projectFiles "$@"
        return
    fi
    {
        git diff --name-only --diff-filter=d "$base" -- "$@"
        git ls-files --others --exclude-standard -- "$@"
    } | sort -u
}

checkFormat() { lintedFiles '*.h' '*.cpp' '*.c' | xargs -r clang-format --dry-run -Werror; }

checkScripts() { lintedFiles dev .ci/run cmake/run-wine tools/dev/checks/tidy-file '*.sh' | xargs -r shellcheck; }

need git clang-format clang-tidy shellcheck "${buildPackages[@]}" "${commandPackages[@]}" g++-mingw-w64-x86-64-posix

failures=()
check() { # TEXT COMMAND...
    local text=$1
    shift
    say "$text"
    "$@" || failures+=("$text")
}

check "Format" checkFormat
check "Scripts" checkScripts
check "Operating system only behind its seam" checkSystemKnowledge
check "RapidJSON only below src/json/" checkJsonDoor
check "Includes point downwards" checkDirections
check "Public headers stand alone" checkPublicIncludes
check "Every source file is built" checkSourcesListed
check "Every oddity has its row, its marker and its test" checkOddities
check "Comments open as sentences" checkWords
check "clang-tidy" checkTidy

if ((${#failures[@]} > 0)); then
    printf '\nFound something in: '
    printf '%s; ' "${failures[@]}"
    printf '\n'
    exit 1
fi
printf '\nNothing found.\n'
