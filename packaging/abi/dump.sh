#!/usr/bin/env bash
# Writes down what hosts rely on when they call the library: functions, variables and their types.
#   dump.sh LIBRARY OUT
# LIBRARY is not stripped.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
headers=$(mktemp -d)
trap 'rm -rf "$headers"' EXIT
cp "$here/../../kestrelsetUI/kestrelsettingui.h" "$headers"
abidw --suppressions "$here/suppressions.ini" --headers-dir "$headers" --drop-private-types \
    --exported-interfaces-only --no-show-locs --no-corpus-path --no-comp-dir-path --no-elf-needed \
    --out-file "$2" "$1"
