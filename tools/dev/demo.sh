#  [--windows]: Build the library and an example host, run it on an example installation
preset=release
packages=("${buildPackages[@]}")
case ${1:-} in
    '') ;;
    --windows)
        preset=windows
        packages+=("${windowsPackages[@]}")
        ;;
    *) fail "demo knows --windows, not $1" ;;
esac
need "${packages[@]}"

if [[ $preset == windows ]]; then
    startWine
    buildPreset windows zelutil_demo
    say "Running host_demo.exe under Wine"
    cmake/run-wine build/windows/bin/host_demo.exe "Z:$PWD/examples/product"
else
    buildPreset release zelutil_demo
    say "Running host_demo"
    build/release/bin/host_demo "$PWD/examples/product"
fi
