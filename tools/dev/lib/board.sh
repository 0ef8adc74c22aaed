# The board viewer, in the installation tree that it is built into.

# Shows it on the display, or has it write pictures of itself where there is none.
showBoard() {
    buildPreset release qt_board
    local tree=$PWD/build/release/qt_board pictures=$PWD/build/release/qt_board/pictures options=()
    mkdir -p "$tree/home"
    unset QTXROOT QTX_ROOT QTXINSTDIR QTX_SITE tessel_settings regression_testing
    export HOMEDRIVE=Z: HOMEPATH=$tree/home
    if [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; then
        say "Running qt_board; its user's files are in $tree/home"
    else
        say "There is no display: qt_board writes pictures of itself to $pictures"
        export QT_QPA_PLATFORM=offscreen
        options=(--screenshot "$pictures")
    fi
    "$tree/product/tools/bin/qt_board" "${options[@]}" "$tree/boards/sensor_node.board"
    if ((${#options[@]} > 0)); then
        printf '    %s\n' "$pictures"/*.png
    fi
}
