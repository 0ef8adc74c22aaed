# How commands say what they do: one line per step, with the time while it runs, and the log's end when it fails.

readonly logDirectory=build/log

say() { printf '==> %s\n' "$*"; }

fail() {
    printf 'dev: %s\n' "$*" >&2
    exit 1
}

# Clears the line that a terminal shows while something runs.
clearLine() {
    if [[ -t 1 ]]; then
        printf '\r\033[K'
    fi
}

# Tells that a step is alive: a terminal sees the seconds count, elsewhere a line comes now and then.
showWaiting() { # TEXT LOG
    local text=$1 log=$2 started=$SECONDS told=0 elapsed
    while kill -0 $$ 2>/dev/null; do
        sleep 0.3
        elapsed=$((SECONDS - started))
        if [[ -t 1 ]]; then
            printf '\r==> %s (%d s)\033[K' "$text" "$elapsed"
        elif ((elapsed >= told + 20)); then
            told=$elapsed
            printf '    %d s %s\n' "$elapsed" "$(tail -n 1 "$log" | cut -c 1-100)"
        fi
    done
}

logOf() { printf "%s/%s.log" "$logDirectory" "$(tr -cs "[:alnum:]\n_" - <<<"$1")"; }

# step TEXT COMMAND...: the command's output goes to a log. Fails as the command does.
step() {
    local text=$1 log ticker status=0
    shift
    mkdir -p "$logDirectory"
    log=$(logOf "$text")
    say "$text"
    showWaiting "$text" "$log" &
    ticker=$!
    "$@" >"$log" 2>&1 </dev/null || status=$?
    kill "$ticker"
    wait "$ticker" || true
    clearLine
    if ((status != 0)); then
        tail -n 40 "$log" >&2
        printf 'dev: failed: %s (whole log: %s)\n' "$text" "$log" >&2
    fi
    return "$status"
}
