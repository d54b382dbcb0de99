#!/bin/sh
# Prints a header as Doxygen is to see it.
# Usage: read_header.sh HEADER
here=$(dirname "$0")
sed -E -f "$here/signatures.sed" "$1" | awk -f "$here/constructors.awk"
