#!/bin/sh
# Runs a program in a network of its own: saned's port is fixed.
# usage: in_own_network.sh PROGRAM [ARGUMENT...]
set -eu
if [ "$1" != --inside ]; then
    exec unshare -rn sh "$0" --inside "$@"
fi
shift
ip link set lo up
exec "$@"
