# Filter for Doxygen. The text under an "@name" speaks for the whole group; Doxygen shares the text of a group's first
# member, so the group is opened before the text instead of behind it, in a comment of its own.
/^ *\/\/\/ @name / { print "\n" $0 "\n/// @{"; held = 1; next }
held && /^ *\/\/\/ @\{/ { held = 0; next }
{ print }
