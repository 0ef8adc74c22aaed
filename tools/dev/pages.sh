#  [--keep]: Open the pages of sheet and report in headless Chromium, with an accessibility checker (--keep: keep pictures in docs/)
pictures=$PWD/build/pages/pictures
case ${1:-} in
    '') ;;
    --keep) pictures=$PWD/docs/images ;;
    *) fail "pages knows --keep, not $1" ;;
esac
need "${buildPackages[@]}" "${commandPackages[@]}" python3 chromium chromium-driver fonts-dejavu-core npm

# The checker is a package of npm. It is unpacked below build/, and nothing in it is run here but in the browser.
readonly axe=axe-core@4.14.1
if [[ ! -e build/pages/node_modules/axe-core/axe.min.js ]]; then
    mkdir -p build/pages
    step "Installing $axe from npm below build/pages" npm install --prefix build/pages --no-save --ignore-scripts "$axe"
fi

buildPreset release zelutil_command
mkdir -p "$pictures"
say "Opening the pages in Chromium; pictures of them go to $pictures"
python3 -B tests/command/report_pages_test.py build/release/bin/zelutil examples \
    build/pages/node_modules/axe-core/axe.min.js "$pictures"
