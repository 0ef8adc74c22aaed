#!/usr/bin/env bash
# completion_test.sh COMMAND SCRIPT PRODUCT LIBRARY_NAME: sources the completion and asks it, as bash does, for the words
# that may follow, in a copy of the installation PRODUCT.
set -u
command=$1
world=$(mktemp -d) || exit 1
trap 'rm -rf "$world"' EXIT
cp -r "$3" "$world/product"
# The root search wants a file of the library's name there.
: >"$world/product/tools/bin/$4"
sed -i 's/"context": "library"/"context": "my library"/' "$world"/product/share/qtxsetup/canvas/resources/tessel/*.cfg
export QTXROOT=$world/product HOMEDRIVE=Z: HOMEPATH=$world
# shellcheck source=/dev/null
source "$2"

failures=0

# Completes the line and compares what bash would offer, words separated by blanks.
expect() { # LINE WORDS
    local COMP_LINE=${1/#zelutil/$command} COMP_POINT COMPREPLY=()
    COMP_POINT=${#COMP_LINE}
    _zelutil
    if [[ "${COMPREPLY[*]}" != "$2" ]]; then
        printf '"%s" is completed by "%s", not by "%s"\n' "$1" "${COMPREPLY[*]}" "$2"
        failures=1
    fi
}

# Every subcommand that the help lists is offered, and nothing else.
listed=$("$command" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p' | tr '\n' ' ')
[[ -n $listed ]] || { echo "The help lists no subcommand"; failures=1; }
expect "zelutil " "${listed% }"
expect "zelutil di" "diff"
expect "zelutil list --ch" "--changed"
expect "zelutil list --color n" "never"
expect "zelutil lint --format " "text json sarif"
expect "zelutil lint --format s" "sarif"
expect "zelutil lint --rule ZU00" "ZU001 ZU002 ZU003 ZU004 ZU005 ZU006 ZU007 ZU008 ZU009"
expect "zelutil lint --format" "--format"
expect "zelutil free --context b" "brisk3d"
expect "zelutil free --context=b" "brisk3d"
expect "zelutil free --modifiers Ctrl+A" "Ctrl+Alt Ctrl+Alt+Shift"
expect "zelutil list --section gen" \
    "general general::startup general::saving general::recent general::locale general::log"
expect "zelutil free --modifiers n" "none"
expect "zelutil schema " "defaults user actions facets"
expect "zelutil get --world g" ""
expect "zelutil free --context my" 'my\ library'
expect "zelutil no-such" ""
expect "zelutil reset general::locale::lan" "language"
expect "zelutil get general::locale::language angle" "angle_units"
expect "zelutil set general::locale::lan" "language="
expect "zelutil set language=" ""
# A reset takes ids of actions that the user has changed, each once.
expect "zelutil reset --shortcuts " ""
printf '1 = Ctrl+Alt+K\n2 = Ctrl+Alt+L\n' >"$world/wishes"
"$command" plan "$world/wishes" --apply >/dev/null || failures=1
expect "zelutil reset --shortcuts " "1 2"
expect "zelutil reset --shortcuts 2" "2"
expect "zelutil reset --shortcuts 1 " "2"
expect "zelutil reset 2 --shortcuts " "1"
# A command line that names a bundle is completed with the settings of the bundle.
"$command" bundle "$world/bundle" >/dev/null || failures=1
export QTXROOT=/nowhere
expect "zelutil get general::locale::lan" ""
expect "zelutil get --world $world/bundle general::locale::lan" "language"
expect "zelutil get --world=$world/bundle general::locale::lan" "language"
expect "zelutil get --world $world/missing general::locale::lan" ""
exit "$failures"
