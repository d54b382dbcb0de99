# What Doxygen needs to show a page as hosting sites do: headings get the identifiers that links use there, and a percent
# sign before a letter, which Doxygen takes for its own, is doubled.
/^```/ { in_block = !in_block }
!in_block && /^##+ / {
    identifier = $0
    sub(/^#+ /, "", identifier)
    identifier = tolower(identifier)
    gsub(/[^a-z0-9 -]/, "", identifier)
    gsub(/ /, "-", identifier)
    $0 = $0 " {#" identifier "}"
}
!in_block { gsub(/%[A-Za-z]/, "%&") }
{ print }
