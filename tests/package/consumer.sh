#!/usr/bin/env bash
# A host program builds against the installed library, with CMake and with pkg-config alone, and scans.
#   consumer.sh BUILD-FOLDER SOURCE-FOLDER LIBDIR
# CMAKE, CXX and CXXFLAGS are those of the build.
set -euo pipefail
build=$1
top=$2
libdir=$3
here=$top/tests/package
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "$1" >&2
    [ -z "${2:-}" ] || cat "$2" >&2
    exit 1
}

quietly() { # WHAT COMMAND...
    local what=$1
    shift
    "$@" >"$work/log" 2>&1 || fail "$what fails:" "$work/log"
}

quietly "installing" "$CMAKE" --install "$build" --prefix "$work/first"
quietly "installing what belongs to no package" \
    "$CMAKE" --install "$build" --prefix "$work/stray" --component Unspecified
[ ! -e "$work/stray" ] || fail "Installed, but in none of the packages: $(find "$work/stray" -type f)"
# The tree does not know where it was put.
mv "$work/first" "$work/usr"

(cd "$work/usr" && find . ! -type d | sed "s|^\./$libdir/|LIBDIR/|; s|^\./||
    s|Targets-[a-z]*\.cmake|Targets-CONFIG.cmake|
    s|\.so\.[0-9]*\.[0-9.]*$|.so.VERSION|" | LC_ALL=C sort) >"$work/installed"
diff -u "$here/installed-files.txt" "$work/installed" >"$work/difference" ||
    fail "What is installed is not what tests/package/installed-files.txt says:" "$work/difference"
! grep -rIl -e "$build" -e "$top/" -e "$work" "$work/usr" >"$work/traces" ||
    fail "These files name a folder of the build:" "$work/traces"

quietly "configuring the host" "$CMAKE" -S "$here/consumer" -B "$work/cmake" \
    -DCMAKE_PREFIX_PATH="$work/usr" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_CXX_FLAGS="$CXXFLAGS"
quietly "building the host" "$CMAKE" --build "$work/cmake"

mkdir "$work/next"
cat >"$work/next/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(Next LANGUAGES CXX)
find_package(KestrelSettingUI 2.0 QUIET)
if(KestrelSettingUI_FOUND)
  message(FATAL_ERROR "found for a host of the next major version")
endif()
END
quietly "looking for version 2" "$CMAKE" -S "$work/next" -B "$work/next/build" \
    -DCMAKE_PREFIX_PATH="$work/usr" -DCMAKE_CXX_COMPILER="$CXX"

mkdir "$work/bare"
cat >"$work/bare/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(Bare LANGUAGES CXX)
set(CMAKE_MODULE_PATH mine)
find_package(KestrelSettingUI 1.0 QUIET)
if(KestrelSettingUI_FOUND)
  message(FATAL_ERROR "found where libsane is missing")
endif()
if(NOT KestrelSettingUI_NOT_FOUND_MESSAGE MATCHES libsane OR NOT CMAKE_MODULE_PATH STREQUAL mine)
  message(FATAL_ERROR "${KestrelSettingUI_NOT_FOUND_MESSAGE} ${CMAKE_MODULE_PATH}")
endif()
END
quietly "doing without libsane" "$CMAKE" -S "$work/bare" -B "$work/bare/build" \
    -DCMAKE_PREFIX_PATH="$work/usr" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_DISABLE_FIND_PACKAGE_Sane=ON

export PKG_CONFIG_PATH=$work/usr/$libdir/pkgconfig
version=$(pkg-config --modversion kestrel-settingui)
for page in man1/kestrel-scan.1 man7/kestrel-simulator.7; do
    grep -q "\"kestrel\\\\-scan $version\"" "$work/usr/share/man/$page" || fail "$page is not of version $version"
done
mkdir "$work/pkgconfig"
# Qt asks for position-independent code; everything else comes from the module.
# shellcheck disable=SC2046,SC2086
quietly "compiling with pkg-config" "$CXX" $CXXFLAGS -fPIC -o "$work/pkgconfig/settings-host" \
    "$here/consumer/main.cpp" $(pkg-config --cflags --libs kestrel-settingui)

texts=$(pkg-config --variable=translationsdir kestrel-settingui)
[ "$texts" -ef "$work/usr/share/kestrel-settingui/translations" ] || fail "pkg-config looks for the texts in $texts"
quietly "configuring the English host" "$CMAKE" -S "$here/english" -B "$work/english" \
    -DCMAKE_PREFIX_PATH="$work/usr" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_CXX_FLAGS="$CXXFLAGS"
quietly "building the English host" "$CMAKE" --build "$work/english"
# shellcheck disable=SC2046,SC2086
quietly "compiling the English host with pkg-config" "$CXX" $CXXFLAGS -fPIC -o "$work/english/by-pkg-config" \
    "$here/english/main.cpp" -DSETTINGS_TEXTS="\"$texts\"" $(pkg-config --cflags --libs kestrel-settingui)
for made in english-host by-pkg-config; do
    quietly "the English host ($made)" env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work" \
        LD_LIBRARY_PATH="$work/usr/$libdir" "$work/english/$made"
    grep -qx OK "$work/log" || fail "the English host ($made) does not speak English:" "$work/log"
done

simulator=$work/usr/$libdir/kestrel-settingui/simulator
for made in cmake pkgconfig; do
    libraries=$simulator/sane
    [ "$made" = cmake ] || libraries+=:$work/usr/$libdir
    quietly "the host made with $made" env QT_QPA_PLATFORM=offscreen LD_LIBRARY_PATH="$libraries" \
        SANE_CONFIG_DIR="$simulator/etc" XDG_CONFIG_HOME="$work/$made/config" \
        XDG_RUNTIME_DIR="$work" KESTREL_SIM_JOURNAL="$work/$made/journal" \
        "$work/$made/settings-host" --no-window kestrel_adv:duplex
    for line in 'resolution: 200 dpi' 'duplex: no' 'page: 1654 x 2339 pixels'; do
        grep -qx "$line" "$work/log" || fail "the host made with $made does not say '$line':" "$work/log"
    done
    grep -q '^set resolution "200" good' "$work/$made/journal" ||
        fail "the settings of the host made with $made did not reach the scanner:" "$work/$made/journal"
    find "$work/$made/config" -name 'kestrel_adv-duplex.ini' -size +0 | grep -q . ||
        fail "the host made with $made has kept no settings"
done
quietly "the host without a name" env QT_QPA_PLATFORM=offscreen LD_LIBRARY_PATH="$simulator/sane" \
    SANE_CONFIG_DIR="$simulator/etc" XDG_CONFIG_HOME="$work/nameless/config" XDG_RUNTIME_DIR="$work" \
    "$work/cmake/settings-host" --no-window
find "$work/nameless/config" -name '*_adv-*.ini' -size +0 | grep -q . ||
    fail "the host without a name has not taken a scanner" "$work/log"

# The program that comes along finds library and simulator from where it lies.
quietly "the installed program" env -u LD_LIBRARY_PATH XDG_RUNTIME_DIR="$work" \
    "$work/usr/bin/kestrel-scan" --simulator --list
[ "$(grep -c 'Kestrel Q' "$work/log")" -eq 7 ] || fail "not all simulated scanners are listed:" "$work/log"
quietly "the installed program" env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work" \
    "$work/usr/bin/kestrel-scan" --version
grep -qx "kestrel-scan $version" "$work/log" || fail "program and pkg-config disagree on the version:" "$work/log"
