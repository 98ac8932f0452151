# shellcheck shell=bash
# Sourced by scripts that need Debian packages:
#
#   . packaging/install-missing.sh
#   kestrel_install_missing cmake ninja-build g++
#
# Installs those of the named packages that are not there, after saying which. Touches nothing, asks for
# nothing and needs no network when none is missing. As root, or through sudo. Returns non-zero, with the
# reason on standard error, when something is still missing afterwards.

kestrel_missing_packages() {
    local package
    for package in "$@"; do
        # A package may be there for several architectures; one is enough.
        dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
            printf '%s\n' "$package"
    done
}

kestrel_install_missing() {
    local missing as_root=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not a Debian system. Please install what corresponds to: $*" >&2
        return 1
    fi
    mapfile -t missing < <(kestrel_missing_packages "$@")
    [ "${#missing[@]}" -eq 0 ] && return 0

    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages: ${missing[*]}" >&2
            echo "Please install them as root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "These Debian packages are missing and will be installed now:"
    printf '  %s\n' "${missing[@]}"
    "${as_root[@]}" apt-get update || return 1
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}" || return 1
    mapfile -t missing < <(kestrel_missing_packages "$@")
    if [ "${#missing[@]}" -ne 0 ]; then
        echo "Still missing: ${missing[*]}" >&2
        return 1
    fi
}
