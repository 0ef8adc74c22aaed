# What a compiler does not check: which part of the tree may know what. Each check prints the lines that break its rule.

# Prints what git grep finds and fails if it finds anything.
noneMatches() { # REGEX PATHSPEC...
    local regex=$1
    shift
    ! git grep -nE --untracked "$regex" -- "$@"
}

checkSystemKnowledge() {
    local places=(src include command tests ':!src/platform' ':!command/system' ':!include/zelutil/export.h' ':!tests/support')
    # What is tested on one system alone bears its name.
    places+=(':!tests/*/posix_*' ':!tests/*/windows_*')
    local macros='_WIN32|_WIN64|__MINGW|_MSC_VER|__linux__|__unix__|__APPLE__|_POSIX'
    local headers='windows|winbase|winsock2?|shlobj|direct|io|process|unistd|pthread|dlfcn|fcntl|dirent|sched|spawn'
    local status=0
    noneMatches "^\s*#\s*(if|ifdef|ifndef|elif)\b.*($macros)" "${places[@]}" || status=1
    noneMatches "^\s*#\s*include\s*[<\"](($headers)\.h|(sys|linux)/)" "${places[@]}" || status=1
    noneMatches '^\s*#\s*include\s*[<"]windows\.h' src ':!src/platform/windows/windows_h.h' || status=1
    return "$status"
}

# Nor do tests of other folders name the parser; bench/ may, as a peer.
checkJsonDoor() {
    ! git grep -niE --untracked rapidjson -- src include tests fuzz command examples ':!src/json' ':!tests/json' |
        grep -v '^[^:]*CMakeLists.txt:[0-9]*:.*zelutil_rapidjson'
}

# A public header includes others of its kind and the standard library's: a name without a slash, and with ".h" only
# where C knows it.
checkPublicIncludes() {
    ! git grep -nE --untracked '^\s*#\s*include\b' -- include |
        grep -vE '#\s*include\s*<(zelutil/[a-z_/]+\.h|[a-z_]+|std(bool|def|int)\.h)>'
}

# Source lists are explicit; a file that none names would never be compiled.
checkSourcesListed() {
    local file status=0
    while IFS= read -r file; do
        if ! git grep -qw --untracked "$(basename "$file" .cpp)" -- '*CMakeLists.txt' '*.cmake'; then
            printf '%s: no file of CMake names it\n' "$file"
            status=1
        fi
    done < <(projectFiles 'src/*.cpp' 'tests/*.cpp' 'bench/*.cpp' 'fuzz/*.cpp' 'examples/*.cpp' 'command/*.cpp')
    return "$status"
}
