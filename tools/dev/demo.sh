#  [--windows|--qt]: Build the library and example hosts (--qt: the board viewer) and run them
preset=release
packages=("${buildPackages[@]}")
case ${1:-} in
    '') packages+=(python3) ;;
    --windows)
        preset=windows
        packages+=("${windowsPackages[@]}")
        ;;
    --qt)
        need "${buildPackages[@]}" "${qtPackages[@]}"
        showBoard
        exit 0
        ;;
    *) fail "demo knows --windows and --qt, not $1" ;;
esac
need "${packages[@]}"

hosts=(host_demo "host_demo --read-back" registry_demo c_host "c_host --read-back")
# The example installation and its user's home: nothing of the machine's own product, if it has one.
demo=$PWD/build/$preset/demo
# The library's trace shows which source the root was found by.
export QTX_ZELUTIL_DEBUG=1
unset QTXROOT QTX_ROOT QTXINSTDIR QTX_SITE tessel_settings regression_testing

if [[ $preset == windows ]]; then
    startWine
    buildPreset windows zelutil_demo
    folder=Z:${demo//\//\\}
    for host in "${hosts[@]}"; do
        say "Running $host under Wine, installed in $demo"
        # Wine sets both variables itself, to the user of its prefix.
        cmake/run-wine cmd /c "set HOMEDRIVE=Z:&& set HOMEPATH=${folder#Z:}\\home&& $folder\\product\\tools\\bin\\$host"
    done
else
    buildPreset release zelutil_demo
    for host in "${hosts[@]}"; do
        say "Running $host, installed in $demo"
        # The option is a word of its own.
        # shellcheck disable=SC2086
        (cd "$demo/product/tools/bin" && HOMEDRIVE=Z: HOMEPATH=$demo/home ./$host)
    done
    for option in "" --read-back; do
        say "Running examples/python_host/host.py $option, with the library installed in $demo"
        HOMEDRIVE=Z: HOMEPATH=$demo/home python3 -B examples/python_host/host.py \
            "$demo/product/tools/bin/libzelutil.so" ${option:+"$option"}
    done
fi
