#!/bin/sh
# Checks the Debian packages: they hold exactly the files of the committed lists, lintian finds nothing, no path of the
# tree is in them, no page has a dead link, the library's debug information is there, and a host program can be built and run
# with what they unpack to.
# Usage: check.sh DIRECTORY TESTS [--update]
# DIRECTORY holds the packages and nothing older; TESTS is the folder tests/ of the tree.
set -eu

directory=$1
tests=$2
update=${3:-}

root=$directory/root
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
export LC_ALL=C.UTF-8

fail() {
    echo "$*" >&2
    exit 1
}

# contents PACKAGE: what depends on neither the machine, its tools nor the time. Which symbols there are is listed elsewhere.
contents() {
    # shellcheck disable=SC2016 # the fields are filled in by dpkg-deb
    dpkg-deb --show --showformat='${Package} ${Version}, section ${Section}, depends on ${Depends}\n' "$1" |
        sed 's/ (>= [^)]*)//g'
    for control in postinst postrm shlibs symbols triggers; do
        dpkg-deb --info "$1" $control 2>/dev/null | sed "/^ _Z/d; /^#/d; s/^/$control: /"
    done
    # Folders of languages are left out: what lies in them tells enough. What is in _static is the theme's.
    dpkg-deb --contents "$1" |
        sed -E "/^d.*\/(locale|\.build-id)\/./d; /\/html\/_static\/./d; s,^(\S+ \S+) +[0-9]+ \S+ \S+ ,\1 ,
            s,$multiarch,MULTIARCH,g; s,/[0-9a-f]{2}/[0-9a-f]{38}\.debug,/ID.debug,"
}

same=true
for package in libkelcl3 libkelcl-dev libkelcl3-dbgsym libkelcl-doc; do
    file=$(find "$directory" -maxdepth 1 -name "${package}_*.deb")
    [ -f "$file" ] || fail "there is not exactly one package $package in $directory"
    expected=$tests/packages/$package.contents
    if [ "$update" = --update ]; then
        contents "$file" >"$expected"
        echo "$expected: $(wc -l <"$expected") lines"
    elif ! contents "$file" | diff -u "$expected" -; then
        echo "$file does not hold what $expected lists (- missing, + new)." >&2
        echo "If that is intended, write the lists anew with ./dev package --update and commit them." >&2
        same=false
    fi
    dpkg-deb --extract "$file" "$root"
done
$same || exit 1

lintian --fail-on error,warning "$directory"/*.deb || fail "lintian found something; it is above"

if sh "$tests/support/holders_of_path.sh" "$(dirname "$tests")" "$root"; then
    fail "these files hold the path of the tree that they were built in"
fi

python3 -B "$(dirname "$tests")/docs/dead_links.py" "$root/usr/share/doc" || fail "pages have dead links; they are above"

version=$(dpkg-deb --field "$directory"/libkelcl3_*.deb Version)
library=$root/usr/lib/$multiarch/libkelcl.so.${version%-*}
[ -f "$library" ] || fail "the version of the package is $version, that of the library another: see packaging/debian/changelog"
id=$(readelf --notes "$library" | sed -n 's/^ *Build ID: //p')
debug=$root/usr/lib/debug/.build-id/$(printf %.2s "$id")/${id#??}.debug
readelf --sections "$debug" | grep -q '\.debug_info' || fail "$debug has no debug information of $library"

# As in /usr, where compilers look without being told.
flags=$(PKG_CONFIG_LIBDIR="$root/usr/lib/$multiarch/pkgconfig" pkg-config --cflags --libs kelcl)
[ "${flags% }" = -lkelcl ] || fail "kelcl.pc gives '$flags', not -lkelcl alone"

consumer=$directory/consumer
if ! {
    cmake -S "$tests/install/consumer" -B "$consumer" -G Ninja -DCMAKE_PREFIX_PATH="$root/usr" && cmake --build "$consumer"
} >"$consumer.log" 2>&1; then
    cat "$consumer.log" >&2
    fail "the consumer does not build with the packages"
fi
for program in consumer start_up; do
    LD_LIBRARY_PATH=$root/usr/lib/$multiarch NLSPATH="$root/usr/share/locale/%l/LC_MESSAGES/%N" LC_ALL=C \
        "$consumer/$program" >/dev/null || fail "the $program does not run with the packages"
done
