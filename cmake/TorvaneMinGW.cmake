# SPDX-License-Identifier: MIT
# Toolchain: 64-bit Windows programs by Debian's MinGW-w64, tried under Wine. The variant with POSIX threads has
# std::mutex and std::thread. TORVANE_WINDOWS_PREFIX is the prefix with the libraries for Windows (scripts/windows-libraries.sh).
#
# Everything is linked statically, so that a program or a producer needs the system's own libraries and no others.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
foreach(kind IN ITEMS EXE MODULE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT -static)
endforeach()

set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TORVANE_WINDOWS_PREFIX)
# Behind the prefix the compiler's own folder, whose libraries of the system Qt's CMake package looks up by name.
set(CMAKE_FIND_ROOT_PATH ${TORVANE_WINDOWS_PREFIX} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind IN ITEMS LIBRARY INCLUDE PACKAGE)
    set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()

set(ENV{PKG_CONFIG_LIBDIR} ${TORVANE_WINDOWS_PREFIX}/lib/pkgconfig:${TORVANE_WINDOWS_PREFIX}/share/pkgconfig)
set(PKG_CONFIG_ARGN --static)

# Debian's "wine" starts this one, behind a look for a 32-bit Wine that is not needed here.
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/lib/wine/wine64)
