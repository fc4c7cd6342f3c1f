# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Debian's packages for ARM64: cross-built, held against those for this machine, and tried under QEMU. To be sourced by
# scripts/test-packages, which has pack and fail.

ready_arm64() { # sets sysroot
    local libraries
    arm64_libraries "${torvane_build_packages[@]}" "${torvane_gui_packages[@]}" "${torvane_fleet_packages[@]}"
    arm64_sysroot "${libraries[@]}"
}

# pack_arm64 BUILD FOLDER: from the sources in the current folder, behind ready_arm64
pack_arm64() {
    local folders="$sysroot/lib/aarch64-linux-gnu;$sysroot/usr/lib/aarch64-linux-gnu"
    cmake --preset arm64 -B "$1" -DTORVANE_ARM64_SYSROOT="$sysroot" -DCMAKE_INSTALL_PREFIX=/usr \
        -DCMAKE_INSTALL_LIBDIR=lib/aarch64-linux-gnu \
        -DTORVANE_BUILD_TESTS=OFF -DTORVANE_BUILD_GUI=ON -DTORVANE_BUILD_FLEET=ON </dev/null >&2
    cmake --build "$1" </dev/null >&2
    DEB_HOST_ARCH=arm64 DPKG_ADMINDIR=$sysroot/var/lib/dpkg \
        pack "$1" "$2" -D "CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS=$folders"
}

# unpack FOLDER ROOT ARCHITECTURE TRIPLET: all packages of the folder into one tree, and what they say of themselves
# beside it, in words that are the same for each architecture.
unpack() {
    local package file
    mkdir -- "$2"
    for package in torvane torvane-gui torvane-simulator; do
        file=$(printf '%s\n' "$1/$package"_*_"$3.deb")
        dpkg-deb --extract "$file" "$2"
        dpkg-deb --contents "$file" | sed -e "s/$4/TRIPLET/" -e 's/^\(\S* \S*\) *[0-9]* \S* \S*/\1/'
        # Versions may differ, as symbols are older or newer on an architecture.
        dpkg-deb --field "$file" | sed -e "s/^Architecture: $3$//" -e '/^Installed-Size/d' -e 's/ ([^)]*)//g'
    done >"$2.words"
    mv -- "$2/usr/lib/$4" "$2/usr/lib/TRIPLET"
}

# The packages of two architectures hold the same, but for what is machine code.
compare_architectures() { # compare_architectures HERE ARM64
    local here=$scratch/here there=$scratch/there code
    unpack "$1" "$here" "$(dpkg --print-architecture)" "$(dpkg-architecture --query DEB_HOST_MULTIARCH)"
    unpack "$2" "$there" arm64 aarch64-linux-gnu
    diff -- "$here.words" "$there.words" >&2 || fail "The packages for ARM64 have other contents or fields."
    code="usr/bin/torvane usr/bin/torvane_console usr/bin/torvane_gui usr/lib/TRIPLET/torvane/torvane_sim.cti"
    [ "$(diff --recursive --brief -- "$here" "$there" | sed "s|.* and $there/\(.*\) differ|\1|" | xargs)" = "$code" ] ||
        fail "Not the machine code alone differs:" "$(diff --recursive --brief -- "$here" "$there")"
    cmp -- "$1"/torvane-ansible_*.deb "$2"/torvane-ansible_*.deb || fail "The collection differs."
}

# Behind compare_architectures: the unpacked programs find the simulated cameras.
run_arm64() {
    local root=$scratch/there run=(qemu-aarch64-static -L "$sysroot")
    local -x GENICAM_GENTL64_PATH=$root/usr/lib/TRIPLET/torvane
    "${run[@]}" "$root/usr/bin/torvane_console" --list-devices </dev/null | grep --quiet sim-u3v-locked ||
        fail "torvane_console for ARM64 lists no simulated cameras."
    "${run[@]}" "$root/usr/bin/torvane" list --quick </dev/null | grep --quiet G5-0001 ||
        fail "torvane for ARM64 lists no simulated cameras."
    "${run[@]}" "$root/usr/bin/torvane_gui" --version | grep --quiet "torvane_gui 1.0.0.0" ||
        fail "torvane_gui for ARM64 does not tell its version."
}
