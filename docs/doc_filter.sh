#!/bin/sh
# Doxygen input filter: the headers document their contracts in plain //
# comments; hand them to Doxygen as /// documentation comments. Comments at
# the end of a line of code become trailing member documentation (///<), and
# so do the comment lines that continue them, indented beneath, so that a
# second line is not taken for the next member's documentation.
awk '
{
    line = $0
    if (trailing && match(line, /^[ \t]*\/\/[^\/]/) && RSTART == 1 && indent_of(line) > indent_of(prev_code)) {
        sub(/\/\//, "///<", line)
        print line
        next
    }
    trailing = 0
    if (match(line, /^[ \t]*\/\/$/) || match(line, /^[ \t]*\/\/[^\/]/)) {
        sub(/\/\//, "///", line)
    } else if (match(line, /[;,{][ \t]*\/\/[ \t]/)) {
        head = substr(line, 1, RSTART)
        rest = substr(line, RSTART + 1)
        sub(/^[ \t]*\/\/[ \t]/, "", rest)
        line = head "  ///< " rest
        trailing = 1
        prev_code = $0
    }
    print line
}
function indent_of(s) { match(s, /^[ \t]*/); return RLENGTH }
' "$1"
