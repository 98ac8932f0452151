#!/usr/bin/env bash
# What administrators, users and developers do with the packages. Run by try-packages.sh in a root that is
# thrown away afterwards, with the packages beside this script.
set -euo pipefail
cd /mnt
names=(libkestrel-settingui1 libkestrel-settingui-dev kestrel-settingui-demo)
vendor=/usr/local/lib64/sane

fail() {
    echo "$1" >&2
    exit 1
}

quietly() {
    "$@" >/tmp/log 2>&1 || { cat /tmp/log >&2; fail "$* failed"; }
}

# What other packages keep about all that is installed is theirs.
all_files() {
    find /usr /etc /var -xdev | grep -v -e '^/var/lib/dpkg/' -e '^/var/cache/man/' -e '/mimeinfo.cache$' \
        -e '/icon-theme.cache$' -e '^/var/cache/ldconfig/' -e '^/var/log/' -e '^/etc/ld.so.cache$' | sort
}

# Every simulated scanner has its driver library, and nobody else, but for the models named as arguments.
expect_drivers() {
    local model driver
    for model in "${models[@]}"; do
        case " $* " in *" $model "*) continue ;; esac
        driver=libkestrel-sim-vendor.so
        [ "$model" != Q240A ] || driver=libkestrel-sim-vendor-legacy.so
        if [ ! -L "$vendor/${model}_x64.so.1.0" ] ||
            [ ! "$vendor/${model}_x64.so.1.0" -ef "$simulator/vendor/$driver" ]; then
            fail "the simulated $model does not have $driver"
        fi
    done
    diff <(printf '%s_x64.so.1.0\n' "${models[@]}" | sort) <(ls "$vendor") ||
        fail "these driver libraries are missing (<) or nobody's (>)"
}

all_files >/tmp/before

echo "installing"
quietly dpkg -i ./*.deb
[ -z "$(dpkg --audit)" ] || fail "$(dpkg --audit)"
quietly dpkg --verify "${names[@]}"
[ ! -s /tmp/log ] || { cat /tmp/log; fail "what is installed is not what is in the packages"; }
ldconfig -p | grep -q 'libkestrel-settingui\.so\.1 ' || fail "the loader does not know the library"
[ -z "$(find /usr/lib/*/sane /etc/sane.d -newer /tmp/before)" ] || fail "something lies among SANE's own"

echo "scanning"
quietly kestrel-scan --simulator --list
[ "$(grep -c 'Kestrel Q' /tmp/log)" -eq 7 ] || { cat /tmp/log; fail "not all simulated scanners are listed"; }
mapfile -t models < <(sed -n 's/.*Kestrel \(Q[0-9A-Z]*\).*/\1/p' /tmp/log)
simulator=$(echo /usr/lib/*/kestrel-settingui/simulator)
expect_drivers
quietly kestrel-scan --simulator --device kestrel_adv:duplex --batch /tmp/pages --pdf /tmp/pages.pdf
if [ ! -s /tmp/pages.pdf ] || [ ! -s /tmp/pages/page-0001.png ]; then
    fail "no pages"
fi
quietly man -w kestrel-scan
quietly man -w kestrel-simulator

echo "building a host"
host=/usr/share/doc/libkestrel-settingui-dev/examples/host
quietly cmake -S "$host" -B /tmp/host
quietly cmake --build /tmp/host
# shellcheck disable=SC2046
quietly c++ -fPIC -o /tmp/host/by-pkg-config "$host/main.cpp" $(pkg-config --cflags --libs kestrel-settingui)
for program in settings-host by-pkg-config; do
    quietly env SANE_CONFIG_DIR="$simulator/etc" LD_LIBRARY_PATH="$simulator/sane" \
        "/tmp/host/$program" --no-window kestrel_adv:duplex
    grep -q '^page: 1654 x 2339 pixels$' /tmp/log || { cat /tmp/log; fail "$program does not scan"; }
done

echo "installing over it, removing"
quietly dpkg -i ./*.deb
quietly dpkg -P "${names[@]}"
all_files >/tmp/after
diff /tmp/before /tmp/after || fail "this is what purging left behind (>) or took along (<)"
! dpkg-query -W "${names[@]}" 2>/dev/null | grep . || fail "dpkg still knows the packages"

echo "beside a vendor's own driver library"
mkdir -p "$vendor"
echo "a driver" >"$vendor/Q150A_x64.so.1.0"
quietly dpkg -i ./*.deb
expect_drivers Q150A
quietly dpkg -P "${names[@]}"
[ "$(ls "$vendor")" = Q150A_x64.so.1.0 ] || fail "left in $vendor: $(ls "$vendor")"
[ "$(cat "$vendor/Q150A_x64.so.1.0")" = "a driver" ] || fail "the vendor's library is not what it was"

echo "beside a /usr/local that can't be written"
read_only() {
    mount --bind /usr/local /usr/local
    mount -o remount,ro,bind /usr/local
}
read_only
quietly dpkg -i ./*.deb
[ "$(ls "$vendor")" = Q150A_x64.so.1.0 ] || fail "written all the same: $(ls "$vendor")"
umount /usr/local
quietly dpkg -i ./*.deb
expect_drivers Q150A
read_only
quietly dpkg -P "${names[@]}"
umount /usr/local
