# SPDX-License-Identifier: MIT
# Run by CPack on what is to be packed: Debian has manual pages and changelogs compressed, without a time in them, and
# folders that everybody may read, whoever packs.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()

file(GLOB_RECURSE files
    ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/man/*.1
    ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*/changelog
    ${CPACK_TEMPORARY_DIRECTORY}/*/usr/share/doc/*/changelog.Debian)
execute_process(COMMAND gzip --best --no-name ${files} COMMAND_ERROR_IS_FATAL ANY)

file(GLOB packages ${CPACK_TEMPORARY_DIRECTORY}/*)
file(CHMOD_RECURSE ${packages} DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
