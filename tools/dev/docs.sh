#  [--look]: Make the pages of the public headers and of docs/ below build/docs and check every link (--look: open them in headless Chromium)
packages=(doxygen linkchecker python3)
case ${1:-} in
    '') ;;
    --look) packages+=(chromium chromium-driver fonts-dejavu-core) ;;
    *) fail "docs knows --look, not $1" ;;
esac
need "${packages[@]}"

readonly pages=build/docs/html

# Doxygen's own configuration, and what only this run knows.
configuration() {
    cat tools/dev/docs/Doxyfile
    printf 'OUTPUT_DIRECTORY = build/docs\nPROJECT_NUMBER = %s\n' "$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)"
}

makePages() {
    rm -rf "$pages"
    python3 -B tools/dev/docs/stage.py . build/docs/input &&
        doxygen <(configuration) &&
        cat tools/dev/docs/search.css >>"$pages/search/search.css"
}

# Links to other sites are left alone: they say nothing about this project, and a machine that builds it may be offline.
# Started by root, the checker reads as nobody, who need not be let into this directory: it reads a copy.
checkLinks() {
    local copy status=0
    copy=$(mktemp -d)
    cp -r "$pages/." "$copy"
    chmod -R a+rX "$copy"
    linkchecker --config tools/dev/docs/linkchecker.ini --no-status "$copy/index.html" || status=$?
    rm -rf "$copy"
    return "$status"
}

step "Making the pages $pages" makePages
step "Checking their links" checkLinks
tail -n 4 "$(logOf "Checking their links")" | grep 'links'
if [[ ${1:-} == --look ]]; then
    say "Opening the pages in Chromium; pictures of them go to build/docs/pictures"
    python3 -B tools/dev/docs/look.py "$pages" build/docs/pictures
fi
say "The pages begin at $pages/index.html"
