#!/bin/sh
# The simulated scanner through saned and the net backend. The port is fixed, so each run has a network
# of its own.
# usage: saned.sh <the build's simulator folder>
set -eu

if [ "${2:-}" != inside ]; then
    exec unshare -rn sh "$0" "$1" inside
fi

ip link set lo up
out=$(mktemp -d)
server=
cleanup() {
    [ -z "$server" ] || kill "$server" 2>/dev/null || true
    rm -rf "$out"
}
trap cleanup EXIT

run() {
    LD_PRELOAD="${KESTREL_SANITIZER:-}" "$@"
}

fail() {
    echo "$1" >&2
    cat "$out/saned.log" >&2 || true
    exit 1
}

mkdir "$out/server" "$out/client"
cp "$1"/etc/*.conf "$out/server/"
: >"$out/server/saned.conf"
echo net >"$out/client/dll.conf"
echo 127.0.0.1 >"$out/client/net.conf"

saned=$(command -v saned || echo /usr/sbin/saned)
SANE_CONFIG_DIR="$out/server" KESTREL_SIM_JOURNAL="$out/journal" LD_PRELOAD="${KESTREL_SANITIZER:-}" \
    "$saned" -l -b 127.0.0.1 -e -d 3 >"$out/saned.log" 2>&1 &
server=$!
export SANE_CONFIG_DIR="$out/client"

# The daemon is ready when its port (6566) listens.
tries=0
until grep -q '0100007F:19A6' /proc/net/tcp; do
    tries=$((tries + 1))
    [ "$tries" -lt 600 ] || fail "saned does not listen"
    kill -0 "$server" || fail "saned ended"
    sleep 0.1
done

device=net:127.0.0.1:kestrel_adv:duplex
run scanimage -L >"$out/list"
grep -q "$device" "$out/list" || fail "-L over the network: $(cat "$out/list")"
run scanimage -d "$device" -A >"$out/options"
grep -q 'serial-number.*KS2380F00017' "$out/options" || fail "-A over the network shows no serial number"
run scanimage -d "$device" --source 'ADF Front' --mode Color --resolution 75 -x 210 -y 297 \
    --batch="$out/page%02d.pnm" >/dev/null 2>"$out/log" || fail "--batch: $(cat "$out/log")"
pages=$(find "$out" -name 'page*.pnm' | wc -l)
[ "$pages" -eq 6 ] || fail "six sheets gave $pages pages"
[ "$(grep -c '^start good ' "$out/journal")" -eq 6 ] || fail "the server scanned something else"

# The same picture as without a network in between.
export SANE_CONFIG_DIR="$out/server"
run scanimage -d kestrel_adv:duplex --source 'ADF Front' --mode Color --resolution 75 -x 210 -y 297 \
    --format=pnm >"$out/direct.pnm"
cmp "$out/direct.pnm" "$out/page01.pnm" || fail "the network changed the picture"
