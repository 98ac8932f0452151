#!/usr/bin/env bash
# The library exports what its symbols file says, and nothing else.
#   exported_symbols.sh LIBRARY SYMBOLS-FILE [strong]
# With "strong", inline functions that an unoptimised build leaves in the library are passed over; what is
# missing is found in any build.
set -euo pipefail
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sed -n 's/^ \([^ @]*\)@Base .*/\1/p' "$2" | sort >"$work/expected"
nm -D --defined-only "$1" | awk '{ print $3 }' | sort >"$work/all"
if [ "${3:-}" = strong ]; then
    nm -D --defined-only "$1" | awk '$2 !~ /[VW]/ { print $3 }' | sort >"$work/strong"
else
    cp "$work/all" "$work/strong"
fi
comm -23 "$work/expected" "$work/all" >"$work/missing"
comm -13 "$work/expected" "$work/strong" >"$work/new"

status=0
if [ -s "$work/missing" ]; then
    echo "No longer exported; a host that uses them does not start any more:"
    c++filt <"$work/missing"
    status=1
fi
if [ -s "$work/new" ]; then
    echo "Exported but not in $2; see docs/abi.md:"
    c++filt <"$work/new"
    status=1
fi
[ -s "$work/expected" ] || { echo "no symbols in $2"; status=1; }
exit $status
