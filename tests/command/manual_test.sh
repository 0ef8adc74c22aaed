#!/usr/bin/env bash
# manual_test.sh PAGE: fails unless groff sets the manual page without a warning.
set -u
warnings=$(groff -man -Tutf8 -ww "$1" 2>&1 >/dev/null)
printf '%s' "$warnings"
[[ -z $warnings ]]
