#!/bin/sh
# Each backend exports its thirteen entry points and nothing else.
# usage: exports.sh <the build's simulator folder>
set -eu

for backend in kestrel_adv avision_adv; do
    found=$(nm -D --defined-only "$1/sane/libsane-$backend.so.1" | awk '{ print $3 }' | sort)
    expected=$(for call in init exit get_devices open close get_option_descriptor control_option \
        get_parameters start read cancel set_io_mode get_select_fd; do
        echo "sane_${backend}_$call"
    done | sort)
    if [ "$found" != "$expected" ]; then
        echo "libsane-$backend.so.1 exports:"
        echo "$found"
        exit 1
    fi
done
