# To be sourced: a fresh Debian below $root, as this machine's own apt reaches Debian. Needs root, and mount and process
# namespaces of its own.

within() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }

# make_system LOG: leaves the package lists fetched and a user called clinician.
make_system() {
    local log=$1 codename mirror
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    indices() { apt-get indextargets --format "$1" 'Created-By: Packages' 'Origin: Debian' | grep " $codename"; }
    mirror=$(indices '$(SITE) $(RELEASE)' | awk -v release="$codename" '$2 == release { print $1; exit }')
    rm -rf "$root"
    debootstrap --variant=minbase "$codename" "$root" "$mirror" >"$log"
    indices 'deb $(SITE) $(RELEASE) $(COMPONENT)' >"$root/etc/apt/sources.list"
    apt-config dump | grep -E '^Acquire::(http|https|Check)' >"$root/etc/apt/apt.conf.d/90machine" || true

    mount -t proc proc "$root/proc"
    mount --bind /sys "$root/sys"
    mount --bind /dev "$root/dev"
    mount --bind /dev/pts "$root/dev/pts"
    within apt-get update -qq
    within useradd --create-home clinician
    within install -d -o clinician -m 700 /run/user/1000
}
