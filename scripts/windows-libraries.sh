# shellcheck shell=bash
# SPDX-License-Identifier: MIT
# The libraries for Windows, cross-built from the distribution's source packages into a prefix outside the tree. To be
# sourced behind lib.sh.
#
# The libraries of headers alone are those of torvane_build_packages. The prefix is named after this file, windows-qt.sh,
# the toolchain and the compiler: a change of any makes a new one.

torvane_windows_packages=(
    g++-mingw-w64-x86-64-posix libz-mingw-w64-dev
    ca-certificates debian-archive-keyring dpkg-dev googletest
)
torvane_windows_toolchain=$torvane_root/cmake/TorvaneMinGW.cmake

windows_prefix() { # prints the folder
    local recipe
    recipe=$(cat -- "${BASH_SOURCE[0]}" "$torvane_root/scripts/windows-qt.sh" "$torvane_windows_toolchain" \
        <(x86_64-w64-mingw32-g++-posix --version) | sha256sum | cut -c 1-16)
    printf '%s/torvane/mingw-%s\n' "${XDG_CACHE_HOME:-$HOME/.cache}" "$recipe"
}

# source_package NAME FOLDER: fetches a source package of the distribution, checks its signature's hashes and unpacks it
# to FOLDER/NAME. The system's own lists are left alone: they may lack the sources.
source_package() {
    local name=$1 folder=$2 apt=$2/apt
    local options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o Dir::Etc::sourceparts=/dev/null
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt/cache" -o APT::Sandbox::User=)
    if [ ! -e "$apt/sources.list" ]; then
        mkdir -p -- "$apt/lists/partial" "$apt/cache/archives/partial"
        # shellcheck disable=SC2016 # the variables are apt's
        apt-get indextargets 'Created-By: Packages' 'Origin: Debian' --format \
            'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) $(COMPONENT)' |
            sort --unique >"$apt/sources.list"
        apt-get "${options[@]}" --quiet update >&2
    fi
    mkdir -p -- "$folder/fetched"
    (cd -- "$folder/fetched" && apt-get "${options[@]}" --quiet --download-only source "$name" >&2)
    dpkg-source --no-check --no-copy --extract "$folder/fetched/$name"_*.dsc "$folder/$name" >&2
}

# cmake_library SOURCE [OPTION...]: builds a library and installs it into the prefix.
cmake_library() {
    local source=$1 build
    build=$source.build
    shift
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$torvane_windows_toolchain" \
        -DTORVANE_WINDOWS_PREFIX="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
        -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF "$@" >&2
    cmake --build "$build" >&2
    cmake --install "$build" >&2
}

library_zlib() { # the compiler's own is there as a library of its own too, which would win
    local from=/usr/x86_64-w64-mingw32
    install -D --mode=0644 --target-directory="$prefix/include" "$from"/include/zlib.h "$from"/include/zconf.h
    install -D --mode=0644 --target-directory="$prefix/lib" "$from"/lib/libz.a
    mkdir -p -- "$prefix/lib/pkgconfig"
    sed "s|$from|$prefix|g" "$from"/lib/pkgconfig/zlib.pc >"$prefix/lib/pkgconfig/zlib.pc"
}

library_cli11() { # headers alone, and their CMake package, which finds them by its own place
    mkdir -p -- "$prefix/include" "$prefix/share/cmake"
    cp -r -- /usr/include/CLI "$prefix/include"
    cp -r -- /usr/share/cmake/CLI11 "$prefix/share/cmake"
}

library_tomlplusplus() { # headers alone too; the distribution's CMake package is of the library that it compiles of them
    mkdir -p -- "$prefix/include" "$prefix/share/cmake/tomlplusplus"
    cp -r -- /usr/include/toml++ "$prefix/include"
    cat >"$prefix/share/cmake/tomlplusplus/tomlplusplusConfig.cmake" <<END
add_library(tomlplusplus::tomlplusplus INTERFACE IMPORTED)
target_include_directories(tomlplusplus::tomlplusplus INTERFACE "$prefix/include")
END
}

library_googletest() {
    cp -r -- /usr/src/googletest "$scratch_sources/googletest"
    cmake_library "$scratch_sources/googletest"
}

library_pugixml() {
    source_package pugixml "$scratch_sources"
    cmake_library "$scratch_sources/pugixml"
}

library_libzip() {
    source_package libzip "$scratch_sources"
    cmake_library "$scratch_sources/libzip" -DENABLE_WINDOWS_CRYPTO=ON -DENABLE_OPENSSL=OFF -DENABLE_GNUTLS=OFF \
        -DENABLE_MBEDTLS=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF \
        -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF
}

library_utf8proc() {
    source_package utf8proc "$scratch_sources"
    cmake_library "$scratch_sources/utf8proc"
    # Its own file speaks of the shared library alone.
    sed -i 's/-DUTF8PROC_EXPORTS/-DUTF8PROC_STATIC/' "$prefix/lib/pkgconfig/libutf8proc.pc"
}

# windows_libraries NAME...: sets prefix, and has library_NAME put into it what is not there yet. Two runs at once wait
# for each other.
windows_libraries() {
    local name lock scratch_sources=
    prefix=$(windows_prefix)
    mkdir -p -- "$prefix/done"
    exec {lock}>"$prefix/lock"
    flock "$lock"
    for name in "$@"; do
        [ ! -e "$prefix/done/$name" ] || continue
        say "Building for Windows: $name"
        [ -n "$scratch_sources" ] || scratch_sources=$(mktemp -d)
        # In the background, since "set -e" does nothing where the status is looked at.
        (set -e; "library_$name") </dev/null 2>"$prefix/$name.log" {lock}>&- &
        wait $! || {
            tail -n 40 -- "$prefix/$name.log" >&2
            rm -rf -- "$scratch_sources"
            return 1
        }
        touch -- "$prefix/done/$name"
    done
    [ -z "$scratch_sources" ] || rm -rf -- "$scratch_sources"
    exec {lock}>&-
}
