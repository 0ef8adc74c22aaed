#!/usr/bin/env bash
# under_xvfb.sh PROGRAM ARGUMENT...: runs a program on a display of its own. Exits with 77 where there is no xvfb-run.
command -v xvfb-run >/dev/null || {
    printf 'There is no xvfb-run.\n'
    exit 77
}
exec xvfb-run --auto-servernum --server-args='-screen 0 1400x1000x24' "$@"
