#!/bin/bash
# What packaging/install-missing.sh does to a system, on a system made of stand-ins.
#   install_missing.sh TOP
set -u
top=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

stand_in() {
    printf '#!/bin/bash\n%s\n' "$2" >"$work/bin/$1"
    chmod +x "$work/bin/$1"
}

# A fresh system: $1 is the user's id, the rest are the packages that are installed.
fresh_system() {
    rm -rf "${work:?}/bin"
    mkdir "$work/bin"
    local tool
    for tool in bash grep env; do
        ln -s "$(command -v $tool)" "$work/bin/$tool"
    done
    stand_in id "echo $1"
    shift
    printf '%s\n' "$@" >"$work/installed"
    # shellcheck disable=SC2016
    stand_in dpkg-query 'grep -qx "${@: -1}" "'"$work"'/installed" && echo installed'
    # shellcheck disable=SC2016
    stand_in apt-get 'echo "apt-get $* [$DEBIAN_FRONTEND]"
        if [ "$1" = install ]; then
            for package in "${@:4}"; do [ "$package" = gone ] || echo "$package" >>"'"$work"'/installed"; done
        fi'
    # shellcheck disable=SC2016
    stand_in sudo 'echo "sudo $*"; "$@"'
}

install() {
    # shellcheck disable=SC2016
    env -u DEBIAN_FRONTEND PATH="$work/bin" bash -c '. "$0"; kestrel_install_missing "$@"' \
        "$top/packaging/install-missing.sh" "$@" >"$work/out" 2>"$work/err"
}

expect() {
    local what=$1 wanted=$2 got=$3
    if [ "$wanted" != "$got" ]; then
        printf 'FAILED %s\n  wanted: %s\n  got:    %s\n' "$what" "$wanted" "$got"
        failures=$((failures + 1))
    fi
}

fresh_system 0 a b c
install a b c
expect "nothing missing: succeeds" 0 $?
expect "nothing missing: silent" "" "$(cat "$work/out" "$work/err")"

fresh_system 0 b
install a b c
expect "root: succeeds" 0 $?
expect "root: names them first, updates, installs only these" \
    "These Debian packages are missing and will be installed now:
  a
  c
apt-get update []
apt-get install --yes --no-install-recommends a c [noninteractive]" \
    "$(cat "$work/out")"

fresh_system 1000 b
install a b
expect "user with sudo: succeeds" 0 $?
expect "user with sudo: through sudo" 2 "$(grep -c '^sudo ' "$work/out")"

fresh_system 1000 b
rm "$work/bin/sudo"
install a b
expect "user without sudo: fails" 1 $?
expect "user without sudo: told what to do" 1 "$(grep -c 'apt-get install a$' "$work/err")"
expect "user without sudo: nothing done" "" "$(cat "$work/out")"

fresh_system 0
install gone a
expect "package that cannot be had: fails" 1 $?
expect "package that cannot be had: named" "Still missing: gone" "$(cat "$work/err")"

fresh_system 0
stand_in apt-get 'exit 100'
install a
expect "no network: fails" 1 $?

fresh_system 0
rm "$work/bin/dpkg-query"
install a b
expect "not a Debian: fails" 1 $?
expect "not a Debian: told what is needed" 1 "$(grep -c 'a b$' "$work/err")"

if [ "$failures" -ne 0 ]; then
    exit 1
fi
echo "all as expected"
