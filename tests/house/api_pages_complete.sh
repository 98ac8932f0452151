#!/usr/bin/env bash
# Whatever the library exports has its place in the pages that Doxygen makes.
#   api_pages_complete.sh TOP
set -euo pipefail
cd "$1"
flaws=0
headers=0
while read -r header; do
    headers=$((headers + 1))
    grep -qE "^ *(INPUT *= *)?$header( \\\\)?$" docs/Doxyfile.in || { echo "docs/Doxyfile.in does not name $header"; flaws=1; }
done < <(grep -rlE --include='*.h' '^(class|struct) Q_DECL_EXPORT [A-Za-z]+( |$)|^(extern )?Q_DECL_EXPORT ' kestrelsetUI)
((headers >= 8)) || { echo "only $headers headers found"; flaws=1; }
exit $flaws
