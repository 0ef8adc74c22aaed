# Every oddity has a row in docs/oddities.md, a marker in the code and a test. The three are compared.

# The tests of oddities, a line each: file, line and Suite.Name with colons between. A folder of files may be a test, too.
oddTests() {
    git grep -nE --untracked '^TEST(_F|_P)?\(\w+, \w*Oddity' -- tests |
        sed -E 's/^([^:]*:[0-9]+:)TEST(_F|_P)?\((\w+), (\w+)\).*/\1\3.\4/'
    projectFiles 'tests/*Oddity*/*' | sed -E 's#(Oddity[^/]*)/.*#\1#; s#.*#&:1:&#' | sort -u
}

# The markers, a line each: file and line with a colon between.
oddMarkers() { git grep -n --untracked 'Kept deliberately:' -- src include command | cut -d: -f1,2; }

checkOddities() {
    awk '
        function missing(place, text) { print place ": " text; status = 1 }
        function readRow(place,    names, count, i, parts, file) {
            if (NF != 5) {
                missing(place, "the row has not five columns")
                return
            }
            count = split($4, names, ", ")
            for (i = 1; i <= count; ++i) {
                gsub(/`/, "", names[i])
                named[names[i]] = 1
                if (!(names[i] in tests)) missing(place, "there is no test " names[i])
            }
            split($5, parts, "`")
            file = parts[2]
            if (!(file in markers)) missing(place, "no \"Kept deliberately:\" in " file)
            if ($5 !~ /`, shared/) ++rows[file]
        }
        kind == "test" {
            tests[$3] = $1 ":" $2
            if ($3 !~ /Oddity$/) missing($1 ":" $2, $3 " does not end in Oddity")
        }
        kind == "marker" {
            ++markers[$1]
            if (!($1 in first)) first[$1] = $1 ":" $2
        }
        kind == "row" && /^[|] / && !/^[|] where / { readRow(FILENAME ":" FNR) }
        END {
            for (name in tests)
                if (!(name in named)) missing(tests[name], "no row has " name)
            for (file in markers)
                if (markers[file] != rows[file])
                    missing(first[file], markers[file] " \"Kept deliberately:\" from here on, but " rows[file] + 0 " rows")
            exit status
        }' kind=test FS=: <(oddTests) kind=marker <(oddMarkers) kind=row FS=' [|] ' docs/oddities.md
}
