#!/usr/bin/env bash
# What the linker and the compiler guard in the shared object, as it was built.
# usage: hardening.sh LIBRARY [COMPILE_COMMANDS]
# With the commands: every source of the library was compiled with checked calls. (The object itself does
# not tell: where the compiler can prove that a call fits it leaves the check out.)
set -euo pipefail
library=$1
flaws=0

flaw() {
    echo "$library: $1"
    flaws=1
}

segments=$(readelf --wide --segments "$library")
dynamic=$(readelf --wide --dynamic "$library")
imports=$(readelf --wide --dyn-syms "$library" | awk '$7 == "UND" { print $8 }')

flags_of() { # of the segments of a kind
    awk -v kind="$1" '$1 == kind { for (i = 7; i < NF; i++) printf "%s", $i; print "" }' <<<"$segments"
}

[ "$(flags_of LOAD | wc -l)" -ge 2 ] || flaw "readelf shows no segments to load"
grep -q '^ *GNU_RELRO ' <<<"$segments" || flaw "relocations stay writable"
grep -qE '\((FLAGS|FLAGS_1)\).*\b(BIND_NOW|NOW)\b' <<<"$dynamic" || flaw "functions are bound when they are called"
[ "$(flags_of GNU_STACK)" = RW ] || flaw "the stack is '$(flags_of GNU_STACK)'"
flags_of LOAD | grep -q 'W.*E' && flaw "a segment is writable and executable"
grep -q TEXTREL <<<"$dynamic" && flaw "code is relocated"
grep -qE '\((RPATH|RUNPATH)\)' <<<"$dynamic" && flaw "libraries are looked for in places of the builder's"
grep -q '^__stack_chk_fail' <<<"$imports" || flaw "no stack guard"
if [ -n "${2:-}" ]; then
    commands=$(grep '"command":' "$2" | grep -E ' -c [^ ]*/kestrelsetUI/[^ ]*\.cpp"?' || true)
    [ "$(wc -l <<<"$commands")" -gt 20 ] || flaw "$2 names no sources of the library"
    grep -vE -- '-D_FORTIFY_SOURCE=3' <<<"$commands" && flaw "compiled without checked calls"
fi
exit $flaws
