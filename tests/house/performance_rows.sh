#!/usr/bin/env bash
# The table in docs/performance.md has the rows that the bench prints, no more and no less.
#   performance_rows.sh TOP
set -euo pipefail
cd "$1"
code=$(cat bench/*_bench.cpp | tr '\n' ' ')
flaws=0

# In `addRow` the title is the caller's; everywhere else it stands in quotes.
unknown=$(grep -oP '(table\.add|addRow)\((?!\s*"|title,)[^;]*' <<<"$code" || true)
[ -z "$unknown" ] || { echo "a row's title can't be read: $unknown"; flaws=1; }

printed=$(grep -oP '(table\.add|addRow)\(\s*"\K[^"]+' <<<"$code" | LC_ALL=C sort)
listed=$(sed -n '/^| row /,/^$/s/^| \([^|]*[^ |]\) *|.*/\1/p' docs/performance.md | sed '/^row$/d; /^-*$/d' | LC_ALL=C sort)
(($(wc -l <<<"$printed") >= 30)) || { echo "only $(wc -l <<<"$printed") rows found in bench/"; flaws=1; }
if [ "$printed" != "$listed" ]; then
    echo "bench/ (<) and the table in docs/performance.md (>) differ in their rows:"
    diff <(echo "$printed") <(echo "$listed") || true
    flaws=1
fi
exit $flaws
