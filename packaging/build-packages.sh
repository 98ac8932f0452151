#!/usr/bin/env bash
# Makes the Debian packages.
#   packaging/build-packages.sh [BUILD-FOLDER]     they are left in BUILD-FOLDER/debs
# The same sources give the same bytes, in whatever folder and whenever.
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath -m "${1:-$top/build/package}")

# shellcheck source=packaging/install-missing.sh
. "$top/packaging/install-missing.sh"
kestrel_install_missing cmake ninja-build g++ dpkg-dev qtbase5-dev qttools5-dev-tools libsane-dev

SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l "$top/packaging/debian/changelog" -S Timestamp)
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8
# A compiler cache may hand out objects that were made elsewhere, with that place's name in them.
export CCACHE_DISABLE=1
umask 022

cmake -S "$top" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
    -DKESTREL_WERROR=ON --log-level=WARNING
cmake --build "$build" --parallel "$(nproc)"
rm -rf "$build/debs"
(cd "$build" && cpack --config CPackConfig.cmake -B "$build/debs")
