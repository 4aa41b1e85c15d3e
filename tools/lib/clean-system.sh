# shellcheck shell=bash
# To be sourced: fresh Debian systems, fetched from where this machine's apt fetches Debian. Needs root, and mount and
# process namespaces of its own (in_own_namespaces).

# in_own_namespaces SCRIPT ARGUMENT…: mounts and processes of the script end with it.
in_own_namespaces() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    exec "${as_root[@]}" unshare --mount-proc --pid --fork --kill-child "$@"
}

# make_system ROOT CODENAME: with package lists and a user called clinician.
make_system() {
    local root=$1 codename=$2 here mirror
    here=$(. /etc/os-release && echo "$VERSION_CODENAME")
    indices() { apt-get indextargets --format "$1" 'Created-By: Packages' 'Origin: Debian' | grep " $here"; }
    mirror=$(indices '$(SITE) $(RELEASE)' | awk -v release="$here" '$2 == release { print $1; exit }')
    rm -rf "$root"
    debootstrap --variant=minbase "$codename" "$root" "$mirror"
    indices 'deb $(SITE) $(RELEASE) $(COMPONENT)' | sed "s/ $here/ $codename/" >"$root/etc/apt/sources.list"
    apt-config dump | grep -E '^Acquire::(http|https|Check)' >"$root/etc/apt/apt.conf.d/90machine" || true
    chroot "$root" useradd --create-home clinician
    mount_system "$root"
    within "$root" apt-get update -qq
}

mount_system() {
    mount -t proc proc "$1/proc"
    mount --bind /sys "$1/sys"
    mount --bind /dev "$1/dev"
    mount --bind /dev/pts "$1/dev/pts"
    within "$1" install -d -o clinician -m 700 /run/user/1000
}

# within ROOT COMMAND…
within() { chroot "$1" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "${@:2}"; }
