#!/usr/bin/env bash
# Whatever the library exports, and every guide, has its place in the pages that Doxygen makes.
#   api_pages_complete.sh TOP
set -euo pipefail
cd "$1"
flaws=0
headers=0
while read -r header; do
    headers=$((headers + 1))
    grep -qE "^ *(INPUT *= *)?$header( \\\\)?$" docs/Doxyfile.in || { echo "docs/Doxyfile.in does not name $header"; flaws=1; }
done < <(grep -rlE --include='*.h' '^(class|struct) Q_DECL_EXPORT [A-Za-z]+( |$)|^(extern )?Q_DECL_EXPORT ' kestrelsetUI)
# What the compiler of the form makes has no header here: the main page speaks of it.
while read -r made; do
    grep -q "^- $made: " docs/mainpage.md || { echo "docs/mainpage.md does not name $made"; flaws=1; }
done < <(grep -rhoE --include='*.h' '^class Q_DECL_EXPORT [A-Za-z_]+;' kestrelsetUI | sed 's/.* //; s/;//')
for page in docs/*.md; do
    grep -qE "^ *(INPUT *= *)?$page( \\\\)?$" docs/Doxyfile.in || { echo "docs/Doxyfile.in does not name $page"; flaws=1; }
    [ "$page" = docs/mainpage.md ] || grep -qF "](${page#docs/})" docs/mainpage.md ||
        { echo "docs/mainpage.md does not link $page"; flaws=1; }
done
((headers >= 8)) || { echo "only $headers headers found"; flaws=1; }
exit $flaws
