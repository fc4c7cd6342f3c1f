# SPDX-License-Identifier: MIT
# The packages for Windows: "cpack" in the build folder makes a .zip and, where NSIS is, an installer. Their layout is that
# of a folder of Windows, not of /usr: programs first, and what else there is below them.
set(layout COMPONENT windows EXCLUDE_FROM_ALL)

set(programs torvane_console)
if(TORVANE_BUILD_FLEET)
    list(APPEND programs torvane)
endif()
if(TORVANE_BUILD_GUI)
    list(APPEND programs torvane_gui)
endif()
install(TARGETS ${programs} RUNTIME DESTINATION . ${layout})
install(TARGETS torvane_sim LIBRARY DESTINATION simulator ${layout})

# install_text(FILE FOLDER NAME): with the line ends of Windows, and links that lead to where things are in this layout.
function(install_text file folder name)
    file(READ ${file} text)
    string(REPLACE "](LICENSE)" "](LICENSE.txt)" text "${text}")
    string(REGEX REPLACE "\\]\\(\\.\\./packaging/[a-z]+/" "](../examples/" text "${text}")
    set(made ${CMAKE_CURRENT_BINARY_DIR}/texts/${folder}/${name})
    file(CONFIGURE OUTPUT ${made} CONTENT "${text}" @ONLY NEWLINE_STYLE CRLF)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    install(FILES ${made} DESTINATION ${folder} COMPONENT windows EXCLUDE_FROM_ALL)
endfunction()

foreach(name IN ITEMS README.md CHANGELOG.md CONTRIBUTING.md)
    install_text(${PROJECT_SOURCE_DIR}/${name} . ${name})
endforeach()
install_text(${PROJECT_SOURCE_DIR}/LICENSE . LICENSE.txt)
set(TORVANE_NOTICES "" CACHE FILEPATH "The licences of what is linked statically, for the packages (make-notices)")
if(TORVANE_NOTICES)
    install_text(${TORVANE_NOTICES} . NOTICES.txt)
endif()
file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.md)
foreach(page IN LISTS pages)
    cmake_path(GET page FILENAME name)
    install_text(${page} docs ${name})
endforeach()
# For the PCs with Linux that docs/fleet.md speaks of, and so as they are.
install(FILES prometheus/torvane.rules.yml systemd/torvane-check.service.in systemd/torvane-check.timer
    DESTINATION examples ${layout})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/pictures ${PROJECT_SOURCE_DIR}/docs/schema DESTINATION docs ${layout})

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGING_INSTALL_PREFIX /)
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};${PROJECT_NAME};windows;/")
set(CPACK_PACKAGE_FILE_NAME torvane-${PROJECT_VERSION}-windows-x64)
find_program(CPACK_TORVANE_MAKENSIS makensis DOC "The compiler of the installer")
if(CPACK_TORVANE_MAKENSIS)
    # Not CPack's own generator of NSIS, whose handling of the PATH ends at 1,024 characters.
    list(APPEND CPACK_GENERATOR External)
    set(CPACK_EXTERNAL_ENABLE_STAGING ON)
    set(CPACK_EXTERNAL_PACKAGE_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/MakeInstaller.cmake)
    set(CPACK_TORVANE_SOURCE ${PROJECT_SOURCE_DIR})
    set(CPACK_TORVANE_PATH_ENTRY ${CMAKE_CURRENT_BINARY_DIR}/windows/path/torvane_path_entry.exe)
endif()
