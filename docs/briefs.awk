# Reads Doxygen's XML and fails if something public or protected has no brief of its own: a header, a class, a member, an
# enumerator, a function, a macro. Doxygen's own warnings leave out headers, enumerators and defaulted functions.
function content(line) {
    gsub(/^ *<[^>]*>|<[^>]*>$/, "", line)
    gsub(/&lt;/, "<", line)
    gsub(/&gt;/, ">", line)
    gsub(/&amp;/, "\\&", line)
    return line
}

/<(compounddef|memberdef) / { is_private = /prot="private"/ }
/<compoundname>/ { compound = content($0); name = "" }
/^        <name>/ { member = name = content($0) }
/^          <name>/ { name = content($0) }
/<\/enumvalue>/ { name = member }
/<\/memberdef>/ { name = ""; is_private = 0 }

# A namespace is described by none of those who add to it.
/<briefdescription>$/ && !is_private && !(name == "" && FILENAME ~ /\/namespace[^\/]*$/) {
    getline
    if (/<\/briefdescription>/) missing[++count] = name == "" ? compound : compound "::" name
}

# The location follows the description; that of an enumerator is its enumeration's.
/<location file=/ {
    split($0, part, "\"")
    place = part[2] (part[3] ~ /line=/ ? ":" part[4] : "")
    while (reported < count)
        print place ": " missing[++reported] " has no brief of its own" > "/dev/stderr"
}

# A heading in a comment: write a paragraph that begins with **its words.**
/<sect[1-4] / {
    print FILENAME ": a comment has a heading, and what follows it would be left out" > "/dev/stderr"
    has_heading = 1
}

END { exit count > 0 || has_heading }
