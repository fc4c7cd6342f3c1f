# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# The distribution's libraries for ARM64, in a folder of their own outside the tree (the sysroot), and what builds and
# runs programs with them. To be sourced behind lib.sh.
#
# The user's system gets no foreign architecture: the sysroot has its own lists of apt and its own database of dpkg, which
# dpkg-shlibdeps reads too (--admindir, and -l with lib/ before usr/lib/, as packages name them). The folder is named after
# what makes it: a change of that makes a new one.

# The compiler, the emulator, and Qt's tools, which run here and write for any machine.
# shellcheck disable=SC2034 # for the scripts that build
torvane_arm64_packages=(
    g++ g++-aarch64-linux-gnu cmake ninja-build pkg-config qemu-user-static
    ca-certificates debian-archive-keyring qt5-qmake qtbase5-dev-tools
)
# What needs no file of these from the sysroot, though packages say so: programs, which run here if at all, and the
# drivers of a graphics card with their compiler. That spares half of the download.
torvane_arm64_presumed=(
    debconf dpkg fontconfig libgl1-mesa-dri perl python3 python3-distutils shared-mime-info
)

torvane_arm64_recipe=("${BASH_SOURCE[0]}" "$torvane_root/cmake/EmulatedSyscall.cpp")
# What programs that are to run under QEMU are linked with.
arm64_emulated=torvane_emulated.so

# arm64_libraries PACKAGE...: sets libraries to those of the packages that are for a compiler, and so come from the sysroot.
arm64_libraries() {
    local package
    libraries=(libc6-dev)
    for package in "$@"; do
        [[ $package != *-dev ]] || libraries+=("$package")
    done
}

# arm64_sysroot PACKAGE...: sets sysroot, and puts into it what is not there yet of the packages and of what they depend
# on. Two runs at once wait for each other.
arm64_sysroot() {
    local lock
    sysroot=${XDG_CACHE_HOME:-$HOME/.cache}/torvane/arm64-$(cat -- "${torvane_arm64_recipe[@]}" | sha256sum | cut -c 1-16)
    mkdir -p -- "$sysroot"
    exec {lock}>"$sysroot.lock"
    flock "$lock"
    # In the background, since "set -e" does nothing where the status is looked at.
    (
        set -e
        [ -e "$sysroot/var/lib/dpkg/status" ] || arm64_new_sysroot
        arm64_add_packages "$@"
    ) </dev/null >"$sysroot.log" 2>&1 {lock}>&- &
    wait $! || { tail -n 40 -- "$sysroot.log" >&2; return 1; }
    exec {lock}>&-
}

arm64_new_sysroot() {
    local apt=$sysroot/var/lib/apt dpkg=$sysroot/var/lib/dpkg folder place=$sysroot/usr/lib/aarch64-linux-gnu
    say "Making a folder of ARM64 libraries: $sysroot"
    mkdir -p -- "$apt/lists/partial" "$apt/archives/partial" "$dpkg/info" "$dpkg/updates" "$sysroot/usr/lib/qt5"
    # Debian has one tree of these, below /usr.
    for folder in bin lib sbin; do
        mkdir -p -- "$sysroot/usr/$folder"
        ln -s "usr/$folder" "$sysroot/$folder"
    done
    ln -s /usr/lib/qt5/bin "$sysroot/usr/lib/qt5/bin"
    mkdir -p -- "$place"
    aarch64-linux-gnu-g++ -std=c++20 -O1 -shared -fPIC "${torvane_arm64_recipe[1]}" -o "$place/$arm64_emulated"
    # shellcheck disable=SC2016 # the variables are apt's
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' --format \
        'deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) $(COMPONENT)' |
        sort --unique >"$apt/sources.list"
    printf '1\n' >"$dpkg/info/format"
    printf '%s\n' "$(dpkg --print-architecture)" arm64 >"$dpkg/arch"
    for folder in "${torvane_arm64_presumed[@]}"; do
        printf '%s\n' "Package: $folder" "Status: install ok installed" "Architecture: arm64" "Multi-Arch: allowed" \
            "Maintainer: none" "Version: 9999" "Description: presumed" ""
    done >"$dpkg/status"
}

arm64_apt() { # arm64_apt ARGUMENT...: apt-get with the sysroot's files, and the settings of the system otherwise
    local apt=$sysroot/var/lib/apt
    apt-get -o APT::Architecture=arm64 -o APT::Architectures::=arm64 -o APT::Sandbox::User= -o Acquire::Languages=none \
        -o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=/dev/null -o "Dir::State=$apt" \
        -o "Dir::State::status=$sysroot/var/lib/dpkg/status" -o "Dir::Cache=$apt" -o "Dir::Cache::archives=$apt/archives" \
        --quiet --yes --no-install-recommends "$@"
}

arm64_add_packages() { # arm64_add_packages PACKAGE...
    local dpkg=$sysroot/var/lib/dpkg archives=$sysroot/var/lib/apt/archives package missing=()
    for package in "$@"; do
        grep --quiet --line-regexp --fixed-strings "Package: $package" "$dpkg/status" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    arm64_apt update
    arm64_apt install --download-only "${missing[@]}"
    export sysroot
    export -f arm64_unpack
    # shellcheck disable=SC2016 # the variables are those of the shells that are started
    printf '%s\0' "$archives"/*.deb |
        xargs -0 --max-procs="$(nproc)" --max-args=8 bash -euo pipefail -c 'for file; do arm64_unpack "$file"; done' _
    # An absolute link would lead out of the sysroot.
    find "$sysroot" -type l -lname '/*' ! -path "$sysroot/usr/lib/qt5/bin" -printf '%l\0%p\0' |
        while IFS= read -r -d '' target && IFS= read -r -d '' link; do
            ln --symbolic --no-dereference --force --relative "$sysroot$target" "$link"
        done
    cat -- "$dpkg"/status "$archives"/*.status >"$dpkg/status-new"
    mv -- "$dpkg/status-new" "$dpkg/status"
    rm -- "$archives"/*.deb "$archives"/*.status
}

# arm64_unpack FILE: unpacks a package without what is for people, and enters it into dpkg's database with the places that
# its files have here. No script of it runs.
arm64_unpack() {
    local name kind info=$sysroot/var/lib/dpkg/info part
    name=$(dpkg-deb --field "$1" Package)
    kind=$(dpkg-deb --field "$1" Multi-Arch)
    [ "$kind" != same ] || name+=:arm64
    dpkg-deb --fsys-tarfile "$1" |
        tar --extract --verbose --keep-directory-symlink --no-same-owner --directory="$sysroot" \
            --exclude=./usr/lib/qt5/bin --exclude='./usr/share/doc/*' --exclude='./usr/share/locale/*' \
            --exclude='./usr/share/man/*' |
        sed -e "s|^\.|$sysroot|" -e 's|/$||' >"$info/$name.list"
    mkdir -- "$1.control"
    dpkg-deb --control "$1" "$1.control"
    for part in symbols shlibs md5sums; do
        [ ! -e "$1.control/$part" ] || mv -- "$1.control/$part" "$info/$name.$part"
    done
    { sed '/^Package:/a Status: install ok installed' "$1.control/control"; echo; } >"$1.status"
    rm -r -- "$1.control"
}
