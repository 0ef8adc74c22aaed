#  [PATTERN]: Check what every change must pass: the rules of lint, then the tests on both platforms (those that match)
part lint
part test "$@"
endParts "All checks passed."
