# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# What scripts/run, scripts/test and .ci/run share: packages and builds. To be sourced.
#
# Everything here prints to standard error and leaves standard input alone, so that both belong to the program that
# is run in the end.

torvane_root=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/.." && pwd)

torvane_build_packages=(
    g++ cmake ninja-build pkg-config
    libcli11-dev libpugixml-dev libtomlplusplus-dev libzip-dev
)
# The fleet program's (TORVANE_BUILD_FLEET), of Qt the core only.
# shellcheck disable=SC2034 # for the scripts that build or test it
torvane_fleet_packages=(qtbase5-dev libutf8proc-dev)
# The window's; the console does without (TORVANE_BUILD_GUI=OFF).
# shellcheck disable=SC2034 # for the scripts that build or test it
torvane_gui_packages=(qtbase5-dev)
# A screen, a window manager, a font, a user and a camera for pictures.
torvane_screen_packages=(xvfb xauth openbox fonts-dejavu-core xdotool imagemagick)
# shellcheck disable=SC2034 # for the scripts that test
torvane_test_packages=(
    libgtest-dev libgmock-dev
    libaravis-dev libusb-1.0-0-dev
    python3 python3-jsonschema
    "${torvane_screen_packages[@]}"
)
# What runs the Ansible collection, and the PCs that it is tried on.
torvane_ansible_packages=(ansible-core openssh-client openssh-server)
# shellcheck disable=SC2034 # for the scripts that fuzz
torvane_fuzz_packages=(clang-14 libclang-rt-14-dev)

say() { printf '%s\n' "$*" >&2; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo -- "$@"
    else
        say "This needs root or sudo: $*"
        return 1
    fi
}

# Installs those of the packages that are missing, and nothing on a system without Debian's package manager.
ensure_packages() {
    local missing=() package
    if [ ! -e /etc/debian_version ]; then
        say "Not a Debian system. The packages needed have these names in Debian 12: $*"
        return 0
    fi
    for package in "$@"; do
        [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing Debian packages: ${missing[*]}"
    as_root apt-get update </dev/null >&2
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}" </dev/null >&2
}

# unpack_packages FOLDER PACKAGE...: fetches those that are not installed and unpacks each into a folder of its name, where
# it stays for the next time. Nothing is installed, and so no server is started. What can't be had is told in one line.
unpack_packages() {
    local folder=$1 package scratch is_updated=
    shift
    [ -e /etc/debian_version ] || return 0
    for package in "$@"; do
        [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null)" != installed ] || continue
        [ ! -e "$folder/$package" ] || continue
        scratch=$(mktemp -d)
        if [ -z "$is_updated" ] && ! apt-cache show "$package" >/dev/null 2>&1; then
            is_updated=yes
            as_root apt-get update </dev/null >/dev/null 2>&1 || true
        fi
        if (cd -- "$scratch" && apt-get download "$package" && dpkg-deb --extract ./*.deb unpacked) >/dev/null 2>&1; then
            mkdir -p -- "$folder"
            mv -- "$scratch/unpacked" "$folder/$package"
        else
            say "The package $package can't be had here."
        fi
        rm -rf -- "$scratch"
    done
}

# Where systemd runs, an sshd that is installed is started, and opens a port that nobody asked a test for.
ensure_ansible_packages() {
    if [ -d /run/systemd/system ] && [ ! -x /usr/sbin/sshd ]; then
        say "Install openssh-server yourself, if you want the Ansible collection tried: it opens port 22."
    elif ! ensure_packages "${torvane_ansible_packages[@]}"; then
        say "Ansible or sshd can't be installed, so the collection is not tried."
    fi
}

# build PRESET [OPTION...]: configures with the options and builds. The folder is build/PRESET.
build() {
    configure_preset "$@"
    build_targets "$1"
}

configure_preset() { # configure_preset PRESET [OPTION...]
    local messages
    messages=$(cd -- "$torvane_root" && cmake --preset "$@" 2>&1 </dev/null) || { say "$messages"; return 1; }
}

build_targets() { # build_targets PRESET [TARGET...]: all, unless some are named
    local preset=$1
    shift
    [ $# -eq 0 ] || set -- --target "$@"
    (cd -- "$torvane_root" && cmake --build --preset "$preset" "$@") </dev/null >&2
}
