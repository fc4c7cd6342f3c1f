# SPDX-License-Identifier: MIT
# What our files carry on Windows beside their code. Elsewhere these functions do nothing.

# torvane_program(TARGET [DESCRIPTION]): the manifest, and for a program of the product, which has a description, what
# torvane_product gives. Those of the tests have the manifest too, since they hand their arguments and folders on.
function(torvane_program target)
    if(MSVC)
        target_sources(${target} PRIVATE ${torvane_windows_resources}/program.manifest)
    elseif(WIN32)
        target_sources(${target} PRIVATE ${torvane_windows_resources}/manifest.rc)
        set_property(SOURCE ${torvane_windows_resources}/manifest.rc
            PROPERTY OBJECT_DEPENDS ${torvane_windows_resources}/program.manifest)
    endif()
    if(ARGC GREATER 1)
        torvane_product(${target} ${ARGV1})
    endif()
endfunction()

# torvane_product(TARGET DESCRIPTION): the icon, the version and what else Explorer shows of a file.
function(torvane_product target description)
    if(NOT WIN32)
        return()
    endif()
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        set(file_type VFT_APP)
        set(suffix ${CMAKE_EXECUTABLE_SUFFIX})
    else()
        set(file_type VFT_DLL)
        get_target_property(suffix ${target} SUFFIX)
    endif()
    string(REPLACE . , version_numbers ${PROJECT_VERSION}.0)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/product.rc.in ${torvane_windows_resources}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${torvane_windows_resources}/${target}.rc)
    set_property(SOURCE ${torvane_windows_resources}/${target}.rc
        PROPERTY OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/resources/application/torvane_gui.ico)
endfunction()

if(WIN32)
    enable_language(RC)
    set(torvane_windows_resources ${PROJECT_BINARY_DIR}/resources)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest.in
        ${torvane_windows_resources}/program.manifest @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/manifest.rc ${torvane_windows_resources}/manifest.rc COPYONLY)
endif()
