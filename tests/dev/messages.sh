#!/bin/sh
# Every refusal of ./dev is one line that tells what to do next, and status 2. What the verbs do is not tested here.
# Usage: messages.sh DEV WORK
set -eu

dev=$1
work=$2
failures=0

# refuses MESSAGE ARGUMENT...: the message is told, or what begins with it.
refuses() {
    expected="dev: $1"
    shift
    status=0
    printed=$(sh "$dev" "$@" 2>&1) || status=$?
    case $status$printed in
    "2$expected"*) ;;
    *)
        printf './dev %s\n  wanted:  2 %s\n  printed: %s %s\n' "$*" "$expected" $status "$printed"
        failures=$((failures + 1))
        ;;
    esac
}

# A folder of commands in which there are neither compilers nor packages.
rm -rf "$work"
mkdir -p "$work"
for command in sh dirname cat env find grep mkdir sed sort tr; do
    ln -s "$(command -v $command)" "$work/$command"
done

refuses "there is no verb 'tset'. ./dev help lists them." tset
refuses "demo takes a file and a pattern at most: ./dev demo [FILE [PATTERN]]" demo a b c
refuses "abi takes --update or nothing: ./dev abi [--update]" abi --upgrade
refuses "package takes --update or nothing: ./dev package [--update]" package all
refuses "fuzz takes a number of seconds, then the name of a target: ./dev fuzz 600 trace" fuzz long
refuses "cross takes a machine, aarch64, s390x or nehalem, then arguments for ctest: ./dev cross aarch64 -R string" cross vax
refuses "docs takes --update or nothing: ./dev docs [--update]" docs --open
refuses "setup takes no arguments: ./dev setup" setup all
(
    export KELCL_PRESET=fast
    refuses "there is no preset 'fast'. KELCL_PRESET is one of: " demo
    exit $failures
) || failures=$((failures + 1))
case $(PATH=$work sh "$dev" format 2>&1) in
"dev: not a Debian system: assuming that what Debian calls clang-format is installed"*) ;;
*) echo "where there are no packages, ./dev does not say what it needs" && failures=$((failures + 1)) ;;
esac

# A Debian that has one package, once had another, and does not know the rest.
cat >"$work/dpkg-query" <<'END'
#!/bin/sh
printf '%s\n' 'clang installed' 'clang-format config-files'
exit 1
END
printf '#!/bin/sh\necho 1000\n' >"$work/id"
chmod +x "$work/dpkg-query" "$work/id"
printf '#!/bin/sh\n' >"$work/apt-get"
chmod +x "$work/apt-get"
(
    export PATH="$work"
    refuses "these packages are missing: clang-format. Run 'apt-get install clang-format' as root, then run this again." format
    printf '#!/bin/sh\necho 0\n' >"$work/id"
    printf '#!/bin/sh\n[ "$2" = update ] || { echo "$*" >>"%s/asked"; exit 100; }\n' "$work" >"$work/apt-get"
    refuses "installing missing packages: clang-format
dev: apt-get could not install: clang-format. Its message is above; install them by hand, then run this again." format
    refuses "installing missing packages: cmake ninja-build" fuzz 1
    exit $failures
) || failures=$((failures + 1))
grep -q 'install .*cmake ninja-build libclang-rt-14-dev locales libgtest-dev$' "$work/asked" || {
    echo "apt-get is not asked for the missing packages alone:" && cat "$work/asked"
    failures=$((failures + 1))
}

# The self-check: a wrong expectation is found.
if (refuses "something else" tset) | grep -q "wanted"; then :; else
    echo "this test cannot fail"
    failures=$((failures + 1))
fi

# shellcheck disable=SC2016 # the dollar sign is one of the script's
for verb in $(sed -n 's/^demo | \(.*\)) "\$verb".*/demo | \1/p' "$dev" | tr '|' ' ') test; do
    sh "$dev" help | grep -q "^  $verb" || {
        echo "./dev help does not tell of $verb"
        failures=$((failures + 1))
    }
done
[ $failures -eq 0 ]
