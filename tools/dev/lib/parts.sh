# Commands that consist of others: each part runs, whatever became of the one before it.

partsFailed=()

part() { # COMMAND...
    say "./dev $*"
    ./dev "$@" || partsFailed+=("./dev $*")
}

# endParts WORD: the last lines of such a command, and its result.
endParts() {
    if ((${#partsFailed[@]} > 0)); then
        printf '\nFailed:\n'
        printf '    %s\n' "${partsFailed[@]}"
        exit 1
    fi
    printf '\n%s\n' "$1"
}
