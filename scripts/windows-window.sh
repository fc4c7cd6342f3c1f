# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# The window for Windows in the hands of a user, on Wine's screen: a picture of it, and an umlaut that is typed. To be
# sourced behind screen.sh and wine.sh.

torvane_window_packages=("${torvane_screen_packages[@]}" x11-xkb-utils)

# As Wine names the files of this machine.
windows_path() { printf 'Z:%s\n' "${1//\//\\}"; }

# start_window_screen FOLDER: Wine with its files in FOLDER, a screen for wide windows of 192 dpi, one font, a window
# manager, and a keyboard with umlauts.
start_window_screen() {
    use_one_font
    start_wine "$1" 3840x2160
    start_window_manager
    setxkbmap de
}

# What is typed before Wine has given the focus is lost; then the user types it again.
unlock_with_umlaut() {
    click "$panel" 200 85
    press ctrl+a
    type_text "zürich"
    press Return
    sleep 1
    grep --quiet 'GCWritePort(h[0-9]*, 0x50002040, 8) = 0 \[7a c3 bc 72 69 63 68 00\]' "$log"
}

# try_window PROGRAM SIMULATOR FILE: shows the simulated cameras, takes the picture, and types a password into the
# panel of the first one. Its bytes must reach the camera in UTF-8.
try_window() {
    local list panel log=$scratch/calls
    local -x GENICAM_GENTL64_PATH TORVANE_SIM_LOG TORVANE_SIM_STATE
    GENICAM_GENTL64_PATH=$(windows_path "$2")
    TORVANE_SIM_LOG=$(windows_path "$log")
    TORVANE_SIM_STATE=$(windows_path "$scratch/state")
    # shellcheck disable=SC2034 # for await_window
    known_windows=()
    mkdir -p -- "$(dirname -- "$3")" "$scratch/empty"
    (cd -- "$scratch/empty" && exec /usr/lib/wine/wine64 "$1" </dev/null >/dev/null 2>&1) &
    await_window "the window"
    # shellcheck disable=SC2154 # set by await_window
    list=$window
    await "the last camera" grep --quiet 'IFGetDeviceInfo(h.*"sim-u3v-locked", 7) = 0' "$log"
    xdotool windowsize --sync "$list" 600 560
    save_picture "$3"

    double_click "$list" 200 42
    await_window "the panel"
    panel=$window
    click "$panel" 98 32
    await "the umlaut in UTF-8" unlock_with_umlaut
    close_window "$panel"
    close_window "$list"
    await "the end" grep --quiet 'GCCloseLib() = 0' "$log"
}
