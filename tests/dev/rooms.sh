#!/bin/sh
# The check of the rooms finds what knows a later room, and nothing else: made-up lists of symbols, and headers.
# Usage: rooms.sh CHECK WORK
set -eu

check=$1
work=$2
failures=0
rm -rf "$work"
mkdir -p "$work/first" "$work/second" "$work/string"

# says STATUS MESSAGE: what the check says of the symbols on standard input, or what begins with it.
says() {
    status=0
    printed=$(sh "$check" "$work" - first second string 2>&1) || status=$?
    case $status$printed in
    "$1$2"*) ;;
    *)
        printf '  wanted:  %s %s\n  printed: %s %s\n' "$1" "$2" "$status" "$printed"
        failures=$((failures + 1))
        ;;
    esac
}

# Every list has the one knot that the check knows, which would be missed.
knot='./string/self_description.cpp.o: say T 0 8
./first/root.cpp.o: say U'

says 0 '' <<END
$knot
./first/a.cpp.o: low T 0 8
./second/b.cpp.o: low U
./second/b.cpp.o: beside U
./second/c.cpp.o: beside D 0 8
./second/c.cpp.o: malloc U
END
says 1 'first/a.cpp.o uses high of second/b.cpp.o' <<END
$knot
./first/a.cpp.o: high U
./second/b.cpp.o: high T 0 8
END
says 1 'first/a.cpp.o uses table of second/b.cpp.o' <<END
$knot
./first/a.cpp.o: table U
./second/b.cpp.o: table R 0 8
END
says 1 'first/a.cpp.o uses chosen of second/b.cpp.o' <<END
$knot
./first/a.cpp.o: chosen U
./second/b.cpp.o: chosen i 0 8
END
says 0 '' <<END
$knot
./first/a.cpp.o: inlined W 0 8
./second/b.cpp.o: inlined W 0 8
./first/a.cpp.o: local U
./second/b.cpp.o: local t 0 8
END
says 1 'second/b.cpp.o uses text of string/dstring.cpp.o' <<END
$knot
./second/b.cpp.o: text U
./string/dstring.cpp.o: text T 0 8
END
says 1 'elsewhere/a.cpp.o is in no room' <<END
$knot
./elsewhere/a.cpp.o: any T 0 8
END
says 1 'no earlier room needs the knot string/self_description.cpp.o: take it out' <<END
./first/a.cpp.o: low T 0 8
./second/b.cpp.o: low U
END
says 1 'no earlier room needs the knot' </dev/null

echo '#include "first/a.h"' >"$work/second/b.h"
says 0 '' <<END
$knot
END
echo '#include "second/b.h"' >"$work/first/a.h"
says 1 'first/a.h:1:#include "second/b.h"' <<END
$knot
END
rm "$work/first/a.h"

# Of a folder of objects only those are read whose sources are there. Two that are no objects tell which were looked at.
mkdir -p "$work/objects/first"
echo >"$work/objects/first/there.cpp.o"
echo >"$work/objects/first/gone.cpp.o"
echo >"$work/first/there.cpp"
printed=$(sh "$check" "$work" "$work/objects" first second string 2>&1) || true
case $printed in
*gone.cpp.o*) echo "an object without a source is read" && failures=$((failures + 1)) ;;
*there.cpp.o*) ;;
*) echo "an object with a source is not read: $printed" && failures=$((failures + 1)) ;;
esac
[ $failures -eq 0 ]
