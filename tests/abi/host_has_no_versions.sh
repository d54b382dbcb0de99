#!/bin/sh
# Checks that a host program needs the library, but no version of its symbols.
# Usage: host_has_no_versions.sh READELF HOST
set -eu

readelf=$1
host=$2
export LC_ALL=C

"$readelf" --dynamic "$host" | grep -q 'NEEDED.*\[libkelcl\.so\.3\]' || {
    echo "$host does not need libkelcl.so.3" >&2
    exit 1
}
if "$readelf" --version-info "$host" | grep KELCL; then
    echo "$host asks for a version of the library (above): it was not linked with one without versions" >&2
    exit 1
fi
