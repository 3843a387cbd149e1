# One set of compiler settings for every target: C++20, hidden visibility, the house warnings, and the
# sanitizers that a preset asks for.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    if(PROJECT_IS_TOP_LEVEL)
        set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
    else()
        set(CMAKE_BUILD_TYPE RelWithDebInfo) # of this folder alone; the host's is the host's
    endif()
endif()

# Containers of the standard library stand in the interface, and the debug mode changes them: hosts are told
# which kind the library has.
include(CheckCXXSymbolExists)
check_cxx_symbol_exists(_GLIBCXX_DEBUG cstddef PLATFORM_DEBUG_CONTAINERS)
if(PLATFORM_DEBUG_CONTAINERS)
    add_compile_definitions(PLATFORM_DEBUG_CONTAINERS)
endif()

add_library(qkui_settings INTERFACE)
target_compile_options(qkui_settings INTERFACE -Wall -Wextra -Wconversion -Wshadow)
if(QKUI_WARNINGS_AS_ERRORS)
    target_compile_options(qkui_settings INTERFACE -Werror)
endif()
if(QKUI_SANITIZE)
    target_compile_options(qkui_settings INTERFACE -fsanitize=${QKUI_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=all)
    target_link_options(qkui_settings INTERFACE -fsanitize=${QKUI_SANITIZE})
endif()

# qkui_module(NAME source... ): an object library of one folder, linked into libQKUILib.so and, on its own,
# into the tests that look inside.
function(qkui_module name)
    add_library(${name} OBJECT ${ARGN})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/include
                                              ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${name} PRIVATE QKUI_BUILDING)
    target_link_libraries(${name} PRIVATE qkui_settings)
endfunction()
