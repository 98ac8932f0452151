#!/bin/sh
# scanimage lists the simulated scanners, shows their options and empties their feeder.
# usage: scanimage.sh <the build's simulator folder>; SANE_CONFIG_DIR and LD_LIBRARY_PATH are set
set -eu

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
export KESTREL_SIM_JOURNAL="$out/journal"

run() {
    LD_PRELOAD="${KESTREL_SANITIZER:-}" "$@"
}

fail() {
    echo "$1" >&2
    exit 1
}

run scanimage -L >"$out/list"
for device in kestrel_adv:duplex kestrel_adv:twopath kestrel_adv:feeder kestrel_adv:flatbed \
    kestrel_adv:a3 kestrel_adv:longpaper avision_adv:feeder; do
    grep -q "device .$device' is a Kestrel" "$out/list" || fail "-L does not list $device"
    run scanimage -d "$device" -A >"$out/options"
    grep -q -- '--resolution' "$out/options" || fail "-A of $device shows no resolution"
    grep -q 'serial-number' "$out/options" || fail "-A of $device shows no serial number"
done

run scanimage -d kestrel_adv:duplex --source 'ADF Duplex' --mode Gray --resolution 100 \
    -x 210 -y 297 --batch="$out/page%02d.pnm" >/dev/null 2>"$out/log" ||
    fail "--batch: $(cat "$out/log")"
pages=$(find "$out" -name 'page*.pnm' | wc -l)
[ "$pages" -eq 12 ] || fail "six sheets in duplex gave $pages pages"
for page in "$out"/page*.pnm; do
    # P5, a comment, the size
    [ "$(sed -n 1p "$page" | head -c 2)" = P5 ] || fail "$page is not a gray image"
    [ "$(sed -n 3p "$page" | head -c 8)" = '827 1169' ] || fail "$page has another size"
done
grep -q '^set source "ADF Duplex" good$' "$out/journal" || fail "the source is not in the journal"
[ "$(grep -c '^start good ' "$out/journal")" -eq 12 ] || fail "the journal counts other pages"
grep -q '^start no-docs$' "$out/journal" || fail "the feeder did not run empty"

run scanimage -d kestrel_adv:flatbed --resolution 75 --format=pnm >"$out/flat.pnm" 2>"$out/log" ||
    fail "flatbed: $(cat "$out/log")"
[ "$(head -c 2 "$out/flat.pnm")" = P6 ] || fail "the flatbed gave no colour image"
