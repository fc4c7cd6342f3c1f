# SPDX-License-Identifier: MIT
# torvane_program(TARGET): what each of our programs has on Windows beside its code. Those of the tests have it too, since
# they hand their arguments and folders on. Elsewhere it does nothing.
function(torvane_program target)
    if(MSVC)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
    elseif(WIN32)
        target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/packaging/windows/program.rc)
    endif()
endfunction()

if(WIN32)
    enable_language(RC)
endif()
