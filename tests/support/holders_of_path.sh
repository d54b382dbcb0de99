#!/bin/sh
# Lists the files below DIRECTORY, text or not, that hold the absolute path PATH; fails if there are none. What merely
# contains it as the end or the beginning of another path is not meant: a tree may lie in /kelcl.
# Usage: holders_of_path.sh PATH DIRECTORY
set -eu
path=$(printf '%s' "$1" | sed 's/[].[\^$*+?(){}|]/\\&/g')
exec grep -rlaE "(^|[^[:alnum:]_./}-])$path(\$|[^[:alnum:]_.-])" "$2"
