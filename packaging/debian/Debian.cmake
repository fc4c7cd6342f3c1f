# SPDX-License-Identifier: MIT
# Debian's packages, one for each install component: "cpack -G DEB" in a build folder that is configured with
# CMAKE_INSTALL_PREFIX=/usr, as scripts/test-packages does. What "cmake --install" leaves out is CPack's alone.
set(TORVANE_MAINTAINER "The Torvane developers <developers@torvane.alt>" CACHE STRING
    "Who answers for the packages, and at which address")

# The newest entry of the changelog gives the packages their version.
set(debian ${CMAKE_CURRENT_LIST_DIR})
file(STRINGS ${debian}/changelog entry LIMIT_COUNT 1)
if(NOT entry MATCHES "^torvane \\(${PROJECT_VERSION}-([0-9.~]+)\\)")
    message(FATAL_ERROR "packaging/debian/changelog begins with \"${entry}\", not with version ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
# Up to this version, one package held everything.
set(split "torvane (<< 1.0.0-1~)")

set(packages torvane simulator)
set(multi_arch_torvane foreign)
set(CPACK_DEBIAN_TORVANE_PACKAGE_NAME torvane)
set(CPACK_DEBIAN_TORVANE_DESCRIPTION "locks and unlocks industrial cameras, in the terminal
Lists the cameras behind any GenTL producer, with model, serial number,
addresses and lock state, and locks, unlocks and resets them or gives them a
new password: torvane_console in a dialogue, torvane for many cameras at
once and for scripts.
.
Cameras are reached through the producers (.cti files) that come with their
drivers.")
set(CPACK_DEBIAN_TORVANE_PACKAGE_SUGGESTS "torvane-ansible, torvane-gui, torvane-simulator")

# A program loads the producers of its own architecture: several may be there.
set(multi_arch_simulator same)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME torvane-simulator)
set(CPACK_DEBIAN_SIMULATOR_DESCRIPTION "simulated cameras for torvane
A GenTL producer without hardware behind it: cameras with a password lock, for
trying torvane out, for testing scripts, and for making a producer fail on
purpose. The folder of torvane_sim.cti goes into GENICAM_GENTL64_PATH.")
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_ENHANCES torvane)

if(TORVANE_BUILD_GUI)
    list(APPEND packages gui)
    set(multi_arch_gui foreign)
    set(CPACK_DEBIAN_GUI_PACKAGE_NAME torvane-gui)
    set(CPACK_DEBIAN_GUI_DESCRIPTION "locks and unlocks industrial cameras, in a window
Lists the cameras behind any GenTL producer, with model, serial number,
addresses and lock state, keeps the list up to date while cameras come and go,
and locks, unlocks and resets them or gives them a new password.
.
Cameras are reached through the producers (.cti files) that come with their
drivers.")
    # The manual, with its pictures, is in torvane. A Wayland session without X programs needs Qt's plugin for it.
    set(CPACK_DEBIAN_GUI_PACKAGE_RECOMMENDS torvane)
    set(CPACK_DEBIAN_GUI_PACKAGE_SUGGESTS "qtwayland5, torvane-simulator")
endif()

if(TORVANE_BUILD_FLEET)
    list(APPEND packages ansible)
    set(multi_arch_ansible foreign)
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_NAME torvane-ansible)
    set(CPACK_DEBIAN_ANSIBLE_DESCRIPTION "passwords and locks of industrial cameras by Ansible
The collection torvane.cameras, for the computer that runs Ansible: modules and
a playbook for the cameras on many PCs, the canary first, with one report.
.
The PCs need the package torvane.")
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_ARCHITECTURE all)
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_SECTION admin)
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_DEPENDS ansible-core)
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_SUGGESTS torvane)
    configure_file(${debian}/torvane-ansible.prerm prerm COPYONLY)
    set(CPACK_DEBIAN_ANSIBLE_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/prerm)
endif()

foreach(component IN LISTS packages)
    string(TOUPPER ${component} key)
    set(package ${CPACK_DEBIAN_${key}_PACKAGE_NAME})
    # CPack has no variable for this field before 3.31, and writes it as what follows another's line.
    set(CPACK_DEBIAN_${key}_PACKAGE_PRIORITY "optional\nMulti-Arch: ${multi_arch_${component}}")
    if(NOT component STREQUAL torvane)
        set(CPACK_DEBIAN_${key}_PACKAGE_BREAKS ${split})
        set(CPACK_DEBIAN_${key}_PACKAGE_REPLACES ${split})
    endif()
    install(FILES ${debian}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component} EXCLUDE_FROM_ALL)
    install(FILES ${debian}/changelog DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component} EXCLUDE_FROM_ALL RENAME changelog.Debian)
    set(overrides ${CMAKE_CURRENT_BINARY_DIR}/lintian-overrides/${package})
    configure_file(${debian}/lintian-overrides ${overrides} COPYONLY)
    if(EXISTS ${debian}/${package}.lintian-overrides)
        file(READ ${debian}/${package}.lintian-overrides more)
        file(APPEND ${overrides} "${more}")
    endif()
    install(FILES ${overrides} DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/torvane
    COMPONENT torvane EXCLUDE_FROM_ALL RENAME changelog)

set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# It would be the first line of each description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE torvane)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TORVANE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${TORVANE_HOMEPAGE})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries that the programs and the simulated producer need are read from them, not listed.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(CMAKE_CROSSCOMPILING AND CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
endif()
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_PRE_BUILD_SCRIPTS ${debian}/Finish.cmake)
