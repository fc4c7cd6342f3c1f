# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# A bare Debian 12 in a folder, to install packages in. To be sourced behind lib.sh.
#
# Nothing is mounted: whoever deletes the folder deletes that alone. Whoever makes one sets $chroot, the folder.

# shellcheck disable=SC2034 # for the scripts that make one
torvane_chroot_packages=(debootstrap debian-archive-keyring)

# debian_sources: the machine's own mirrors of Debian 12, as lines for apt.
debian_sources() {
    # shellcheck disable=SC2016 # the variables are apt's
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' 'Component: main' --format \
        'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' |
        grep --extended-regexp ' bookworm(-updates|-security)? ' | sort --unique
}

# The base packages, whose signatures are checked, as an archive in the cache: as fresh as when it was first made.
base_archive() { # prints the file
    local mirror archive folder
    mirror=$(debian_sources | awk '$3 == "bookworm" { print $2; exit }')
    archive=${XDG_CACHE_HOME:-$HOME/.cache}/torvane/bookworm-$(sha256sum <<<"$mirror" | cut -c 1-16).tar
    if [ ! -e "$archive" ]; then
        folder=$(mktemp -d)
        as_root debootstrap --variant=minbase --keyring=/usr/share/keyrings/debian-archive-keyring.gpg \
            bookworm "$folder/root" "$mirror" </dev/null >&2
        mkdir -p -- "$(dirname -- "$archive")"
        as_root tar --create --one-file-system --exclude='./var/cache/apt/archives/*.deb' --directory="$folder/root" . \
            >"$archive.new"
        as_root rm -rf --one-file-system -- "$folder"
        mv -- "$archive.new" "$archive"
    fi
    printf '%s\n' "$archive"
}

make_chroot() {
    as_root mkdir -p -- "$chroot"
    as_root tar --extract --preserve-permissions --numeric-owner --directory="$chroot" <"$(base_archive)"
    debian_sources | as_root tee "$chroot/etc/apt/sources.list" >/dev/null
    # What breaks when the power goes has no worth here, and costs half the time.
    as_root tee "$chroot/etc/dpkg/dpkg.cfg.d/unsafe" <<<force-unsafe-io >/dev/null
    as_root tee "$chroot/etc/apt/apt.conf.d/languages" <<<'Acquire::Languages "none";' >/dev/null
    in_chroot apt-get --quiet update
}

# in_chroot COMMAND...: by root, with no more of the environment than its proxies.
in_chroot() {
    as_root env --ignore-environment HOME=/tmp LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        DEBIAN_FRONTEND=noninteractive \
        ${http_proxy:+"http_proxy=$http_proxy"} ${https_proxy:+"https_proxy=$https_proxy"} \
        chroot "$chroot" "$@" </dev/null
}

delete_chroot() { as_root rm -rf --one-file-system -- "$chroot"; }
