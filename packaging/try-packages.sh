#!/usr/bin/env bash
# Installs the packages, uses them and purges them, in a root of its own: the running system as it is, with
# everything that is written going to memory. As root or through sudo.
#   packaging/try-packages.sh FOLDER-OF-PACKAGES
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

if [ "${1:-}" != --inside ]; then
    as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    exec "${as_root[@]}" unshare -m "$here/try-packages.sh" --inside "$(realpath "$1")"
fi

debs=$2
mount --make-rprivate /
scratch=$(mktemp -d)
trap 'umount -l "$scratch" 2>/dev/null || true; rmdir "$scratch"' EXIT
mount -t tmpfs -o size=512m root "$scratch"
root=$scratch/root
mkdir -p "$root"/{proc,dev,tmp,run,root,mnt} "$scratch"/{usr,var}/{new,work}
for folder in usr var; do
    mkdir "$root/$folder"
    mount -t overlay "$folder" "$root/$folder" \
        -o "lowerdir=/$folder,upperdir=$scratch/$folder/new,workdir=$scratch/$folder/work"
done
cp -a /etc "$root"
# A slim system leaves out documents; here they are looked at.
rm -f "$root"/etc/dpkg/dpkg.cfg.d/*
for link in bin sbin lib lib32 lib64 libx32; do
    [ ! -L "/$link" ] || cp -P "/$link" "$root"
done
mount --rbind /proc "$root/proc"
mount --rbind /dev "$root/dev"
cp "$debs"/*.deb "$here/use-packages.sh" "$root/mnt"

env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 TMPDIR=/tmp XDG_RUNTIME_DIR=/run \
    QT_QPA_PLATFORM=offscreen DEBIAN_FRONTEND=noninteractive \
    chroot "$root" bash /mnt/use-packages.sh
