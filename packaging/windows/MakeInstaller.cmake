# SPDX-License-Identifier: MIT
# Run by CPack over the staged files: makes the lists of what the installer unpacks and the uninstaller removes, so that
# each knows every file by name and nobody else's, and has NSIS compile the installer.
set(stage ${CPACK_TEMPORARY_DIRECTORY})
file(GLOB_RECURSE files LIST_DIRECTORIES true RELATIVE ${stage} ${stage}/*)
list(SORT files)

set(unpack "")
set(remove "")
set(look "")
set(bytes 0)
foreach(file IN LISTS files)
    string(REPLACE / \\ there "${file}")
    if(IS_DIRECTORY ${stage}/${file})
        string(PREPEND remove "RMDir \"$INSTDIR\\${there}\"\n") # behind what is in it
        continue()
    endif()
    cmake_path(GET file PARENT_PATH folder)
    string(REPLACE / \\ folder "${folder}")
    string(APPEND unpack "SetOutPath \"$INSTDIR\\${folder}\"\nFile \"${stage}/${file}\"\n")
    string(PREPEND remove "Delete \"$INSTDIR\\${there}\"\n")
    if(file MATCHES "\\.(exe|cti)$")
        string(APPEND look "!insertmacro RefuseWhenInUse \"${there}\"\n")
    endif()
    file(SIZE ${stage}/${file} size)
    math(EXPR bytes "${bytes} + ${size}")
endforeach()

set(lists ${CPACK_TOPLEVEL_DIRECTORY}/files.nsh)
file(WRITE ${lists}
    "!macro UnpackFiles\n${unpack}!macroend\n"
    "!macro RemoveFiles\n${remove}!macroend\n"
    "!macro LookForUse\n${look}!macroend\n")
math(EXPR kilobytes "(${bytes} + 1023) / 1024")

set(installer ${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}-setup.exe)
execute_process(
    COMMAND ${CPACK_TORVANE_MAKENSIS} -V2 -WX -INPUTCHARSET UTF8
        -DVERSION=${CPACK_PACKAGE_VERSION} "-DPUBLISHER=${CPACK_PACKAGE_VENDOR}" -DKILOBYTES=${kilobytes}
        -DFILES=${lists} -DSTAGE=${stage} -DPATH_ENTRY=${CPACK_TORVANE_PATH_ENTRY}
        -DICON=${CPACK_TORVANE_SOURCE}/resources/application/torvane_gui.ico -DINSTALLER=${installer}
        ${CMAKE_CURRENT_LIST_DIR}/torvane.nsi
    COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_EXTERNAL_BUILT_PACKAGES ${installer})
