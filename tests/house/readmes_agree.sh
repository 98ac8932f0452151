#!/usr/bin/env bash
# The two READMEs say the same: headings, commands, tables and links match one by one. What is linked exists,
# and every page in docs/ is linked.
#   readmes_agree.sh TOP
set -euo pipefail
cd "$1"
flaws=0

same() { # WHAT FEWEST COMMAND...; compares what the command prints for each README
    local what=$1 fewest=$2 english chinese
    shift 2
    english=$("$@" <README.md)
    chinese=$("$@" <README.zh-CN.md)
    if [ "$english" != "$chinese" ]; then
        echo "The READMEs differ in their $what:"
        diff <(echo "$english") <(echo "$chinese") || true
        flaws=1
    fi
    if [ "$(wc -l <<<"$english")" -lt "$fewest" ]; then
        echo "only $(wc -l <<<"$english") lines of $what found"
        flaws=1
    fi
}

headings() { grep -o '^#\+ '; }
blocks() { sed -n '/^```/,/^```$/p'; }
commands() { grep -o '`\./[^`]*`\|`--[^`]*`\|`-D[^`]*`'; }
tables() { grep -o '^| `[^`]*`\|^| ---.*'; }
items() { grep -o '^- '; }
links() { grep -o '](\([^)]*\))' | grep -v 'README\.[a-z.A-Z-]*md)' ; }

same headings 6 headings
same "code blocks" 20 blocks
same commands 8 commands
same tables 10 tables
same lists 7 items
same links 7 links

# The main page of the API documentation leads to what is written here.
for page in docs/*.md; do
    [ "$page" != docs/mainpage.md ] || continue
    grep -qF "]($page)" README.md || { echo "README.md does not link $page"; flaws=1; }
done

for readme in README.md README.zh-CN.md; do
    while read -r target; do
        [ -e "$target" ] || { echo "$readme: $target does not exist"; flaws=1; }
    done < <(grep -o '](\([^)]*\))' "$readme" | sed 's/^](//; s/)$//')
done
exit $flaws
