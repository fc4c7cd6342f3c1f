# SPDX-License-Identifier: MIT
# The window's part on a desktop: manual page, menu entry, icon, and the metadata of software centres.

# Metadata may name pictures by addresses of the web only, and where the project is published is the packager's to say.
set(TORVANE_HOMEPAGE "" CACHE STRING
    "Where this project is published: docs/pictures/ below this address holds the pictures (https://...)")
set(TORVANE_METAINFO_WEB "")
if(TORVANE_HOMEPAGE)
    string(CONFIGURE [[
    <url type="homepage">@TORVANE_HOMEPAGE@</url>
    <screenshots>
        <screenshot type="default">
            <caption>The cameras and their locks</caption>
            <image>@TORVANE_HOMEPAGE@/docs/pictures/list.png</image>
        </screenshot>
        <screenshot>
            <caption>Unlocking a camera</caption>
            <image>@TORVANE_HOMEPAGE@/docs/pictures/unlock.png</image>
        </screenshot>
    </screenshots>
]] TORVANE_METAINFO_WEB @ONLY)
endif()

set(metainfo alt.torvane.torvane_gui.metainfo.xml)
configure_file(${CMAKE_CURRENT_LIST_DIR}/${metainfo}.in ${CMAKE_CURRENT_BINARY_DIR}/${metainfo} @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
    COMPONENT gui)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/torvane_gui.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT gui)
install(FILES ${CMAKE_CURRENT_LIST_DIR}/../man/torvane_gui.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT gui)

set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(drawn ${PROJECT_SOURCE_DIR}/resources/application)
install(FILES ${drawn}/torvane_gui.svg DESTINATION ${icons}/scalable/apps COMPONENT gui)
foreach(size IN ITEMS 48 128)
    install(FILES ${drawn}/torvane_gui-${size}.png DESTINATION ${icons}/${size}x${size}/apps
        COMPONENT gui RENAME torvane_gui.png)
endforeach()
