# SPDX-License-Identifier: MIT
# torvane_add_test(NAME ROOM room SOURCES file... [LINK target...]): one GoogleTest program over one room. Each case
# runs in a process of its own, so that loaded producers and thread-local state never reach the next one.
include(GoogleTest)

function(torvane_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "" "ROOM" "SOURCES;LINK")
    add_executable(${name} ${test_SOURCES})
    target_link_libraries(${name} PRIVATE ${test_LINK} GTest::gmock_main torvane_warnings)
    gtest_discover_tests(${name}
        TEST_PREFIX "${test_ROOM}." DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS "${test_ROOM}" TIMEOUT 120)
endfunction()
