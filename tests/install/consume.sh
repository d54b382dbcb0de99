#!/bin/sh
# Installs the library and builds and runs a host program against it, as a user would.
# Usage: consume.sh WAY CMAKE CXX GDB SOURCE BUILD WORK
# WAY is one of: install (the others need it), find_package, pkg_config, readme, readme_install, debugger, usr, subproject,
# static.
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

# expect LANGUAGE LOCALE NLSPATH PROGRAM: as a user has it whose environment is otherwise empty. LOCALE is one variable, for
# example LANG=de_DE.UTF-8.
expect() {
    printed=$(env -i "$2" NLSPATH="$3" ${LD_LIBRARY_PATH:+LD_LIBRARY_PATH="$LD_LIBRARY_PATH"} "$4") ||
        fail "$4 fails with $2 NLSPATH=$3"
    [ "$printed" = "$(text_of "$1")" ] || fail "with $2 NLSPATH=$3 the text is '$printed', not '$(text_of "$1")'"
}

# expect_english_elsewhere NLSPATH PROGRAM: in languages that have no catalog. The C library asks LANG for the language; who
# sets only LC_ALL has none, so gets English in all languages.
expect_english_elsewhere() {
    for locale in LANG=pt_BR.UTF-8 LANG=it_IT.UTF-8 LANG=zh_CN.GB18030 LANG=sr_RS@latin LANG=eo \
        LC_ALL=pt_BR.UTF-8 LC_ALL=zh_CN.UTF-8 LC_ALL=de_DE.UTF-8 LANG= LANG=C LANG=POSIX LANG=C.UTF-8; do
        expect en $locale "$1" "$2"
    done
}

# run PROGRAM: in all languages, with the NLSPATH that README and guide tell.
run() {
    for told in 'README.md:What the environment decides' docs/guide/catalogs.md:; do
        page=${told%%:*}
        block sh 1 "${told#*:}" >"$work/commands"
        echo 'printf %s "$NLSPATH"' >>"$work/commands"
        nlspath=$(prefix=$prefix sh -eu "$work/commands")
        for language in de es fr ja en; do
            expect $language LANG=$language "$nlspath" "$1"
            expect $language LANG=${language}_XX.UTF-8 "$nlspath" "$1"
        done
        expect_english_elsewhere "$nlspath" "$1"
        expect en LANG=xx_XX "$nlspath" "$1"
    done
    page=README.md
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

# configure_consumer FOLDER OPTION...
configure_consumer() {
    folder=$1
    shift
    rm -rf "${folder:?}"
    "$cmake" -S "$consumer" -B "$folder" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" "$@"
}

# build_consumer FOLDER OPTION...: and runs what it built.
build_consumer() {
    configure_consumer "$@"
    "$cmake" --build "$1"
    run "$1/consumer"
    "$1/start_up" || fail "a host's static object does not find the library as it should; see above"
}

# holds_no_path DIRECTORY PATH...
holds_no_path() {
    directory=$1
    shift
    for path in "$@"; do
        if found=$(sh "$source/tests/support/holders_of_path.sh" "$path" "$directory"); then
            fail "these installed files hold the path $path: $found"
        fi
    done
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

# program_of_page SECTION CMAKE_BLOCK: lays the program of $page and that of its CMakeLists.txt under SECTION into the current
# folder, and what the program prints as the file expected. They are the first blocks of their languages.
program_of_page() {
    block cpp 1 "" >host.cpp
    block text 1 "" >expected
    block cmake "$2" "$1" >CMakeLists.txt
}

# build_as_told PAGE SECTION FIRST: saves the page's program, builds and runs it by the blocks FIRST and FIRST + 1 of commands.
build_as_told() {
    page=$1
    rm -rf "$work/readme"
    mkdir "$work/readme"
    cd "$work/readme"
    program_of_page "$2" 1
    for number in $3 $(($3 + 1)); do
        block sh $number "$2" >commands
        prefix=$prefix CXX=$cxx sh -eu commands >printed
        tail -n "$(wc -l <expected)" printed | diff -u expected - || fail "$page shows another output than its program prints"
    done
}

case $way in
install)
    rm -rf "$work"
    # Installed in one place, used in another: nothing installed may depend on either, nor on the build. Only the debug
    # information of a debug build tells where it was built.
    "$cmake" --install "$build" --prefix "$work/elsewhere" --strip >"$build/test-work/install.log"
    mv "$work/elsewhere" "$prefix"
    holds_no_path "$prefix" "$work" "$source"
    ;;
find_package)
    build_consumer "$work/$way" -DCMAKE_PREFIX_PATH="$prefix"
    ;;
pkg_config)
    compile_with_pkg_config "$consumer/main.cpp" "$work/pkg_config_consumer"
    run "$work/pkg_config_consumer"
    ;;
readme)
    # What README and guide say is done as it stands there.
    build_as_told README.md "Install and use" 2
    build_as_told docs/guide/first-program.md "Build it" 1
    # Those four, two that tell NLSPATH (run does these), what readme_install runs, and two with nothing but verbs of ./dev.
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
        expect $language LANG=$language "$below_root" "$work/usr_consumer"
        expect $language LANG=${language}_XX.UTF-8 "$below_root" "$work/usr_consumer"
    done
    expect_english_elsewhere "$below_root" "$work/usr_consumer"
    # Every other language that the C library has a locale of. A language that it does not know finds nothing.
    sed 's/[_.@ ].*//' /usr/share/i18n/SUPPORTED | grep -v '^#' | sort -u >"$work/languages"
    [ "$(wc -l <"$work/languages")" -gt 150 ] || fail "/usr/share/i18n/SUPPORTED does not list the locales"
    while read -r language; do
        case $language in
        de | es | fr | ja) ;;
        *) expect en LANG="$language" "$below_root" "$work/usr_consumer" ;;
        esac
    done <"$work/languages"
    if env -i LANG=xx NLSPATH="$below_root" "$work/usr_consumer" >"$work/usr_unknown"; then
        fail "in a language that nobody knows there is a catalog as well: $(cat "$work/usr_unknown")"
    fi
    find "$work/staged/usr/share/gdb/auto-load/usr" -name 'libkelcl.so.3.10.1-gdb.py' | grep . ||
        fail "the printers are not where gdb looks for those of a library under /usr"
    # What can be installed can be taken away again.
    DESTDIR=$work/staged "$cmake" --build "$build" --target uninstall >"$work/uninstall.log"
    left=$(find "$work/staged" ! -type d -o -name kelcl)
    [ -z "$left" ] || fail "after uninstall these are left: $left"
    if "$cmake" --build "$build" --target uninstall >"$work/uninstall.log"; then
        fail "uninstall finds something to remove when nothing is installed"
    fi
    grep -q 'There is no .*install_manifest.txt' "$work/uninstall.log" || fail "uninstall does not say that nothing is installed"
    ;;
subproject)
    # A part of a host's project, which is neither installed with it nor left without optimising.
    configure_consumer "$work/subproject" -DKELCL_SOURCE_DIR="$source" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
    "$cmake" --install "$work/subproject" --prefix "$work/nothing"
    [ ! -e "$work/nothing" ] || fail "a part of a project is installed without being asked for: $(find "$work/nothing" -type f)"
    optimises() { grep 'command.*base/start_up\.cpp\.o -c' "$work/subproject/compile_commands.json" | grep -o ' -O[^ ]*' | tr -d '\n'; }
    [ "$(optimises)" = " -O2" ] || fail "without a build type the library is compiled with '$(optimises)'"
    configure_consumer "$work/subproject" -DKELCL_SOURCE_DIR="$source" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_CXX_FLAGS=-O0
    [ "$(optimises)" = " -O0" ] || fail "where the host says -O0 the library is compiled with '$(optimises)'"
    configure_consumer "$work/subproject" -DKELCL_SOURCE_DIR="$source" -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_BUILD_TYPE=Debug
    [ "$(optimises)" = "" ] || fail "in a debug build the library is compiled with '$(optimises)'"
    ;;
static)
    # The library as an archive: built by the project that README fetches it with, then installed and found.
    rm -rf "$work/static"
    mkdir "$work/static"
    cd "$work/static"
    program_of_page "Install and use" 2
    "$cmake" -G Ninja -B build -DCMAKE_CXX_COMPILER="$cxx" -DFETCHCONTENT_SOURCE_DIR_KELCL="$source" -DBUILD_SHARED_LIBS=OFF \
        -DKELCL_INSTALL=ON -DCMAKE_CXX_FLAGS=-O0
    "$cmake" --build build
    build/host | diff -u expected - || fail "README.md shows another output than its program prints"
    "$cmake" --install build --prefix "$work/static/elsewhere"
    mv elsewhere prefix
    holds_no_path prefix "$work" "$source"
    prefix=$work/static/prefix
    build_consumer "$work/static/consumer" -DCMAKE_PREFIX_PATH="$prefix"
    compile_with_pkg_config "$consumer/start_up.cpp" "$work/static/start_up"
    "$work/static/start_up" || fail "a host's static object does not find the library as it should; see above"
    if "$cmake" -E env LC_ALL=C ldd "$work/static/start_up" | grep kelcl; then
        fail "what was linked with the archive needs a shared library"
    fi
    ;;
*)
    fail "there is no way '$way' of consuming the library"
    ;;
esac
