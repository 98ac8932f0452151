#!/usr/bin/env bash
# The code in the guides is code: each quoted piece stands in the file that it names, letter by letter but for
# the indentation of the list it is in.
#   guide_quotes.sh TOP
set -euo pipefail
top=$1
flaws=0
quotes=0

check() { # GUIDE FILE INDENTATION PIECE
    local guide=$1 file=$2 indentation=$3 piece=$4 text
    quotes=$((quotes + 1))
    if [ ! -f "$top/$file" ]; then
        echo "$guide quotes $file, which does not exist"
        flaws=1
        return
    fi
    text=$(cat "$top/$file")
    [ -z "$indentation" ] || piece=$(sed "s/^$indentation//" <<<"$piece")
    if [ -z "$piece" ] || [[ $'\n'$text$'\n' != *$'\n'"$piece"$'\n'* ]]; then
        printf '%s quotes from %s what does not stand there:\n%s\n' "$guide" "$file" "$piece"
        flaws=1
    fi
}

for guide in "$top"/docs/*.md "$top"/README*.md; do
    file="" piece="" inside=no indentation=""
    while IFS= read -r line || [ -n "$line" ]; do
        if [[ $line =~ ^(\ *)'<!-- quoted from '([^ ]+)' -->'$ ]]; then
            indentation=${BASH_REMATCH[1]} file=${BASH_REMATCH[2]}
        elif [[ -n $file && $inside = no && $line =~ ^\ *'```' ]]; then
            inside=yes piece=""
        elif [[ $inside = yes && $line =~ ^\ *'```'$ ]]; then
            check "$(basename "$guide")" "$file" "$indentation" "${piece%$'\n'}"
            file="" inside=no
        elif [ "$inside" = yes ]; then
            piece+=$line$'\n'
        elif [[ -n $file && -n $line ]]; then
            echo "$(basename "$guide"): no code follows the quotation from $file"
            flaws=1 file=""
        fi
    done <"$guide"
    [ "$inside" = no ] && [ -z "$file" ] || { echo "$(basename "$guide"): the last quotation has no end"; flaws=1; }
done
((quotes >= 15)) || { echo "only $quotes quotations found"; flaws=1; }
exit $flaws
