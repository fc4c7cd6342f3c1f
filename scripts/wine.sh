# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Wine, to run what was built for Windows. To be sourced.

# shellcheck disable=SC2034 # for the scripts that run it
torvane_wine_packages=(wine64 wine)

# start_wine FOLDER: Wine with its files in FOLDER, and one process that stays. The first process starts Wine's services,
# which inherit its streams: were it a test, whoever reads that test's output would wait for them.
start_wine() {
    export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
    unset DISPLAY WAYLAND_DISPLAY
    mkdir -p -- "$WINEPREFIX"
    coproc torvane_wine { exec /usr/lib/wine/wine64 cmd >/dev/null 2>&1; }
    # A second one returns when the first has made the files.
    /usr/lib/wine/wine64 cmd /c exit </dev/null >/dev/null 2>&1
}

stop_wine() {
    [ -z "${WINEPREFIX-}" ] || wineserver -k || true
}
