#!/bin/sh
# What ./dev demo shows of a build: one line, or the messages of a build that fails. The commands that it starts are
# replaced by ones that print what ninja would.
# Usage: demo.sh DEV PRESETS WORK
set -eu

work=$3
rm -rf "$work"
mkdir -p "$work/tree/examples/data" "$work/commands" "$work/tree/build/release/examples"
cp "$1" "$2" "$work/tree/"
tree=$work/tree

fake() {
    printf '#!/bin/sh\n%s\n' "$2" >"$work/commands/$1"
    chmod +x "$work/commands/$1"
}
for name in ninja g++; do
    fake $name :
done
# shellcheck disable=SC2016 # the dollar signs are those of the commands
fake cmake 'case $1 in --build) cat "$STEPS"; exit "$BUILD_STATUS" ;; esac'
for name in tour demo; do
    printf '#!/bin/sh\necho %s "$@"\nexit 2\n' $name >"$tree/build/release/examples/$name"
    chmod +x "$tree/build/release/examples/$name"
done
export PATH="$work/commands:$PATH"

failures=0
# prints STATUS EXPECTED ARGUMENT...: what ./dev demo prints, both streams in one, with its folder as TREE.
prints() {
    status=$1
    expected=$2
    shift 2
    printed=$(sh "$tree/dev" demo "$@" 2>&1) && actual=0 || actual=$?
    printed=$(printf '%s\n' "$printed" | sed "s|$tree|TREE|g")
    [ "$actual $printed" = "$status $expected" ] || {
        printf 'wanted:  %s %s\nprinted: %s %s\n' "$status" "$expected" "$actual" "$printed"
        failures=$((failures + 1))
    }
}

export STEPS="$work/steps" BUILD_STATUS=0
cat >"$STEPS" <<'END'
[0/2] Re-checking globbed directories...
[1/3] Building CXX object a.o
a.cpp:1: warning: which nobody needs to see
[2/3] Building CXX object b.o
[3/3] Linking CXX executable examples/tour
END
prints 2 'dev: building the library and the demo in 3 steps
tour TREE/examples/data/journal.txt'
prints 2 'dev: building the library and the demo in 3 steps
demo text.txt *x*' text.txt '*x*'

echo 'ninja: no work to do.' >"$STEPS"
prints 2 'tour TREE/examples/data/journal.txt'

export BUILD_STATUS=1
cat >"$STEPS" <<'END'
[1/2] Building CXX object a.o
FAILED: a.o
c++ -c a.cpp
a.cpp:1: error: which everybody needs to see
[2/2] Building CXX object b.o
ninja: build stopped: subcommand failed.
END
prints 2 'dev: building the library and the demo in 2 steps
FAILED: a.o
c++ -c a.cpp
a.cpp:1: error: which everybody needs to see
ninja: build stopped: subcommand failed.
dev: the build failed; its messages are above. Fix what the first of them names, then run this again.'

echo 'CMake Error: which comes before any step' >"$STEPS"
prints 2 'CMake Error: which comes before any step
dev: the build failed; its messages are above. Fix what the first of them names, then run this again.'
[ $failures -eq 0 ]
