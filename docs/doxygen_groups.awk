# Filter for Doxygen, so that headers need no comments that only repeat a name.
#
# A member of a group without a comment of its own gets the text under "@name", or else the name itself. Outside of
# groups, constructors, the operators of value types, plain accessors and plain fields get a short standard text.
function braces(line,   code) {
    code = line
    gsub(/'[{}]'|"[^"]*"/, "", code)
    return gsub(/{/, "", code) - gsub(/}/, "", code)
}
function implied(line) {
    if (grouped) return text
    if (line ~ /^ +(virtual |static |constexpr |explicit )*[A-Za-z_][A-Za-z_0-9:<>, *&]* [*&]*(Get|Set|Is|Contains|Has)[A-Z][A-Za-z0-9]*\(/ &&
        line !~ /^ +(return|else|throw) /) return "Accessor."
    if (line ~ /^ +(virtual )?~[A-Za-z0-9]+\(/) return "Destructor."
    if (line ~ /^ +[A-Za-z0-9]+ &operator=\(/) return "Assignment."
    if (line ~ /^ +([A-Z][A-Za-z0-9]*)\(([A-Z][A-Za-z0-9]*) const &[a-z]*\)/) return "Copy."
    if (line ~ /^ +([A-Z][A-Za-z0-9]*)\(\)( = default)?;/) return "Default state."
    if (line ~ /^ +(constexpr |friend |bool )*(bool )?operator[!=]=\(/) return "Comparison."
    if (line ~ /^ +(constexpr |explicit )*[A-Za-z][A-Za-z0-9_]*\(/ && line !~ /^ +(return|if|while|for|switch) /)
        return "Constructor."
    if (line ~ /^ +(static |constexpr )*[A-Za-z_][A-Za-z0-9_:<>, *]* [*]*[A-Za-z0-9_]+(\[[0-9A-Za-z_]*\])?( = [^;()]*)?;/ &&
        line !~ /^ +(return|using|typedef|friend|class|struct|enum) /) return "Field."
    return ""
}

/^ *\/\/\/ @name / {
    print "\n" $0 "\n/// @{\n"
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
/^ *\/\/\/ @\}/ { grouped = 0; documented = 0; fresh = 1; print; next }
/^ *\/\// { if (/^ *\/\/\//) documented = 1; print; next }
/^ *$/ || /^ *#/ { print; next }
{
    own = fresh && !documented && (!grouped || depth == 0) ? implied($0) : ""
    if (own != "") print "/// " own
    if (grouped) depth += braces($0)
    fresh = (!grouped || depth == 0) && /[;}{:]( *\/\/.*)?$/
    documented = 0
    print
}
