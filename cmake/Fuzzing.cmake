# qkui_fuzz(NAME source...): a libFuzzer program over the library. The preset `fuzz` has the compiler and the
# sanitizers that it needs. Its first inputs lie in fuzz/seeds, in the folder of its name without "fuzz_".
if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang OR NOT QKUI_SANITIZE MATCHES fuzzer-no-link)
    message(FATAL_ERROR "The fuzz targets need clang and QKUI_SANITIZE=fuzzer-no-link,address,undefined: "
                        "cmake --preset fuzz")
endif()
function(qkui_fuzz name)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE qkui_settings QKUILib)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
endfunction()
