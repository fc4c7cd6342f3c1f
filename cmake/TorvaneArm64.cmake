# SPDX-License-Identifier: MIT
# Toolchain: programs for 64-bit ARM by Debian's cross compiler, tried under QEMU. TORVANE_ARM64_SYSROOT is the folder with
# the libraries for it (scripts/arm64.sh).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
# Notes on what other versions of the compiler hand over otherwise: all here is of one version.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TORVANE_ARM64_SYSROOT)
set(CMAKE_SYSROOT ${TORVANE_ARM64_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind IN ITEMS LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()

set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})

# Files are opened in the sysroot first: libraries, the keyboard's tables. Whether there is one is asked of the PC alone,
# and Qt asks so for the folder of its plugins.
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64-static -L ${CMAKE_SYSROOT}
    -E QT_PLUGIN_PATH=${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/qt5/plugins)
