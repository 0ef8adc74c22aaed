# Completes command lines of zelutil in bash. The command itself says with what, so that nothing is said twice.
_zelutil() {
    local words line=${COMP_LINE:0:COMP_POINT} typed candidate rest kept
    read -ra words <<<"$line"
    [[ $line == *[[:blank:]] ]] && words+=("")
    typed=${words[-1]}
    # Bash takes a colon and an equals sign for ends of words, and replaces only what is behind the last of them.
    kept=${typed%"${typed##*[:=]}"}
    COMPREPLY=()
    while IFS= read -r candidate; do
        rest=${candidate#"$kept"}
        # A blank in a name is none between words.
        COMPREPLY+=("${rest// /\\ }")
    done < <("${words[0]}" complete -- "${words[@]:1}" 2>/dev/null)
    if [[ ${COMPREPLY[0]-} == *= ]]; then
        compopt -o nospace 2>/dev/null
    fi
}
complete -o default -F _zelutil zelutil
