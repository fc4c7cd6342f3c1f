# SPDX-License-Identifier: MIT
# The language level, the warnings (an interface target that each room links PRIVATE) and the sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

add_library(torvane_warnings INTERFACE)
if(MSVC)
    target_compile_options(torvane_warnings INTERFACE /W4 /permissive- /utf-8)
else()
    target_compile_options(torvane_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # GCC 12 finds overlaps in its own std::string where there are none, in optimised builds (GCC bug 105651).
        target_compile_options(torvane_warnings INTERFACE -Wno-restrict)
    endif()
endif()

if(TORVANE_SANITIZE STREQUAL thread)
    add_compile_options(-fsanitize=thread)
    add_link_options(-fsanitize=thread)
elseif(TORVANE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
