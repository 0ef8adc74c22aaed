#  [PATTERN]: Build the Windows DLL and run its tests under Wine, as test --windows
set -- --windows "$@"
source tools/dev/test.sh
