#!/bin/sh
# Installs the library into a scratch prefix and builds and runs a host program against it, as a user would.
# Usage: consume.sh WAY CMAKE CXX SOURCE BUILD WORK
# WAY is one of: prefix (installs; the others need it), find_package, pkg_config, add_subdirectory, readme.
set -eu

way=$1
cmake=$2
cxx=$3
source=$4
build=$5
work=$6

prefix=$work/prefix
consumer=$source/tests/install/consumer

fail() {
    echo "$*" >&2
    exit 1
}

# run PROGRAM: as users of two languages would have it. Their texts must come from the two installed catalogs.
run() {
    english=$(LANG=C NLSPATH="$prefix/share/locale/%l/LC_MESSAGES/%N" "$@")
    german=$(LANG=de_DE.UTF-8 NLSPATH="$prefix/share/locale/%l/LC_MESSAGES/%N" "$@")
    echo "$english / $german"
    [ "$english" != "$german" ] || fail "the language makes no difference to the messages"
}

compile_with_pkg_config() {
    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name kelcl.pc)")
    export PKG_CONFIG_PATH
    version=$(pkg-config --modversion kelcl)
    [ "$version" = 3.10.1 ] || fail "kelcl.pc has version $version"
    # shellcheck disable=SC2046 # flags are several words
    "$cxx" -std=c++17 -Wall -Wextra -Wpedantic -Werror "$1" -o "$2" $(pkg-config --cflags --libs kelcl) \
        "-Wl,-rpath,$(pkg-config --variable=libdir kelcl)"
}

configure_and_run() {
    rm -rf "$work/$way"
    "$cmake" -S "$consumer" -B "$work/$way" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" "$@"
    "$cmake" --build "$work/$way"
    run "$work/$way/consumer"
}

# block LANGUAGE NUMBER SECTION: that block of the README, counted from the heading SECTION (or the first line) on.
block() {
    awk -v fence="\`\`\`$1" -v number="$2" -v heading="## $3" -v open="$([ -n "$3" ] || echo yes)" '
        $0 == heading { open = "yes" }
        !open { next }
        inside && /^```$/ { exit }
        inside { print }
        $0 == fence && ++seen == number { inside = 1 }' "$source/README.md"
}

case $way in
prefix)
    # Installed in one place, used in another: nothing in it may depend on where it was installed.
    rm -rf "$work"
    mkdir -p "$work"
    "$cmake" --install "$build" --prefix "$work/elsewhere"
    mv "$work/elsewhere" "$prefix"
    ;;
find_package)
    configure_and_run -DCMAKE_PREFIX_PATH="$prefix"
    ;;
pkg_config)
    compile_with_pkg_config "$consumer/main.cpp" "$work/pkg_config_consumer"
    run "$work/pkg_config_consumer"
    ;;
add_subdirectory)
    configure_and_run -DKELCL_SOURCE_DIR="$source"
    ;;
readme)
    # What the README says under "Install and use" is done as it stands there, its first block (building and installing)
    # apart. The program and what it prints are the first blocks of their languages.
    rm -rf "$work/readme"
    mkdir "$work/readme"
    cd "$work/readme"
    block cpp 1 "" >host.cpp
    block text 1 "" >expected
    block cmake 1 "Install and use" >CMakeLists.txt
    for number in 2 3; do
        block sh $number "Install and use" >commands
        [ -s commands ] || fail "README.md has no block $number of commands"
        prefix=$prefix CXX=$cxx sh -eu commands >printed
        tail -n "$(wc -l <expected)" printed | diff -u expected - || fail "README.md shows another output than its program prints"
    done
    ;;
*)
    fail "there is no way '$way' of consuming the library"
    ;;
esac
