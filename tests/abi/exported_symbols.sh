#!/bin/sh
# Compares what the shared library exports with the committed list.
# Usage: exported_symbols.sh LIBRARY LIST [--update]
set -eu

library=$1
list=$2
export LC_ALL=C

[ -f "$library" ] || {
    echo "there is no library $library: build it first" >&2
    exit 2
}

# T, D, B, R: code and data; V, W, u: weak (virtual tables, type information, implicit members); A: a version. Addresses are
# left out, and the two or three variants of a constructor have one name.
exported() {
    nm -D --defined-only -C "$library" | sed -E 's/^[0-9a-f]+ //' | sort -u
}

if unversioned=$(exported | grep -v -e '@@KELCL_' -e '^A KELCL_'); then
    echo "$library exports symbols without a version: $unversioned" >&2
    echo "Give them one in cmake/kelcl.map." >&2
    exit 1
fi

if [ "${3:-}" = --update ]; then
    exported >"$list"
    echo "$list: $(wc -l <"$list") symbols"
    exit 0
fi

[ -f "$list" ] || {
    echo "there is no list $list: write it with ./dev abi --update" >&2
    exit 2
}
if exported | diff -u "$list" -; then
    exit 0
fi
echo "The exported symbols are not those of $list (- missing, + new)." >&2
echo "If that is intended, write the list anew with ./dev abi --update and commit it; if not, see CONTRIBUTING.md." >&2
exit 1
