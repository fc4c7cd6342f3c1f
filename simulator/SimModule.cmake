# SPDX-License-Identifier: MIT
# Links producers from the simulator's objects: the product, and variants of it for tests.

# torvane_sim_function_names(variable): the names of the exported functions, as GenTL.h has their types.
function(torvane_sim_function_names variable)
    file(STRINGS ${PROJECT_SOURCE_DIR}/gentl/GenTL.h names REGEX "^using P[A-Za-z]+ = GC_ERROR")
    list(TRANSFORM names REPLACE "^using P([A-Za-z]+) = .*" "\\1")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/gentl/GenTL.h)
    set(${variable} ${names} PARENT_SCOPE)
endfunction()

# torvane_export(TARGET function...): the module exports these and nothing else.
function(torvane_export target)
    if(WIN32)
        set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
        list(JOIN ARGN "\n" exported)
        file(CONFIGURE OUTPUT ${script} CONTENT "EXPORTS\n${exported}\n")
        target_sources(${target} PRIVATE ${script})
    else()
        set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        list(JOIN ARGN "; " exported)
        file(CONFIGURE OUTPUT ${script} CONTENT "{ global: ${exported}; local: *; };\n")
        target_link_options(${target} PRIVATE "LINKER:--version-script=${script}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${script})
    endif()
endfunction()

# torvane_sim_module(TARGET producer-name [DROP function...]): the module TARGET.cti, which exports the GenTL
# functions and nothing else. Dropped functions stay inside it unseen.
function(torvane_sim_module target producer)
    cmake_parse_arguments(PARSE_ARGV 2 module "" "" "DROP")
    torvane_sim_function_names(exported)
    foreach(name IN LISTS module_DROP)
        if(NOT name IN_LIST exported)
            message(FATAL_ERROR "${target}: DROP ${name}: not a GenTL function")
        endif()
        list(REMOVE_ITEM exported ${name})
    endforeach()

    add_library(${target} MODULE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/ProducerName.cpp)
    target_compile_definitions(${target} PRIVATE TORVANE_SIM_PRODUCER_NAME="${producer}")
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/config)
    target_link_libraries(${target} PRIVATE torvane_sim_objects tomlplusplus::tomlplusplus torvane_warnings)
    set_target_properties(${target} PROPERTIES
        PREFIX "" SUFFIX ".cti" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)

    torvane_export(${target} ${exported})
endfunction()

# torvane_add_sim_variant(TARGET producer-name [DROP function...]): a variant for tests, in a folder of its own below
# tests/variants/ of the build, where Simulator::cti(TARGET) finds it. A test that loads it names it in
# add_dependencies. The producer-name is what the keys `producer` of the configuration refer to.
function(torvane_add_sim_variant target producer)
    torvane_sim_module(${target} ${producer} ${ARGN})
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests/variants/${target})
endfunction()
