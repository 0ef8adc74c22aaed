# Which folder of the library may include which: the arrows of docs/architecture.md, compared with every #include.

# A folder, then those it may include besides itself. export.h and c_api.h are everybody's.
readonly allowedIncludes='
text:
platform: text
json: text
util: platform text
common_library: platform text
file: common_library platform text util
enums: util
server: platform util
actions: json text util
facet: file json platform text util
prefs: actions common_library file json platform text util
host: actions common_library facet file json platform prefs server text util
'

# The arrows that the sources draw, a line each: folder, included folder, file, included header. Headers that stand in
# no folder, such as export.h, are everybody's.
drawnArrows() {
    git grep -nE --untracked '^\s*#\s*include\s*("|<zelutil/)[a-z_]+/' -- 'src/*/*' 'include/zelutil/*/*' |
        sed -nE 's#^(src|include/zelutil)/([a-z_]+)/([^:]*):[0-9]+:\s*.\s*include\s*["<]((zelutil/)?([a-z_]+)/[^">]*)[">].*#\2 \6 \1/\2/\3 \4#p'
}

# Public headers that stand alone, though their folder is above that of who includes them.
readonly leafHeaders='zelutil/(prefs/user_settings_manager|util/ascii)\.h'

checkDirections() {
    local from to file header status=0
    while read -r from to file header; do
        if [[ $from != "$to" && ! $header =~ ^$leafHeaders$ ]] &&
            ! grep -qE "^$from:.* $to( |\$)" <<<"$allowedIncludes"; then
            printf '%s: %s may not include %s\n' "$file" "$from" "$header"
            status=1
        fi
    done < <(drawnArrows)
    return "$status"
}
