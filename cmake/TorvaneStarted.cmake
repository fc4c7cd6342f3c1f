# SPDX-License-Identifier: MIT
# torvane_started(TARGET): sets STARTED_TARGET to the path by which tests start the program of a target as a child, and
# STARTED_FOLDER to what is to them the build folder. Where a program needs an emulator that the kernel doesn't know of,
# that is a small program of the PC itself, at the same place of another folder.
if(UNIX AND CMAKE_CROSSCOMPILING_EMULATOR)
    set(STARTED_FOLDER ${PROJECT_BINARY_DIR}/emulated)
    file(MAKE_DIRECTORY ${STARTED_FOLDER})
    file(CREATE_LINK ${PROJECT_BINARY_DIR}/simulator ${STARTED_FOLDER}/simulator SYMBOLIC)
    find_program(TORVANE_NATIVE_CXX c++ REQUIRED)
else()
    set(STARTED_FOLDER ${PROJECT_BINARY_DIR})
endif()

function(torvane_started target)
    if(STARTED_FOLDER STREQUAL PROJECT_BINARY_DIR)
        set(STARTED_${target} $<TARGET_FILE:${target}> PARENT_SCOPE)
        return()
    endif()
    get_target_property(folder ${target} BINARY_DIR)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_BINARY_DIR})
    set(launcher ${STARTED_FOLDER}/${folder}/${target})
    set(source ${PROJECT_SOURCE_DIR}/cmake/EmulatedProgram.cpp)
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR "\", \"" emulator)
    file(MAKE_DIRECTORY ${STARTED_FOLDER}/${folder})
    add_custom_command(OUTPUT ${launcher}
        COMMAND ${TORVANE_NATIVE_CXX} -std=c++20 "-DEMULATOR=\"${emulator}\""
            "-DPROGRAM=\"$<TARGET_FILE:${target}>\"" ${source} -o ${launcher}
        DEPENDS ${source} VERBATIM)
    add_custom_target(started_${target} ALL DEPENDS ${launcher})
    set(STARTED_${target} ${launcher} PARENT_SCOPE)
endfunction()
