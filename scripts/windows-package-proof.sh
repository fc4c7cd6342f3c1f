# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# What is proved of the packages for Windows. To be sourced by scripts/package-windows, which has $made, $build and $scratch.
# shellcheck disable=SC2154

# The words of Wine's registry.
user_environment='HKCU\Environment'
machine_environment='HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment'
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\Torvane'

wine64() { timeout 120 /usr/lib/wine/wine64 "$@" </dev/null | tr --delete '\r'; }

version() { sed --quiet 's/^project(torvane VERSION \([0-9.]*\) .*/\1/p' "$torvane_root/CMakeLists.txt"; }

# --- What is in them ---------------------------------------------------------------------------------------------------

prove_layout() { # prove_layout FOLDER
    local expected="CHANGELOG.md CONTRIBUTING.md LICENSE.txt NOTICES.txt README.md docs examples simulator"
    expected+=" torvane.exe torvane_console.exe torvane_gui.exe"
    [ "$(cd -- "$1" && printf '%s\n' * | LC_ALL=C sort | paste --serial --delimiters=' ')" = "$expected" ] ||
        fail "The .zip holds: $(ls -- "$1")"
    [ -e "$1/simulator/torvane_sim.cti" ] || fail "The .zip has no simulated cameras."
}

# All that a page links within the project is there.
prove_links() { # prove_links FOLDER
    local page target
    while IFS= read -r page; do
        while IFS= read -r target; do
            [ -e "$(dirname -- "$page")/$target" ] || fail "$page leads to $target, which is not there."
        done < <(grep --only-matching ']([^)#]*' "$page" | sed 's/^](//' | grep --invert-match '^https\?:' | sed '/^$/d')
    done < <(find "$1" -name '*.md')
}

# They need the system's own libraries and no others: those that Wine has too.
prove_imports() { # prove_imports FILE
    local library
    for library in $(x86_64-w64-mingw32-objdump --private-headers "$1" | sed --quiet 's/.*DLL Name: //p'); do
        [ -e "/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/${library,,}" ] || fail "$1 needs $library."
    done
}

prove_resources() { # prove_resources FILE: version and icon, and of a program the manifest
    local sizes
    wrestool --extract --type=16 --raw "$1" | tr --delete '\0' | grep --text --quiet "FileVersion.*$(version)\.0" ||
        fail "$1 does not tell its version."
    wrestool --extract --type=14 "$1" >"$scratch/icon.ico"
    sizes=$(icotool --list "$scratch/icon.ico" | sed 's/.*--width=\([0-9]*\).*/\1/' | paste --serial --delimiters=' ')
    [ "$sizes" = "16 20 24 32 40 48 64 256" ] || fail "$1 has an icon of these sizes: $sizes"
    [[ $1 == *.cti ]] || [[ $(wrestool --extract --type=24 --raw "$1") == *'>UTF-8<'*'PerMonitor<'* ]] ||
        fail "$1 has no manifest."
}

prove_zip() {
    local folder=$scratch/unzipped file
    unzip -q "$made"/*.zip -d "$folder"
    folder=$folder/torvane-$(version)-windows-x64
    prove_layout "$folder"
    prove_links "$folder"
    for file in "$folder"/*.exe "$folder"/simulator/*.cti; do
        prove_imports "$file"
        prove_resources "$file"
    done
    folder=$(winepath --windows "$folder")
    GENICAM_GENTL64_PATH=$folder'\simulator' prove_programs "$folder\\"
}

# --- Programs that run ------------------------------------------------------------------------------------------------

lists_cameras() { # lists_cameras COMMAND: by the command interpreter, as the user's search path has it
    local text
    text=$(wine64 cmd /c "$@")
    [[ $text == *G5-0001*U3-0007* ]] || fail "'$*' lists no simulated cameras but: $text"
}

shows_cameras() { # shows_cameras COMMAND...: the window appears, and has looked at the last camera
    local -x TORVANE_SIM_LOG=$scratch/sim.log
    rm -f -- "$TORVANE_SIM_LOG"
    wine64 cmd /c "$@" &
    await "the window" has_window
    await "the last camera" grep --quiet 'IFGetDeviceInfo(h.*"sim-u3v-locked", 7) = 0' "$TORVANE_SIM_LOG"
    wine64 taskkill /im torvane_gui.exe >/dev/null
    await "the end of the window" has_ended $!
}

has_window() { [ -n "$(xdotool search --onlyvisible --name '^torvane_gui$' 2>/dev/null)" ]; }

prove_programs() { # prove_programs PREFIX: what the programs' names are called by
    lists_cameras "$1torvane_console" --list-devices
    lists_cameras "$1torvane" list
    shows_cameras "$1torvane_gui"
}

# --- Installed --------------------------------------------------------------------------------------------------------

value() { # value KEY NAME: prints the type and the text
    wine64 reg query "$1" /v "$2" | iconv --from-code=cp437 --to-code=utf-8 | sed --quiet "s/^ *$2 *\(REG_[A-Z_]*\) */\1 /p"
}

expect_value() { # expect_value KEY NAME TEXT
    local now
    now=$(value "$1" "$2")
    [ "$now" = "$3" ] || fail "$1 has $2 = $now, not $3"
}

# All files, and what the registry holds where an installer writes, one text: the rest of it changes by itself.
take_stock() { # take_stock FILE
    local key exported=$scratch/exported
    (cd -- "$WINEPREFIX/drive_c" && find . -printf '%y %p %s\n' | sed 's/^d \(.*\) .*/\1/' | sort) >"$1"
    for key in HKCU 'HKLM\Software' "${machine_environment%\\*}"; do
        wine64 reg export "$key" "$(winepath --windows "$exported")" /y >/dev/null
        # Wine's own state, and its console's, which writes down how it looked under each program.
        iconv --from-code=utf-16 --to-code=utf-8 "$exported" | tr --delete '\r' |
            sed '/^\[HKEY_CURRENT_USER\\\(Console\|Software\\Wine\)/,/^$/d' >>"$1"
    done
}

expect_same_stock() { # expect_same_stock BEFORE AFTER TEXT
    diff "$1" "$2" >&2 || fail "$3"
}

environment_of() { # environment_of SCOPE
    if [ "$1" = AllUsers ]; then printf '%s\n' "$machine_environment"; else printf '%s\n' "$user_environment"; fi
}

root_of() { if [ "$1" = AllUsers ]; then echo HKLM; else echo HKCU; fi; } # root_of SCOPE

set_value() { wine64 reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null; } # set_value KEY NAME TYPE TEXT

# A PC on which others have installed before, and set a driver up.
seed_environment() {
    wine64 reg add "HKCU\\${uninstall_key%\\*}" /f >/dev/null
    set_value "$user_environment" Path REG_EXPAND_SZ '%SystemRoot%\own;D:\tools'
    set_value "$machine_environment" GENICAM_GENTL64_PATH REG_SZ 'D:\driver'
}

# The version before, with a file that the present one has no more.
make_former() {
    mkdir -p -- "$scratch/extra"
    touch -- "$scratch/extra/former.txt"
    pack "$scratch/former" -G External -D CPACK_PACKAGE_VERSION=0.9.0 -D CPACK_INSTALLED_DIRECTORIES="$scratch/extra;."
}

install_silently() { # install_silently PROGRAM TEXT: sets $status. An installer wants no quotes around a folder with blanks
    local words
    read -ra words <<<"$2"
    status=0
    timeout 120 /usr/lib/wine/wine64 "$1" "${words[@]}" </dev/null >/dev/null 2>&1 || status=$?
}

prove_entries() { # prove_entries SCOPE FOLDER PATH-BEFORE
    local root menu="$WINEPREFIX/drive_c/ProgramData"
    root=$(root_of "$1")
    [ "$1" = AllUsers ] || menu="$WINEPREFIX/drive_c/users/$(id --user --name)/AppData/Roaming"
    expect_value "$(environment_of "$1")" Path "$3;$2"
    expect_value "$user_environment" GENICAM_GENTL64_PATH "REG_SZ $2\\simulator"
    expect_value "$machine_environment" GENICAM_GENTL64_PATH 'REG_SZ D:\driver'
    expect_value "$root\\$uninstall_key" DisplayVersion "REG_SZ $(version)"
    expect_value "$root\\$uninstall_key" Publisher "REG_SZ The Torvane developers"
    expect_value "$root\\$uninstall_key" QuietUninstallString "REG_SZ \"$2\\uninstall.exe\" /S /$1"
    menu+="/Microsoft/Windows/Start Menu/Programs/Torvane"
    [ "$(find "$menu" -name '*.lnk' | wc -l)" -eq 3 ] || fail "The Start menu holds: $(ls -- "$menu")"
}

# A program that runs keeps both installer and uninstaller from doing half of their work.
prove_refusals() { # prove_refusals INSTALLER FOLDER TEXT
    local installer=$1 folder=$2 silence
    [ -e "$scratch/silence" ] || mkfifo "$scratch/silence"
    exec {silence}<>"$scratch/silence"
    /usr/lib/wine/wine64 "$folder\\torvane_console.exe" <&"$silence" >"$scratch/dialogue" 2>&1 &
    await "the dialogue" grep --quiet 'Select an entry' "$scratch/dialogue"
    take_stock "$scratch/running"
    install_silently "$installer" "$3"
    [ "$status" -eq 2 ] || fail "The installer ended with $status over a program that runs."
    install_silently "$folder\\uninstall.exe" "/S _?=$folder"
    [ "$status" -eq 2 ] || fail "The uninstaller ended with $status under a program that runs."
    take_stock "$scratch/refused"
    expect_same_stock "$scratch/running" "$scratch/refused" "What was refused has changed something."
    wine64 taskkill /im torvane_console.exe /f >/dev/null
    exec {silence}>&-
}

uninstall() { # uninstall SCOPE FOLDER: as "Apps" does it silently; it goes on after its first process has ended
    local command
    command=$(value "$(root_of "$1")\\$uninstall_key" QuietUninstallString)
    printf '@%s\r\n' "${command#REG_SZ }" | iconv --from-code=utf-8 --to-code=cp437 >"$scratch/uninstall.bat"
    wine64 cmd /c "$(winepath --windows "$scratch/uninstall.bat")"
    await "the end of the uninstaller" test ! -e "$(winepath --unix "$2")/uninstall.exe"
    await "the end of the uninstaller" lacks_uninstaller
}

lacks_uninstaller() { ! pgrep --full '~nsu' >/dev/null; }

# prove_installer SCOPE FOLDER TEXT: a foreign file in the folder stays, and all else is as before.
prove_installer() {
    local scope=$1 folder=$2 path there
    there=$(winepath --unix "$folder")
    mkdir -p -- "$there"
    echo foreign >"$there/foreign.txt"
    path=$(value "$(environment_of "$scope")" Path)
    set_value "$user_environment" GENICAM_GENTL64_PATH REG_SZ "$folder\\simulator"
    take_stock "$scratch/before"
    install_silently "$scratch"/former/*-setup.exe "$3"
    [ "$status $(cd -- "$there" && echo former.*)" = "0 former.txt" ] ||
        fail "The former version was not installed: status $status"
    install_silently "$made"/*-setup.exe "$3"
    [ "$status" -eq 0 ] || fail "The installer ended with $status."
    [ ! -e "$there/former.txt" ] || fail "A file of the former version stayed."
    prove_entries "$scope" "$folder" "$path"
    prove_programs ""
    prove_refusals "$made"/*-setup.exe "$folder" "$3"
    say "Installed: $(du --apparent-size --summarize --block-size=1K "$there" | cut -f 1) KB in $folder"
    uninstall "$scope" "$folder"
    wine64 wineboot # the uninstaller's copy of itself goes with the next start of Windows
    take_stock "$scratch/after"
    expect_same_stock "$scratch/before" "$scratch/after" "The uninstaller has left something behind."
}

# A PATH of any length and type gets our folder and loses it again, and else stays to the letter. Wine itself takes no more
# than 1,000 characters over from the registry, so no program is started by it.
prove_path() { # prove_path SCOPE FOLDER TYPE TEXT EXTENDED
    local environment before
    environment=$(environment_of "$1")
    before=$(value "$environment" Path)
    set_value "$environment" Path "$3" "$4"
    install_silently "$made"/*-setup.exe "/S /$1"
    [ "$status" -eq 0 ] || fail "The installer ended with $status."
    expect_value "$environment" Path "$3 $5"
    uninstall "$1" "$2"
    expect_value "$environment" Path "$3 $4"
    set_value "$environment" Path "${before%% *}" "${before#* }"
}

prove_paths() {
    local user all='C:\Program Files\Torvane' long
    user='C:\users\'"$(id --user --name)"'\AppData\Local\Programs\Torvane'
    printf -v long '%%SystemRoot%%\\%04d;' {1..166}
    long+='D:\last tool'
    [ ${#long} -eq 3000 ] || fail "The path has ${#long} characters."
    prove_path CurrentUser "$user" REG_EXPAND_SZ "$long" "$long;$user"
    prove_path AllUsers "$all" REG_EXPAND_SZ "$long" "$long;$all"
    prove_path CurrentUser "$user" REG_SZ 'D:\one;;' "D:\\one;;$user;"
}

prove_packages() {
    # Texts of the command line become those of Windows by it, and its code page 437 goes with it.
    local -x LC_ALL=C.UTF-8
    step "Wine"
    start_wine "$scratch/wine"
    wine64 wineboot # its first run makes keys of the registry
    step "The .zip"
    prove_zip
    step "The version before"
    make_former
    seed_environment
    step "The installer, for the user"
    prove_installer CurrentUser 'C:\users\'"$(id --user --name)"'\AppData\Local\Programs\Torvane' '/S /CurrentUser'
    step "The installer, for all users, in a folder of choice"
    prove_installer AllUsers 'C:\Werkzeuge für Kameras\Torvane' '/S /D=C:\Werkzeuge für Kameras\Torvane'
    step "A PATH of 3,000 characters"
    prove_paths
}
