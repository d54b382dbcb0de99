#!/bin/sh
# Compares the binary interface that the library's debug information tells of (types, their sizes and offsets, virtual
# tables, signatures) with the committed one. exported_symbols.sh compares the plain symbols of a build without it.
# Usage: interface.sh LIBRARY HEADERS BASELINE [--update]
set -eu

library=$1
headers=$2
baseline=$3

[ -f "$library" ] || {
    echo "there is no library $library: build it first" >&2
    exit 2
}

# Only what hosts see: types of other headers than the public ones, places in the sources and names of parameters are
# left out, so that the result does not depend on where and from which internal code the library was built.
interface() {
    abidw --headers-dir "$headers" --drop-private-types --exported-interfaces-only --type-id-style hash \
        --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed --no-architecture \
        --out-file "$1" "$library"
    grep -q "<class-decl name='DString'" "$1" || {
        echo "$library has no debug information: compile it with -g, as ./dev abi does" >&2
        exit 2
    }
}

if [ "${4:-}" = --update ]; then
    interface "$baseline"
    echo "$baseline: $(wc -l <"$baseline") lines"
    exit 0
fi

[ -f "$baseline" ] || {
    echo "there is no baseline $baseline: write it with ./dev abi --update" >&2
    exit 2
}
now=$(mktemp)
trap 'rm -f "$now"' EXIT
interface "$now"
if abidiff --no-architecture "$baseline" "$now"; then
    exit 0
fi
echo "The binary interface is not that of $baseline." >&2
echo "If that is intended, write it anew with ./dev abi --update and commit it; if not, see CONTRIBUTING.md." >&2
exit 1
