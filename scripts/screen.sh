# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# A screen that nobody looks at, with a window manager and one font, and a user's hands and eyes on it: for the scripts
# that try the window from outside. To be sourced after lib.sh.
#
# Whoever starts the screen owns a folder $scratch for its files, and calls stop_screen in the end.

# use_one_font: whatever is asked for. Wine, which asks for what is not there, would take a font for mathematics.
use_one_font() {
    mkdir -- "$scratch/fonts"
    ln --symbolic --target-directory="$scratch/fonts" /usr/share/fonts/truetype/dejavu/DejaVuSans{,-Bold}.ttf
    cat >"$scratch/fonts.conf" <<-EOF
		<?xml version="1.0"?>
		<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
		<fontconfig>
		  <dir>$scratch/fonts</dir>
		  <cachedir>$scratch/font-cache</cachedir>
		  <match><edit name="family" mode="assign"><string>DejaVu Sans</string></edit></match>
		</fontconfig>
	EOF
    export FONTCONFIG_FILE=$scratch/fonts.conf
}

start_window_manager() {
    openbox >"$scratch/openbox.log" 2>&1 &
    screen_processes+=($!)
    await "the window manager" xdotool get_num_desktops
}

# start_screen: sets DISPLAY. The font, the style and the place of new windows are the same on every machine.
start_screen() {
    use_one_font
    export XDG_CONFIG_HOME=$scratch/config XDG_RUNTIME_DIR=$scratch/runtime
    # The drivers of OpenGL, which no window of ours uses, keep what they allocate, and the sanitizers tell of it.
    export QT_QPA_PLATFORM=xcb QT_STYLE_OVERRIDE=Fusion QT_XCB_GL_INTEGRATION=none
    unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME QT_SCALE_FACTOR QT_AUTO_SCREEN_SCALE_FACTOR QT_FONT_DPI
    mkdir -m 0700 -- "$XDG_CONFIG_HOME" "$XDG_RUNTIME_DIR"

    # It would reset itself when its last client leaves, and turn away the window manager that comes meanwhile.
    Xvfb -displayfd 3 -screen 0 1280x800x24 -wr -nolisten tcp -noreset 3>"$scratch/display" 2>"$scratch/xvfb.log" &
    screen_processes=($!)
    await "a display" test -s "$scratch/display"
    DISPLAY=:$(<"$scratch/display")
    export DISPLAY
    start_window_manager
}

stop_screen() {
    [ -z "${screen_processes-}" ] || kill "${screen_processes[@]}" 2>/dev/null || true
}

# await WHAT COMMAND...: tries the command until it succeeds, at most 30 seconds.
await() {
    local what=$1 deadline=$((SECONDS + 30))
    shift
    until "$@" >/dev/null 2>&1; do
        if [ $SECONDS -ge $deadline ]; then
            say "Waited in vain for $what: $*"
            return 1
        fi
        sleep 0.05
    done
}

# The windows of torvane_gui that can be seen, one a line; on Wine's screen it has a suffix.
windows() { xdotool search --onlyvisible --class '^torvane_gui(\.exe)?$' 2>/dev/null || true; }

window_count_is() { [ "$(windows | wc -l)" -eq "$1" ]; }

is_active() { [ "$(xdotool getactivewindow)" = "$1" ]; }

# await_window WHAT: waits for a window beside those in $known_windows, and for it to have the focus; sets $window.
await_window() {
    await "$1" has_new_window
    window=$(new_windows | tail -n 1)
    known_windows+=("$window")
    await "the focus of $1" is_active "$window"
}

has_new_window() { [ -n "$(new_windows)" ]; }

new_windows() { windows | grep --invert-match --line-regexp --fixed-strings "$(printf '%s\n' "${known_windows[@]}")"; }

# await_end WHAT PID: waits for a child and fails unless its exit status is 0.
await_end() {
    await "the end of $1" has_ended "$2"
    wait "$2" || {
        say "$1 ended with status $?"
        return 1
    }
}

has_ended() { ! kill -0 "$1"; }

click() { xdotool mousemove --window "$1" "$2" "$3" click 1; } # click WINDOW X Y

double_click() { xdotool mousemove --window "$1" "$2" "$3" click --repeat 2 --delay 50 1; }

type_text() { xdotool type --delay 20 -- "$1"; }

press() { xdotool key --delay 20 "$@"; }

# close_window WINDOW: as the user does, by the window manager's key. On a window that has just got the focus, one in a
# hundred has no effect; then the user presses it again.
close_window() {
    local try
    for try in first second third; do
        await "the focus" is_active "$1"
        press alt+F4
        for _ in {1..20}; do
            is_shown "$1" || return 0
            sleep 0.05
        done
        say "The $try key that closes a window had no effect"
    done
    return 1
}

# closes_after_showing_cameras LOG COMMAND...: torvane_gui, however it is started, shows the simulated cameras, which log
# there, and ends well when the user closes it.
closes_after_showing_cameras() {
    local log=$1
    shift
    rm -f -- "$log"
    known_windows=()
    TORVANE_SIM_LOG=$log "$@" </dev/null &
    await_window "the window"
    await "the last camera" grep --quiet 'IFGetDeviceInfo(h.*"sim-u3v-locked", 7) = 0' "$log"
    close_window "$window"
    await_end "the window" $!
    grep --quiet 'GCCloseLib() = 0' "$log"
}

is_shown() { windows | grep --quiet --line-regexp --fixed-strings -- "$1"; }

# save_picture FILE: all that stands on the screen, once it stands still.
save_picture() {
    local now=$scratch/now.png before=$scratch/before.png
    rm -f -- "$now" "$before"
    until cmp --silent "$before" "$now"; do
        [ ! -e "$now" ] || mv -- "$now" "$before"
        sleep 0.1
        import -window root -define png:exclude-chunks=date,time "$now"
    done
    convert "$now" -trim +repage -strip -define png:compression-level=9 -define png:exclude-chunks=date,time "$1"
}
