#!/bin/sh
# Installs the library and builds and runs a host program against it, as a user would.
# Usage: consume.sh WAY CMAKE CXX GDB SOURCE BUILD WORK
# WAY is one of: add_subdirectory (it installs as well; the others need it), find_package, pkg_config, readme, readme_install,
# debugger, usr.
set -eu

way=$1
cmake=$2
cxx=$3
gdb=$4
source=$5
build=$6
work=$7

prefix=$work/prefix
consumer=$source/tests/install/consumer

fail() {
    echo "$*" >&2
    exit 1
}

# text_of LANGUAGE: what the consumer prints, as the source of the language's catalog has it.
text_of() {
    if [ "$1" = en ]; then file=kelcl.msg; else file=kelcl.$1.msg; fi
    sed -n 's/^1011 "\(.*\)"$/\1/p' "$source/catalog/$file"
}

# expect LANGUAGE LANG NLSPATH PROGRAM: as a user has it whose environment is otherwise empty.
expect() {
    printed=$(env -i LANG="$2" NLSPATH="$3" ${LD_LIBRARY_PATH:+LD_LIBRARY_PATH="$LD_LIBRARY_PATH"} "$4") ||
        fail "$4 fails with LANG=$2 NLSPATH=$3"
    [ "$printed" = "$(text_of "$1")" ] || fail "with LANG=$2 NLSPATH=$3 the text is '$printed', not '$(text_of "$1")'"
}

run() {
    expect en C "$prefix/share/locale/%l/LC_MESSAGES/%N" "$1"
    expect de de_DE.UTF-8 "$prefix/share/locale/%l/LC_MESSAGES/%N" "$1"
}

# compile_with_pkg_config SOURCE PROGRAM
compile_with_pkg_config() {
    PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name kelcl.pc)")
    export PKG_CONFIG_PATH
    version=$(pkg-config --modversion kelcl)
    [ "$version" = 3.10.1 ] || fail "kelcl.pc has version $version"
    # shellcheck disable=SC2046 # flags are several words
    "$cxx" -std=c++17 -Wall -Wextra -Wpedantic -Werror "$1" -o "$2" $(pkg-config --cflags --libs kelcl) \
        "-Wl,-rpath,$(pkg-config --variable=libdir kelcl)"
}

# build_consumer OPTION...: in $work/$way
build_consumer() {
    rm -rf "${work:?}/$way"
    "$cmake" -S "$consumer" -B "$work/$way" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" "$@"
    "$cmake" --build "$work/$way"
}

page=README.md
# block LANGUAGE NUMBER SECTION: that block of $page, counted from the heading SECTION (or the first line) on.
block() {
    awk -v fence="\`\`\`$1" -v number="$2" -v heading="## $3" -v open="$([ -n "$3" ] || echo yes)" '
        $0 == heading { open = "yes" }
        !open { next }
        inside && /^```$/ { exit }
        inside { print; found = 1 }
        $0 == fence && ++seen == number { inside = 1 }
        END { exit !found }' "$source/$page" || fail "$page has no block $2 of $1 after the heading '$3'"
}

# build_as_told PAGE SECTION FIRST: saves the page's program, builds and runs it by the blocks FIRST and FIRST + 1 of commands.
build_as_told() {
    page=$1
    rm -rf "$work/readme"
    mkdir "$work/readme"
    cd "$work/readme"
    block cpp 1 "" >host.cpp
    block text 1 "" >expected
    block cmake 1 "$2" >CMakeLists.txt
    for number in $3 $(($3 + 1)); do
        block sh $number "$2" >commands
        prefix=$prefix CXX=$cxx sh -eu commands >printed
        tail -n "$(wc -l <expected)" printed | diff -u expected - || fail "$page shows another output than its program prints"
    done
}

# find_catalogs_as_told PAGE NUMBER SECTION: that block of commands leads a program to the German catalog.
find_catalogs_as_told() {
    page=$1
    block sh "$2" "$3" >"$work/commands"
    echo 'printf %s "$NLSPATH"' >>"$work/commands"
    expect de de_DE.UTF-8 "$(prefix=$prefix sh -eu "$work/commands")" "$work/readme/consumer"
}

case $way in
add_subdirectory)
    rm -rf "$work"
    build_consumer -DKELCL_SOURCE_DIR="$source" -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE=-O0
    "$cmake" --install "$work/$way" --prefix "$work/elsewhere"
    # Installed in one place, used in another, and the build removed: nothing installed may depend on either.
    mv "$work/elsewhere" "$prefix"
    run "$work/$way/consumer"
    rm -rf "${work:?}/$way"
    for path in "$work" "$source"; do
        if found=$(sh "$source/tests/support/holders_of_path.sh" "$path" "$prefix"); then
            fail "these installed files hold the path $path: $found"
        fi
    done
    ;;
find_package)
    build_consumer -DCMAKE_PREFIX_PATH="$prefix"
    run "$work/$way/consumer"
    ;;
pkg_config)
    compile_with_pkg_config "$consumer/main.cpp" "$work/pkg_config_consumer"
    run "$work/pkg_config_consumer"
    ;;
readme)
    # What README and guide say is done as it stands there.
    build_as_told README.md "Install and use" 2
    build_as_told docs/guide/first-program.md "Build it" 1
    compile_with_pkg_config "$consumer/main.cpp" "$work/readme/consumer"
    find_catalogs_as_told README.md 1 "What the environment decides"
    find_catalogs_as_told docs/guide/catalogs.md 1 ""
    # Those six, what readme_install runs, and two with nothing but verbs of ./dev.
    blocks=$(cd "$source" && grep -rc '^```sh$' README.md docs --include='*.md' | awk -F : '{ sum += $2 } END { print sum }')
    [ "$blocks" -eq 9 ] || fail "README and guide have $blocks blocks of commands, of which 9 are run: run the others here too"
    ;;
readme_install)
    # In a copy of the tree, as in a fresh clone.
    rm -rf "$work/clone"
    mkdir "$work/clone"
    (cd "$source" && tar -c --exclude=./build --exclude=./.git .) | tar -x -C "$work/clone"
    cd "$work/clone"
    block sh 1 "Install and use" >"$work/commands"
    HOME=$work/clone CXX=$cxx sh -eu "$work/commands" >"$work/clone.log" 2>&1 || {
        tail -n 40 "$work/clone.log" >&2
        fail "README's commands for building and installing fail; the end of their output is above"
    }
    prefix=$work/clone/kelcl
    compile_with_pkg_config "$consumer/main.cpp" "$work/readme_consumer"
    run "$work/readme_consumer"
    rm -rf "$work/clone"
    ;;
debugger)
    # gdb finds the printers beside the installed library once it trusts that folder.
    compile_with_pkg_config "$consumer/main.cpp" "$work/debugger_consumer"
    "$gdb" -nx -batch -iex "add-auto-load-safe-path $prefix" -iex 'set debuginfod enabled off' \
        -iex 'set disable-randomization off' -ex 'break main' -ex run -ex 'info auto-load python-scripts libkelcl' \
        -ex kill "$work/debugger_consumer" >"$work/debugger.log" 2>&1
    grep "^Yes *$prefix/.*/libkelcl\.so\.3\.10\.1-gdb\.py *$" "$work/debugger.log" || {
        cat "$work/debugger.log" >&2
        fail "gdb did not load the printers; what it says is above"
    }
    ;;
usr)
    # Under /usr the catalogs must be where the C library looks without NLSPATH. Its own list of places is in its file; here
    # each of them is taken below a scratch root.
    compile_with_pkg_config "$consumer/main.cpp" "$work/usr_consumer"
    rm -rf "$work/staged"
    DESTDIR=$work/staged "$cmake" --install "$build" --prefix /usr >"$work/usr.log"
    libc=$(ldd "$work/usr_consumer" | sed -n 's/.* => \(.*\/libc\.so\.[0-9]*\) .*/\1/p')
    places=$(tr '\0' '\n' <"$libc" | sed -n '/^\/usr\/share\/locale\/%L\/%N:/{p;q}')
    [ -n "$places" ] || fail "$libc does not say where it looks for message catalogs"
    below_root=$(printf '%s' "$places" | sed "s,^/,$work/staged/,; s,:/,:$work/staged/,g")
    for language in de es fr ja en; do
        expect $language $language "$below_root" "$work/usr_consumer"
        expect $language "${language}_XX.UTF-8" "$below_root" "$work/usr_consumer"
    done
    for lang in '' C POSIX C.UTF-8; do
        expect en "$lang" "$below_root" "$work/usr_consumer"
    done
    find "$work/staged/usr/share/gdb/auto-load/usr" -name 'libkelcl.so.3.10.1-gdb.py' | grep . ||
        fail "the printers are not where gdb looks for those of a library under /usr"
    ;;
*)
    fail "there is no way '$way' of consuming the library"
    ;;
esac
