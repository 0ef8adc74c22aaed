#  : Make packages for Debian, an archive and a ZIP for Windows below build/packages, twice to compare them, and use each in an empty root
need "${buildPackages[@]}" "${commandPackages[@]}" "${windowsPackages[@]}" dpkg-dev lintian pkg-config unzip
source tools/dev/packages/make.sh
source tools/dev/packages/use.sh

readonly made=build/packages/made again=build/packages/again
rm -rf build/packages
mkdir -p "$made" "$again"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH TZ=UTC

say "Making the packages in this directory"
makePackages "$PWD" "$PWD/$made"

copy=$PWD/build/packages/elsewhere/a-copy-of-the-sources
say "Making them anew in ${copy#"$PWD/"}"
copySources "$copy"
# A cache would hand out what the first build made, and the comparison would show nothing.
CCACHE_DISABLE=1 makePackages "$copy" "$PWD/$again"
step "Comparing the packages" comparePackages "$made" "$again"
rm -rf "$copy" "$again"

step "Checking the packages for Debian with lintian" lintian --fail-on error --allow-root "$made"/*.deb
cat "$(logOf "Checking the packages for Debian with lintian")"
useDebianPackages
useArchive
startWine
useZip
say "The packages are in $made, and lists of what they contain beside them:"
printf '    %s\n' "$made"/*
