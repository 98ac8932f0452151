#!/usr/bin/env bash
# The test programs under valgrind's memcheck, one result a line. Left out are those that take minutes as
# it is, or start hundreds of processes; the walks have their short forms elsewhere.
# usage: memcheck.sh BUILD [REGEX]
set -euo pipefail
build=$(cd "$1" && pwd)
wanted=${2:-.}
here=$(cd "$(dirname "$0")" && pwd)
jobs=$(nproc)
logs=$build/memcheck
mkdir -p "$logs"
left_out='random_writes|side_mode_model|scan_range_walk|range_walks|settings_file$|settings_file_full_disk|settings_growth|_walk$|life_cycle|saned|kill_loop|painting_at|ruler_at|^backend_|^scanhost_|^package_|^bench'

export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 QT_SCALE_FACTOR=1
export here logs

check_one() { # NAME PROGRAM
    local filter=*
    # One row of this picture is left as the memory came, and the test reads it.
    [ "$1" != rules_pixels_test ] || filter=-*AsTheMemoryCame
    if (cd "$(dirname "$2")" && timeout 900 valgrind --leak-check=no --error-exitcode=9 --num-callers=30 \
        --suppressions="$here/toolkit.supp" --log-file="$logs/$1.log" "$2" --gtest_filter="$filter" \
        >"$logs/$1.out" 2>&1); then
        echo "ok $1"
    else
        echo "FAILED $1: see $logs/$1.log and $1.out"
        return 1
    fi
}
export -f check_one

programs=$(ctest --test-dir "$build" -N | sed -n 's/^ *Test *#[0-9]*: //p' | grep -E "$wanted" |
    grep -vE "$left_out" | while read -r name; do
        find "$build/tests" -type f -perm -u+x -name "$name" -printf "$name %p\n"
    done)
echo "$(wc -l <<<"$programs") programs"
[ -n "$programs" ]
xargs -P "$jobs" -L 1 bash -c 'check_one "$0" "$1"' <<<"$programs"
