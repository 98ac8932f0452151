#!/usr/bin/env bash
# Each text that passes through translation stands in its catalogue, and nothing else does.
# Usage: catalogue_complete.sh LUPDATE TOP SOURCES CATALOGUE
set -euo pipefail
lupdate=$1 top=$2 sources=$3 catalogue=$4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$top/translations/$catalogue" "$work/"
"$lupdate" -silent -locations none -no-obsolete "$top/$sources" -ts "$work/$catalogue" 2> "$work/log" || {
    cat "$work/log" >&2
    exit 1
}
diff -u "$top/translations/$catalogue" "$work/$catalogue"
if grep -n 'type="unfinished"' "$work/$catalogue"; then
    exit 1
fi
[ "$(grep -c '<message>' "$work/$catalogue")" -gt 50 ]
