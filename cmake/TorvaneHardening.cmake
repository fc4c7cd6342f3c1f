# SPDX-License-Identifier: MIT
# Optimised builds: what makes a fault in a reader of foreign data harder to use, as Debian asks of its packages, and no
# path of the build folder in what is built. The sanitizers' builds have better checks, and Windows' linker has its own.
if(MSVC OR MINGW OR TORVANE_SANITIZE)
    return()
endif()

set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
add_compile_options("$<${optimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
add_compile_options("$<${optimised}:-Wformat;-Werror=format-security>")
add_compile_options("$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>")
add_link_options("$<${optimised}:LINKER:-z,relro,-z,now>")
