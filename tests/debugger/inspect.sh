#!/bin/sh
# Lets gdb print the objects of debuggee.cpp and compares with inspect.expected.
# Usage: inspect.sh running|core GDB DEBUGGEE LIBRARY_DIRECTORY WORK
# `running` starts the program, and in a UTF-8 locale leaves WORK/core for `core`.
set -eu

way=$1
gdb=$2
debuggee=$3
library_directory=$4
work=$5

here=$(dirname "$0")
output=$work/$way.$LC_ALL
mkdir -p "$work"

# in_gdb ARGUMENT...: gdb as a user has it who trusts the library's folder, without that user's own settings.
in_gdb() {
    "$gdb" -nx -batch -iex "add-auto-load-safe-path $library_directory" \
        -iex 'set debuginfod enabled off' -iex 'set width 0' -iex 'set disable-randomization off' "$@" "$debuggee"
}

case $way in
running)
    save=
    [ "$LC_ALL" = C ] || save="generate-core-file $work/core"
    in_gdb -ex 'break inspect' -ex run -ex "source $here/inspect.gdb" -ex "$save" -ex kill >"$output.log" 2>&1
    ;;
core)
    in_gdb -ex "core-file $work/core" -ex "source $here/inspect.gdb" >"$output.log" 2>&1
    ;;
*)
    echo "there is no way '$way' of looking at a program" >&2
    exit 2
    ;;
esac || {
    cat "$output.log" >&2
    echo "gdb failed; its messages are above. It must be allowed to trace processes." >&2
    exit 1
}

# Addresses of objects differ from run to run; those that were made up have few digits.
sed -n 's/0x[0-9a-f]\{8,\}/ADDRESS/g; s/^\$[0-9]* = //p' "$output.log" >"$output.txt"
if [ "$LC_ALL" = C ]; then
    sed 's/DDBCSBuffer/DBuffer/; s/ä日/\\303\\244\\346\\227\\245/' "$here/inspect.expected" >"$output.expected"
else
    cp "$here/inspect.expected" "$output.expected"
fi
diff -u "$output.expected" "$output.txt" || {
    echo "gdb shows other things than expected; all it said is in $output.log" >&2
    exit 1
}
