# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Wine, to run what was built for Windows. To be sourced.

# shellcheck disable=SC2034 # for the scripts that run it
torvane_wine_packages=(wine64 wine xvfb)

# start_wine FOLDER [SIZE]: Wine with its files in FOLDER, on a screen of its own, since a console of Windows is a window,
# and one process that stays. The first process starts Wine's services, and the first window its desktop, both of which
# inherit the streams: were it a test's, whoever reads that test's output would wait for them. What is installed in it
# stays out of this user's menus.
start_wine() {
    local display
    export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    unset WAYLAND_DISPLAY
    mkdir -p -- "$WINEPREFIX"
    display=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${2:-1280x800}x24" -nolisten tcp -noreset 3>"$display" >/dev/null 2>&1 &
    wine_screen=$!
    until [ -s "$display" ]; do sleep 0.05; done
    DISPLAY=:$(<"$display")
    export DISPLAY
    rm -- "$display"
    coproc torvane_wine { exec /usr/lib/wine/wine64 cmd >/dev/null 2>&1; }
    # A second one, in a window, returns when the first has made the files. On a busy machine it gives up before the first
    # has begun.
    local try
    for try in {1..10}; do
        ! /usr/lib/wine/wine64 start /wait cmd /c exit </dev/null >/dev/null 2>&1 || return 0
        sleep "$try"
    done
    printf 'Wine does not start in %s.\n' "$WINEPREFIX" >&2
    return 1
}

stop_wine() {
    [ -n "${wine_screen-}" ] || return 0
    wineserver -k || true
    kill "$wine_screen" 2>/dev/null || true
}
