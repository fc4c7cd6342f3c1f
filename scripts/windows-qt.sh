# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# Qt for Windows, cross-built from the distribution's source package into the prefix of windows-libraries.sh: the core for
# torvane, and on top of it what the window and its tests need. To be sourced behind that script.
#
# The tools moc, rcc and uic are of this machine. Sources and build stay in the prefix until the window's part is made too,
# since it goes on where the core's ended.

# shellcheck disable=SC2034,SC2154 # the packages are for the scripts that build it; prefix is set by windows_libraries
torvane_windows_qt_packages=(make)

qt_configure() {
    source_package qtbase-opensource-src "$prefix/qt"
    rm -rf -- "$prefix/qt/fetched" "$prefix/qt/apt"
    # Its compilers are those with the standard library's threads, as in the toolchain file.
    sed -i 's/}\(gcc\|g++\)$/}\1-posix/' "$prefix/qt/qtbase-opensource-src/mkspecs/win32-g++/qmake.conf"
    mkdir -- "$prefix/qt/build"
    (
        cd -- "$prefix/qt/build" || exit
        ../qtbase-opensource-src/configure -opensource -confirm-license -release -static \
            -xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32- \
            -prefix "$prefix" -hostprefix "$prefix" -nomake examples -nomake tests -nomake tools \
            -qt-zlib -qt-libpng -qt-pcre -qt-harfbuzz -no-opengl -no-dbus -no-icu -no-openssl -no-schannel \
            -no-freetype -no-libjpeg -no-feature-sql -no-feature-sqlmodel -no-feature-network \
            -no-feature-concurrent -no-feature-xml -no-feature-printer -no-feature-direct2d \
            -no-feature-tabletevent -no-feature-vulkan >&2
        make sub-src-qmake_all >&2
    )
}

qt_make() { # qt_make PART...: builds these parts of Qt's sources, and what they need, and installs them
    make -C "$prefix/qt/build/src" --jobs="$(nproc)" "${@/#/sub-}" >&2
    local part
    for part in "$@"; do
        make -C "$prefix/qt/build/src" "sub-$part-install_subtargets" >&2
    done
}

library_qt_core() {
    rm -rf -- "$prefix/qt" # of a build that was interrupted
    qt_configure
    qt_make moc rcc corelib winmain
    # The CMake package asks for these.
    make -C "$prefix/qt/build" sub-qmake-qmake-aux-pro-install_subtargets install_mkspecs >&2
}

library_qt_widgets() {
    qt_make uic testlib gui platformsupport widgets plugins
    rm -rf -- "$prefix/qt"
}
