#!/usr/bin/env bash
# A file of the library includes only what stands on its own floor or below it.
set -euo pipefail
root=$1/kestrelsetUI
floors=(system rules settings scanner widgets dialogs)
flaws=0

level() { # of a path relative to the library's folder; the dialog and the entry points stand on top
    local i
    for i in "${!floors[@]}"; do
        [[ $1 != "${floors[i]}"/* ]] || { echo "$i"; return; }
    done
    echo "${#floors[@]}"
}

while IFS=: read -r file include; do
    own=$(level "${file#"$root"/}")
    other=$(level "$include")
    if ((other > own)); then
        echo "${file#"$root"/} includes $include, which stands above it"
        flaws=1
    fi
done < <(grep -roP --include='*.h' --include='*.cpp' '^#include "\K[^"]+' "$root" | grep -v '"\?ui_\|:moc_')

seen=$(grep -rlP --include='*.cpp' '^#include "' "$root" | wc -l)
((seen > 20)) || { echo "only $seen files looked at"; flaws=1; }
exit $flaws
