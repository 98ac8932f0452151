#!/usr/bin/env bash
# What the linker and the compiler guard in a library or a program, as it was built.
# usage: hardening.sh OBJECT [COMPILE_COMMANDS FOLDER]
# With the commands: every source of the folder was compiled with stack guards and checked calls. (The
# object itself does not tell: where the compiler can prove that a call fits it leaves the check out.)
set -euo pipefail
object=$1
flaws=0

flaw() {
    echo "$object: $1"
    flaws=1
}

segments=$(readelf --wide --segments "$object")
header=$(readelf --wide --file-header "$object")
dynamic=$(readelf --wide --dynamic "$object")
imports=$(readelf --wide --dyn-syms "$object" | awk '$7 == "UND" { print $8 }')

searched() { # the folders that the loader is told to look in
    sed -nE 's/.*\((RPATH|RUNPATH)\).*\[(.*)\]$/\2/p' <<<"$dynamic" | tr ':' '\n'
}

flags_of() { # of the segments of a kind
    awk -v kind="$1" '$1 == kind { for (i = 7; i < NF; i++) printf "%s", $i; print "" }' <<<"$segments"
}

[ "$(flags_of LOAD | wc -l)" -ge 2 ] || flaw "readelf shows no segments to load"
grep -q '^ *GNU_RELRO ' <<<"$segments" || flaw "relocations stay writable"
grep -qE '\((FLAGS|FLAGS_1)\).*\b(BIND_NOW|NOW)\b' <<<"$dynamic" || flaw "functions are bound when they are called"
[ "$(flags_of GNU_STACK)" = RW ] || flaw "the stack is '$(flags_of GNU_STACK)'"
flags_of LOAD | grep -q 'W.*E' && flaw "a segment is writable and executable"
grep -q TEXTREL <<<"$dynamic" && flaw "code is relocated"
grep -qE '^ *Type: +DYN ' <<<"$header" || flaw "it is always loaded at the same address"
if grep -q '^ *INTERP ' <<<"$segments"; then
    # A program may say where its libraries are as seen from its own place; what is empty is room that
    # CMake leaves in the build tree for what the installation writes there.
    searched | grep -vE '^([$]ORIGIN/.*)?$' && flaw "libraries are looked for in places of the builder's"
else
    [ -z "$(searched)" ] || flaw "a library says where to look for others"
fi
grep -q '^__stack_chk_fail' <<<"$imports" || flaw "no stack guard"
if [ -n "${2:-}" ]; then
    folder=$3
    commands=$(grep '"command":' "$2" | grep -E " -c [^ ]*/$folder/[^ ]*\.cpp\"?" |
        grep -v "/tests/$folder/" || true)
    [ "$(wc -l <<<"$commands")" -gt 20 ] || flaw "$2 names no sources of $folder"
    grep -vE -- '-fstack-protector-strong' <<<"$commands" && flaw "compiled without stack guards"
    grep -vE -- '-D_FORTIFY_SOURCE=3' <<<"$commands" && flaw "compiled without checked calls"
fi
exit $flaws
