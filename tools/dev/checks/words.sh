# Comments are whole sentences: none opens with a word that begins a mere part of one.

checkWords() {
    # shellcheck disable=SC2016 # $0 is awk's.
    lintedFiles {src,include,command,tests,bench,fuzz}/'*.h' {src,include,command,tests,bench,fuzz}/'*.cpp' |
        xargs -r awk '
            FNR == 1 { inComment = 0 }
            !inComment && /^ *\/\/\/? (What|Who|Of a|Of the|That of|Where|How|Whose|Which) / {
                print FILENAME ":" FNR ":" $0
                found = 1
            }
            { inComment = /^ *\/\// }
            END { exit found }'
}
