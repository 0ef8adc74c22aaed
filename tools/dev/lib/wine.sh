# A Wine of the project's own, below build/, so that nobody's settings touch the tests nor the other way round.

export WINEPREFIX=$PWD/build/wine
export WINEDEBUG=${WINEDEBUG:--all,err+virtual}
# No questions about .NET or a browser engine.
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-mscoree,mshtml=}

wineServer() { PATH="$PATH:/usr/lib/wine" wineserver "$@"; }

# Makes the prefix where there is none. The server then stays until the command ends: a start of Windows for every
# test would take seconds instead of a fraction.
startWine() {
    mkdir -p "$WINEPREFIX"
    trap 'wineServer -k >/dev/null 2>&1 || true' EXIT
    wineServer -p || return
    if [[ ! -e $WINEPREFIX/.update-timestamp ]]; then
        step "Making the Wine prefix build/wine" cmake/run-wine wineboot -i
    fi
}
