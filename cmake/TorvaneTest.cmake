# SPDX-License-Identifier: MIT
# torvane_add_test(NAME ROOM room SOURCES file... [LINK target...]): one GoogleTest program over one room. Each case
# runs in a process of its own, so that loaded producers and thread-local state never reach the next one.
include(GoogleTest)
include(TorvaneStarted)

function(torvane_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "" "ROOM" "SOURCES;LINK")
    add_executable(${name} ${test_SOURCES})
    torvane_program(${name})
    target_link_libraries(${name} PRIVATE ${test_LINK} GTest::gmock_main torvane_warnings)
    gtest_discover_tests(${name}
        TEST_PREFIX "${test_ROOM}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${test_ROOM}" TIMEOUT 120)
endfunction()

# torvane_leave_out(TEST REASON): says that a test is no part of this build, and why. All stand in left-out.txt of the
# build too, for the figures in docs/platforms.md.
file(WRITE ${PROJECT_BINARY_DIR}/left-out.txt "")
function(torvane_leave_out test reason)
    message(STATUS "Left out: ${test}: ${reason}")
    file(APPEND ${PROJECT_BINARY_DIR}/left-out.txt "${test}: ${reason}\n")
endfunction()

# torvane_add_qt_test(NAME ROOM room SOURCES file... [LINK target...] [XVFB]): one Qt Test program, run as a whole on the
# offscreen platform, or under an X server of its own where it needs a window system; on Windows on the desktop.
function(torvane_add_qt_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "XVFB" "ROOM" "SOURCES;LINK")
    add_executable(${name} ${test_SOURCES})
    torvane_program(${name})
    target_link_libraries(${name} PRIVATE ${test_LINK} Qt5::Test torvane_warnings)
    if(WIN32)
        add_test(NAME ${test_ROOM}.${name} COMMAND ${name})
        # There Qt Test prints for a debugger, but for the second variable, whose name Wine takes the front from.
        set(platform "windows;WINEQT_FORCE_STDERR_LOGGING=1")
    elseif(test_XVFB)
        add_test(NAME ${test_ROOM}.${name} COMMAND xvfb-run --auto-servernum "--server-args=-screen 0 1280x800x24"
            ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
        # The drivers of OpenGL, which no window of ours uses, keep what they allocate.
        set(platform "xcb;QT_XCB_GL_INTEGRATION=none")
    else()
        add_test(NAME ${test_ROOM}.${name} COMMAND ${name})
        set(platform offscreen)
    endif()
    set_tests_properties(${test_ROOM}.${name} PROPERTIES LABELS ${test_ROOM} TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=${platform};LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp")
endfunction()
