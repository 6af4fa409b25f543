# Filter for Doxygen. The text under an "@name", or else the name itself, speaks for every member of the group that has
# no comment of its own: it is put in front of each of them.
function braces(line,   code) {
    code = line
    gsub(/'[{}]'|"[^"]*"/, "", code)
    return gsub(/{/, "", code) - gsub(/}/, "", code)
}

/^ *\/\/\/ @name / {
    print "\n" $0 "\n/// @{"
    text = $0
    sub(/^ *\/\/\/ @name +/, "", text)
    text = text "."
    opening = 1
    described = 0
    next
}
opening && /^ *\/\/\/ @\{/ { opening = 0; grouped = 1; documented = 0; fresh = 1; depth = 0; next }
opening {
    line = $0
    sub(/^ *\/\/\/ */, "", line)
    text = described ? text " " line : line
    described = 1
    next
}
grouped && /^ *\/\/\/ @\}/ { grouped = 0 }
grouped {
    if (/^ *\/\//) { if (/^ *\/\/\//) documented = 1; print; next }
    if (/^ *$/ || /^ *#/) { print; next }
    if (fresh && depth == 0 && !documented) print "/// " text
    documented = 0
    depth += braces($0)
    fresh = depth == 0 && /[;}]( *\/\/.*)?$/
    print
    next
}
{ print }
