#!/usr/bin/env bash
# The calls in the README are C++ that compiles, given what its text says that the program has.
#   readme_compiles.sh TOP
# CXX is that of the build.
set -euo pipefail
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

sed -n '/^```cpp$/,/^```$/{//!p}' README.md >"$work/code"
[ "$(wc -l <"$work/code")" -ge 8 ] || { echo "README.md has no code"; exit 1; }
{
    grep '^#include' "$work/code"
    echo 'bool life(void* handle, ScannerIdentity identity, const char* folder)'
    echo '{'
    grep -v '^#include' "$work/code"
    echo 'return duplex;'
    echo '}'
} >"$work/code.cpp"
# shellcheck disable=SC2046
"$CXX" -std=c++17 -fPIC -fsyntax-only -Wall -Wextra -Werror -IkestrelsetUI \
    $(pkg-config --cflags Qt5Widgets) "$work/code.cpp"
