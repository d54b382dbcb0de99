#!/bin/sh
# Tells where the library's code knows a later room: includes one of its headers, or uses a symbol that it defines. Inside
# a room anything may know anything. What cannot go one way is a knot, named below.
# Usage: check_rooms.sh SOURCES OBJECTS ROOM...: the folders with <room>/<source> and <room>/<object>, and the rooms in
# their order. OBJECTS may be -: then what `nm -A -P` prints of such objects is read.
set -eu

# The knots: objects whose symbols earlier rooms may use, each with its reason.
#
# string/self_description.cpp: objects of all rooms say in a DString what they are, and the root classes promise so as
# virtual functions. Their virtual tables name these functions; no other code of an earlier room calls them.
knots='string/self_description.cpp.o'

[ $# -ge 4 ] || {
    echo "usage: check_rooms.sh SOURCES OBJECTS|- ROOM ROOM..." >&2
    exit 2
}
sources=$(cd "$1" && pwd)
objects=$2
shift 2

includes() {
    cd "$sources"
    while [ $# -gt 1 ]; do
        room=$1
        shift
        later=$(echo "$*" | tr ' ' '|')
        grep -rHnE "#include [\"<]($later)/" "$room" || true
    done
}

symbols() {
    if [ "$objects" = - ]; then
        cat
    else
        cd "$objects"
        find . -name '*.o' | sort | while read -r object; do
            # An object without a source is left from an older state of the tree.
            [ ! -f "$sources/${object%.o}" ] || echo "$object"
        done | xargs nm -A -P
    fi
}

# A symbol that is defined weakly (V, W, u: inline functions and what templates make) is in every object that uses it, so
# it belongs to no room; nor do local symbols (small letters), except those that the loader chooses a form for (i).
uses() {
    awk -v rooms="$*" -v knots="$knots" '
        BEGIN {
            count = split(rooms, names)
            for (i = 1; i <= count; ++i) order[names[i]] = i
            count = split(knots, names)
            for (i = 1; i <= count; ++i) isKnot[names[i]] = 1
        }
        {
            object = $1
            sub(/^\.\//, "", object)
            sub(/:$/, "", object)
            room = object
            sub(/\/.*/, "", room)
            place[object] = room in order ? order[room] : 0
            if ($3 ~ /^[ABCDGRSTi]$/) definer[$2] = object
            else if ($3 ~ /^[Uvw]$/) isUsed[object, $2] = 1
        }
        END {
            for (object in place)
                if (place[object] == 0) print object " is in no room"
            for (use in isUsed) {
                split(use, part, SUBSEP)
                if (!(part[2] in definer)) continue
                ++known
                used = definer[part[2]]
                if (place[used] <= place[part[1]]) continue
                if (used in isKnot) isNeeded[used] = 1
                else print part[1] " uses " part[2] " of " used
            }
            for (knot in isKnot)
                if (!(knot in isNeeded)) print "no earlier room needs the knot " knot ": take it out"
            if (known == 0) print "no object uses a symbol of another one: are these the objects of the library?"
        }'
}

found=$(
    includes "$@"
    symbols | uses "$@" | LC_ALL=C sort | c++filt
)
[ -z "$found" ] || {
    printf '%s\n' "$found" "rooms, each of which may know only those before it: $*" >&2
    exit 1
}
