# qkui_test(NAME SOURCES file... LINK library... [LABELS label...]): one GoogleTest program, one CTest entry.
# LINK takes QKUILib (what a host sees) or module object libraries (to look inside), never both.
find_package(GTest REQUIRED)
function(qkui_test name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK;LABELS" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src
                                               ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE qkui_settings ${arg_LINK} GTest::gtest GTest::gtest_main)
    target_compile_definitions(${name} PRIVATE
        QKUI_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data" QKUI_TEST_OUTPUT="${CMAKE_CURRENT_BINARY_DIR}")
    add_test(NAME ${name} COMMAND ${name})
    # A test that needs a display starts one of its own; the user's is none of its business.
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 LABELS "${arg_LABELS}"
        ENVIRONMENT "LC_ALL=C.UTF-8" ENVIRONMENT_MODIFICATION "DISPLAY=unset:;WAYLAND_DISPLAY=unset:")
endfunction()
