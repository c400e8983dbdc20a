# A fresh Debian or Ubuntu of its own (a chroot that is thrown away at the end). Sourced, after packages.sh, by what uses one.

# fresh_system SUITE MIRROR makes it and says in $system where it lies; it fails where that cannot be done.
fresh_system() {
    need debootstrap
    system=$(mktemp -d)
    trap leave_fresh_system EXIT
    chmod 755 "$system"
    # Where this system does not know the keys of the other, the mirror has to be one that proves itself.
    local keys=()
    case $2 in https:*) keys=(--no-check-gpg) ;; esac
    debootstrap --variant=minbase "${keys[@]}" "$1" "$system" "$2" >"$system.log" 2>&1 ||
        { tail -n 3 "$system.log" && rm "$system.log" && return 1; }
    rm "$system.log"
    # It has the keys now, and its packages need not come over what it cannot judge yet.
    sed -i 's/ https:/ http:/' "$system/etc/apt/sources.list"
    cp -r /etc/apt/apt.conf.d /etc/apt/auth.conf.d "$system/etc/apt/" 2>/dev/null || true
    cp /etc/resolv.conf /etc/hosts "$system/etc/"
    mount -t proc proc "$system/proc" && mount --bind /dev "$system/dev" && mount --bind /dev/pts "$system/dev/pts"
}

leave_fresh_system() {
    local place
    for place in proc dev/pts dev; do ! mountpoint -q "$system/$place" || umount "$system/$place"; done
    rm -rf --one-file-system "$system"
}

inside() { chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
